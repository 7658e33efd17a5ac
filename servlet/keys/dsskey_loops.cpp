// The key page: keys and choices as the templates show them.
#include <iterator>
#include <string>

#include "dsskey/dsskey_types.h"
#include "framework/text_utils.h"
#include "servlet/keys/dsskey_form.h"
#include "servlet/keys/dsskey_servlet.h"

namespace {

constexpr std::size_t kTypeNameSize = 21;

// The programmable keys, from key 1.
constexpr const char* kPlaces[] = {"SoftKey1", "SoftKey2", "SoftKey3", "SoftKey4", "Up",   "Down", "Left",  "Right",
                                   "OK",       "Cancel",   "CONF",     "HOLD",     "MUTE", "TRAN", "Redial"};

const char* placeOf(int keyIndex) {
  return keyIndex >= 1 && keyIndex <= static_cast<int>(std::size(kPlaces)) ? kPlaces[keyIndex - 1] : "";
}

struct ParameterVariables {
  DSSK_PARA_TYPE parameter;
  const char *text, *isEnabled, *choices;
};
constexpr ParameterVariables kParameters[] = {
    {DSSK_PARA_LINE, "selLine", "lineEnable", "LineLoop"},
    {DSSK_PARA_LABEL, "memLabel", "labelEnable", "LabelLoop"},
    {DSSK_PARA_VALUE, "memValue", "valueEnable", "ValueLoop"},
    {DSSK_PARA_EXT, "memExt", "extEnable", "ExtensionLoop"},
};

const char* truth(bool is) {
  return is ? "true" : "false";
}

}  // namespace

void DssKeyServlet::GetDKtypeDisplay(std::string& buffer, int type, DSSK_MODEL_TYPE family) {
  buffer = dsskey::typeName(type, family);
  cutText(buffer, kTypeNameSize);
}

TMPL_loop* DssKeyServlet::DevDataInfo2Loop(const Key_Display& display) {
  TMPL_loop* rows = nullptr;
  for (int module = 1; module <= display.pageCount; ++module) {
    const std::string number = std::to_string(module);
    rows = TMPL_add_varlist(rows, TMPL_add_var(nullptr, "devIndex", number.c_str(), "devValue", number.c_str(),
                                               "selected", module == display.page ? "1" : "0", nullptr));
  }
  return rows;
}

TMPL_loop* DssKeyServlet::AttrValueList2Loop(const OrbList<KeyValue>& choices) {
  TMPL_loop* rows = nullptr;
  for (const KeyValue& choice : choices) {
    rows = TMPL_add_varlist(rows, TMPL_add_var(nullptr, "selName", templateText(choice.value).c_str(), "selValue",
                                               std::to_string(choice.key).c_str(), nullptr));
  }
  return rows;
}

TMPL_loop* DssKeyServlet::DKtypeList2Loop(const OrbList<DssKey_Type>& types, DSSK_MODEL_TYPE family) {
  TMPL_loop* rows = nullptr;
  std::string name;
  for (const DssKey_Type type : types) {
    GetDKtypeDisplay(name, type, family);
    rows = TMPL_add_varlist(
        rows, TMPL_add_var(nullptr, "selValue", std::to_string(type).c_str(), "selName", name.c_str(), nullptr));
  }
  return rows;
}

TMPL_loop* DssKeyServlet::DsskConfigData2Loop(const OrbList<DssKey>& keys, DSSK_MODEL_TYPE family) {
  TMPL_loop* rows = nullptr;
  for (const DssKey& key : keys) rows = TMPL_add_varlist(rows, keyRow(key, family, static_cast<int>(keys.size())));
  return rows;
}

TMPL_varlist* DssKeyServlet::keyRow(const DssKey& key, DSSK_MODEL_TYPE family, int keysOnPage) {
  TMPL_varlist* row = TMPL_add_var(nullptr, "row", std::to_string(key.keyIndex).c_str(), "selType",
                                   std::to_string(key.dktype).c_str(), nullptr);
  if (family == DSSK_PROGRAM) row = TMPL_add_var(row, "ProgramKeyName", placeOf(key.keyIndex), nullptr);
  if (family == DSSK_EXT) row = TMPL_add_var(row, "middle", truth(key.keyIndex == keysOnPage / 2), nullptr);
  row = TMPL_add_var(row, "linelock", truth(model_->IsLineKeyLocked(family, &key, key.keyIndex)), nullptr);
  for (const ParameterVariables& variables : kParameters) {
    if (!model_->CheckSupportParamer(variables.parameter, family)) continue;
    const Dsskey_Attr& attribute = attributeOf(key, variables.parameter);
    row = TMPL_add_var(row, variables.text, templateText(dsskey::shownText(key, variables.parameter)).c_str(),
                       variables.isEnabled, truth(attribute.enabled), nullptr);
    if (attribute.choices.empty()) continue;
    if (variables.parameter == DSSK_PARA_VALUE) row = TMPL_add_var(row, "withvaluelist", "true", nullptr);
    row = TMPL_add_loop(row, variables.choices, AttrValueList2Loop(attribute.choices));
  }
  return row;
}
