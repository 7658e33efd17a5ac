#include "host/template_markup.h"

#include <gumbo.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <sstream>

#include "host/fields.h"
#include "host/template_markers.h"
#include "host/template_texts.h"

namespace host {
namespace {

constexpr std::size_t kMaxText = 1024 * 1024;
constexpr std::size_t kMaxTags = 20'000;  // each may stand in the one before it
constexpr std::string_view kServlet = "/servlet";

const char* attribute(const GumboElement& element, const char* name) {
  const GumboAttribute* found = gumbo_get_attribute(&element.attributes, name);
  return found ? found->value : nullptr;
}

std::string attributeText(const GumboElement& element, const char* name) {
  const char* value = attribute(element, name);
  return value ? value : "";
}

std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

bool isOneOf(const GumboElement& element, std::initializer_list<GumboTag> tags) {
  return std::find(tags.begin(), tags.end(), element.tag) != tags.end();
}

// A form's controls, wherever they stand.
struct Control {
  std::string form;  // its id; empty for the form around it
  const GumboNode* around;
  std::string name, value;
  bool isHidden, isButton;
  Keys keys;
};

struct Form {
  const GumboNode* node;
  std::string id, address;
  Keys keys;
};

class Reader {
 public:
  Reader(std::string_view page, TemplateMarkup& markup) : page_(page), markup_(markup) {}

  void read(const GumboNode* root) {
    struct Step {
      const GumboNode* node;
      bool isEnd;
    };
    std::vector<Step> steps{{root, false}};
    while (!steps.empty()) {
      const auto [node, isEnd] = steps.back();
      steps.pop_back();
      if (isEnd) {
        leave(node->v.element);
      } else if (node->type == GUMBO_NODE_ELEMENT || node->type == GUMBO_NODE_TEMPLATE) {
        enter(node);
        steps.push_back({node, true});
        pushChildren(node->v.element.children, steps);
      } else if (node->type == GUMBO_NODE_DOCUMENT) {
        pushChildren(node->v.document.children, steps);
      } else {
        noteVariables(node->v.text.text);
      }
    }
    for (const Form& form : forms_) declareForm(form);
    for (const auto& [name, places] : markup_.variables) {
      if (std::none_of(places.begin(), places.end(), [](const Keys& keys) { return keys.empty(); })) {
        markup_.guarded.push_back(name);
      }
    }
  }

 private:
  template <class Steps>
  static void pushChildren(const GumboVector& children, Steps& steps) {
    for (unsigned i = children.length; i > 0; --i) {
      steps.push_back({static_cast<const GumboNode*>(children.data[i - 1]), false});
    }
  }

  void enter(const GumboNode* node) {
    const GumboElement& element = node->v.element;
    if (const char* key = attribute(element, "data-level")) keys_.emplace_back(key);
    if (element.tag == GUMBO_TAG_NAV) ++navigations_;
    for (unsigned i = 0; i < element.attributes.length; ++i) {
      noteVariables(static_cast<const GumboAttribute*>(element.attributes.data[i])->value);
    }
    noteTab(element);
    for (const char* name : {"href", "formaction"}) declareLink(attributeText(element, name));
    declareScript(attributeText(element, "data-action"));
    if (element.tag == GUMBO_TAG_FORM) {
      forms_.push_back({node, attributeText(element, "id"), attributeText(element, "action"), keys_});
      openForms_.push_back(node);
    }
    if (isOneOf(element, {GUMBO_TAG_INPUT, GUMBO_TAG_SELECT, GUMBO_TAG_TEXTAREA, GUMBO_TAG_BUTTON}))
      noteControl(element);
  }

  void leave(const GumboElement& element) {
    if (attribute(element, "data-level")) keys_.pop_back();
    if (element.tag == GUMBO_TAG_NAV) --navigations_;
    if (element.tag == GUMBO_TAG_FORM && !openForms_.empty()) openForms_.pop_back();
  }

  void noteVariables(std::string_view text) {
    for (std::string_view marker = nextMarker(text, 0); !marker.empty();) {
      std::string_view name = markerName(marker);
      markup_.variables[std::string(name)].push_back(keys_);
      for (std::string_view ending : {"_off", "_any"}) {
        if (name.ends_with(ending)) markup_.variables[std::string(name.substr(0, name.size() - 4))].push_back(keys_);
      }
      marker = nextMarker(text, static_cast<std::size_t>(marker.data() - text.data()) + marker.size());
    }
  }

  void noteTab(const GumboElement& element) {
    const char* page = attribute(element, "data-page");
    if (!page || element.tag != GUMBO_TAG_A) return;
    const std::string form = attributeText(element, "data-form");
    const std::size_t equals = std::min(form.find('='), form.size());
    const std::string address = attributeText(element, "href");
    for (const std::string& one : wordsOf(page)) {
      const bool isOpened = std::string_view(page).starts_with(one);  // the others are led to
      markup_.tabs.push_back({one, attributeText(element, "data-tab"), form.substr(0, equals),
                              equals < form.size() ? form.substr(equals + 1) : "", isOpened ? address : "",
                              navigations_ == 0});
    }
  }

  void noteControl(const GumboElement& element) {
    const std::string type = attributeText(element, "type");
    const bool isButton = type == "submit" || type == "image" || (element.tag == GUMBO_TAG_BUTTON && type.empty());
    controls_.push_back({attributeText(element, "form"), openForms_.empty() ? nullptr : openForms_.back(),
                         withPage(attributeText(element, "name")), withPage(attributeText(element, "value")),
                         type == "hidden", isButton, keys_});
  }

  // The page that a template shows has its own name.
  std::string withPage(std::string text) const {
    static constexpr std::string_view kPage = "{{Page}}";
    const std::size_t at = text.find(kPage);
    return at == std::string::npos ? text : text.replace(at, kPage.size(), page_);
  }

  // Markers in a name stand for anything.
  static std::string patternOf(std::string_view name) {
    std::string pattern;
    std::size_t at = 0;
    for (std::string_view marker = nextMarker(name, 0); !marker.empty(); marker = nextMarker(name, at)) {
      const auto start = static_cast<std::size_t>(marker.data() - name.data());
      pattern.append(name.substr(at, start - at)).append("*");
      at = start + marker.size();
    }
    return pattern.append(name.substr(at));
  }

  // Page, action and fields of an address of the phone's pages, whose values may be constants; nothing for any other.
  std::optional<DeclaredAction> actionAt(const std::string& address, bool hasConstants) const {
    if (!address.starts_with(kServlet)) return std::nullopt;
    DeclaredAction declared;
    Fields fields;
    const std::size_t query = address.find('?');
    if (query != std::string::npos) parseUrlEncoded(std::string_view(address).substr(query + 1), fields);
    for (const Fields::Field& field : fields.all()) {
      const std::string& value = field.values.front();
      take(field.name, withPage(value), keys_, declared);
      if (hasConstants && !isAddress(field.name) && !value.empty()) declared.constants.emplace_back(field.name, value);
    }
    return declared;
  }

  static bool isAddress(std::string_view name) { return name == "p" || name == "q"; }

  static void take(const std::string& name, const std::string& value, const Keys& keys, DeclaredAction& declared) {
    if (name == "p") {
      declared.page = value;
    } else if (name == "q") {
      declared.action = value;
    } else {
      declared.fields.push_back({patternOf(name), keys});
    }
  }

  void declareLink(const std::string& address) {
    if (std::optional<DeclaredAction> declared = actionAt(address, false)) {
      declared->places = {keys_};
      markup_.actions.push_back(std::move(*declared));
    }
  }

  void declareScript(const std::string& addresses) {
    for (const std::string& address : wordsOf(addresses)) {
      if (std::optional<DeclaredAction> declared = actionAt(address, true)) {
        declared->askedBy = page_;
        declared->places = {keys_};
        markup_.actions.push_back(std::move(*declared));
      }
    }
  }

  void declareForm(const Form& form) {
    std::optional<DeclaredAction> declared = actionAt(form.address, false);
    if (!declared) return;
    std::vector<const Control*> own;
    for (const Control& control : controls_) {
      const bool isOwn = control.form.empty() ? control.around == form.node : control.form == form.id;
      if (isOwn) own.push_back(&control);
    }
    for (const Control* control : own) {
      Keys keys = form.keys;
      keys.insert(keys.end(), control->keys.begin(), control->keys.end());
      if (control->isButton) declared->places.push_back(keys);
      if (!control->name.empty()) take(control->name, control->value, keys, *declared);
      if (isConstant(*control, own)) declared->constants.emplace_back(control->name, control->value);
    }
    if (declared->places.empty()) declared->places = {form.keys};
    markup_.actions.push_back(std::move(*declared));
  }

  // A hidden field with a value of the template's own, unless it is the twin of a switch.
  static bool isConstant(const Control& control, const std::vector<const Control*>& all) {
    if (!control.isHidden || control.name.empty() || isAddress(control.name)) return false;
    if (control.value.empty() || control.value.find("{{") != std::string::npos) return false;
    return std::count_if(all.begin(), all.end(), [&](const Control* other) { return other->name == control.name; }) ==
           1;
  }

  std::string page_;
  TemplateMarkup& markup_;
  Keys keys_;
  int navigations_ = 0;  // around the element
  std::vector<const GumboNode*> openForms_;
  std::vector<Form> forms_;
  std::vector<Control> controls_;
};

struct OutputEnd {
  void operator()(GumboOutput* output) const { gumbo_destroy_output(&kGumboDefaultOptions, output); }
};

}  // namespace

std::optional<TemplateMarkup> readMarkup(std::string_view text, std::string_view page) {
  if (text.size() > kMaxText) return std::nullopt;
  const std::optional<std::string> html = markersAsHtml(text, kMaxTags);
  if (!html) return std::nullopt;
  GumboOptions options = kGumboDefaultOptions;
  options.max_errors = 0;
  const std::unique_ptr<GumboOutput, OutputEnd> output(gumbo_parse_with_options(&options, html->data(), html->size()));
  TemplateMarkup markup;
  Reader(page, markup).read(output->document);
  markup.texts = readTexts(*output->document);
  return markup;
}

bool fitsPattern(std::string_view pattern, std::string_view name) {
  const std::size_t star = pattern.find('*');
  if (star == std::string_view::npos) return pattern == name;
  if (!name.starts_with(pattern.substr(0, star))) return false;
  pattern.remove_prefix(star + 1);
  name.remove_prefix(star);
  for (std::size_t skipped = 0; skipped <= name.size(); ++skipped) {
    if (fitsPattern(pattern, name.substr(skipped))) return true;
  }
  return false;
}

}  // namespace host
