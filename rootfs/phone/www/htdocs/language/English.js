// English texts are the keys of every language; here stand those that are to read differently.
window.phoneLanguage = {
  code: "en",
  direction: "ltr",
  texts: {
    "Account%d": "Account %d",
    "Error:No space left!": "There is not enough space left on the phone.",
    "Error:The destination folder does not exist!": "The phone has no folder for this file.",
    "Inexistence": "Not available",
    "No space left!": "There is not enough space left on the phone.",
    "Rebooting , please wait ...": "The phone is restarting, please wait…",
    "Register Failed": "Registration failed",
    "Stoped": "Stopped",
    "Talking, Please wait...": "A call is in progress, so nothing was changed. Please try again after it.",
    "The username or password is error!": "The user name or the password is wrong.",
    "UnConnected": "Not connected",
    "Unregistered": "Not registered",
    "You are not authorized to access the web interface. Please contact your support team or try again 3 minutes later. HTTP 401": "Too many failed attempts. Please try again in 3 minutes or contact your support team.",
  },
};
