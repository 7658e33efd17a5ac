// The key page: the answer to the browser's question what a key of another type needs. The notation is this page's own:
// texts stand between quotes as they are, and js/key-notation.js reads it.
#include <string>

#include "framework/text_utils.h"
#include "platform/log.h"
#include "servlet/keys/dsskey_form.h"
#include "servlet/keys/dsskey_servlet.h"

namespace {

constexpr int kNoKey = -1;

std::string controller(const DssKey& key) {
  const auto flag = [](const Dsskey_Attr& attribute) { return attribute.enabled ? "1" : "0"; };
  return "{keyindex:" + std::to_string(key.keyIndex) + ",dktype:" + std::to_string(key.dktype) +
         ",bValue:" + flag(key.value) + ",bLine:" + flag(key.line) + ",bLabel:" + flag(key.label) +
         ",bExt:" + flag(key.extension) + "}";
}

std::string joined(const OrbList<KeyValue>& choices, auto textOf) {
  std::string list;
  for (const KeyValue& choice : choices) list += (list.empty() ? "\"" : ",\"") + textOf(choice) + "\"";
  return list;
}

}  // namespace

bool DssKeyServlet::AttrValueList2String(const OrbList<KeyValue>& choices, std::string& out) {
  if (choices.empty()) return false;
  out += "{keys:[" + joined(choices, [](const KeyValue& choice) { return std::to_string(choice.key); }) + "],values:[" +
         joined(choices, [](const KeyValue& choice) { return choice.value; }) + "]}";
  return true;
}

std::string DssKeyServlet::typeChangedText(const DssKey& key) {
  const auto quoted = [&key](DSSK_PARA_TYPE parameter) {
    return std::string("\"").append(dsskey::shownText(key, parameter)).append("\"");
  };
  std::string text = "{controller:" + controller(key) + ",attrvalue:{strvalue:" + quoted(DSSK_PARA_VALUE) +
                     ",strline:" + quoted(DSSK_PARA_LINE) + ",strlabel:" + quoted(DSSK_PARA_LABEL) +
                     ",strext:" + quoted(DSSK_PARA_EXT) + "}";
  const auto addChoices = [&](const char* name, const Dsskey_Attr& attribute) {
    std::string list;
    if (AttrValueList2String(attribute.choices, list)) text += name + list;
  };
  addChoices(",valuelist:", key.value);
  addChoices(",labellist:", key.label);
  addChoices(",linelist:", key.line);
  addChoices(",extlist:", key.extension);
  text += "}";
  ReplaceStrByStr(text, "%", "%%");
  return text;
}

int DssKeyServlet::typeChanged(HttpRequest* request, HttpResponse* response) {
  response->setContentType("text/json");
  const char* type = request->getParameter("dktype");
  const char* family = request->getParameter("model");
  const char* index = request->getParameter("keyindex");
  if (!type || !family || !index) {
    log_log(kWebLog, kLogWarning, "KeyIndex, dktype or modeltype's value is null\n");
    return 1;
  }
  KeyPage keys{.family = static_cast<DSSK_MODEL_TYPE>(dsskey::numberIn(family, -1))};
  if (keys.family == DSSK_EXT) {
    const char* module = request->getParameter("extno");
    if (!dsskey::isGiven(module)) {
      log_log(kWebLog, kLogWarning, "can't get extno\n");
      return 1;
    }
    keys.page = dsskey::numberIn(module);
  }
  DssKey key;
  key.dktype = dsskey::numberIn(type, kNoKeyType);
  key.keyIndex = dsskey::numberIn(index, kNoKey);
  if (!model_->GetDsskey(&key, keys.family, keys.page, true)) {
    log_log(kWebLog, kLogWarning, "Get type change data error!\n");
    return 1;
  }
  response->print("%s", typeChangedText(key).c_str());
  return 1;
}
