// What is looked for in styles.
export default {
  extends: "stylelint-config-recommended",
  rules: {
    "declaration-property-value-no-unknown": true,
    "no-descending-specificity": null,  // rules are ordered by the page's parts
  },
};
