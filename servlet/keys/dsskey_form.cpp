// The key page: what is asked for, and what its forms hold.
#include "servlet/keys/dsskey_form.h"

#include <charconv>
#include <string>
#include <system_error>

#include "platform/device.h"
#include "platform/log.h"
#include "servlet/keys/dsskey_servlet.h"

namespace {

constexpr int kNoLineKeys = 19;  // the phone type that has programmable keys alone

void takeField(Dsskey_Attr& attribute, HttpRequest* request, const char* name, const std::string& key) {
  const char* text = request->getParameter((name + key).c_str());
  attribute.enabled = text != nullptr;
  attribute.text = text ? text : "";
}

}  // namespace

namespace dsskey {

int numberIn(std::string_view text, int none) {
  const char* const end = text.data() + text.size();
  int number = 0;
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (stop != end || error == std::errc::invalid_argument) return none;
  return error == std::errc::result_out_of_range || number < 0 ? -1 : number;
}

std::string shownText(const DssKey& key, DSSK_PARA_TYPE parameter) {
  const std::string& text = attributeOf(key, parameter).text;
  const bool isPin = parameter == DSSK_PARA_EXT && key.dktype == DT_MEETMECONF && !text.empty();
  return isPin ? kMaskedExtension : text;
}

bool isGiven(const char* field) {
  return field && *field;
}

}  // namespace dsskey

DSSK_MODEL_TYPE DssKeyServlet::GetDefaultDsskey(int phoneType) {
  return phoneType == 26 || phoneType == 28 || phoneType == 65 ? DSSK_MEMORY : DSSK_LINE;
}

DssKeyServlet::KeyPage DssKeyServlet::pageToLoad(HttpRequest* request) {
  const int phoneType = GetPhoneType();
  if (phoneType == kNoLineKeys) return {.family = DSSK_PROGRAM};
  const char* model = request->getParameter("model");
  const int number = model ? dsskey::numberIn(model) : 0;
  const bool isNamed = model && (number != 0 || std::string_view(model) == "0");
  KeyPage keys{.family = isNamed ? static_cast<DSSK_MODEL_TYPE>(number) : GetDefaultDsskey(phoneType)};
  const char* field = keys.family == DSSK_EXT ? "extno" : keys.family == DSSK_LINE ? "linepage" : nullptr;
  const char* page = field ? request->getParameter(field) : nullptr;
  if (dsskey::isGiven(page)) keys.page = dsskey::numberIn(page);
  return keys;
}

bool DssKeyServlet::pageToWrite(HttpRequest* request, KeyPage& keys) {
  const char* model = request->getParameter("model");
  keys.family = static_cast<DSSK_MODEL_TYPE>(model ? dsskey::numberIn(model) : DSSK_MEMORY);
  if (keys.family != DSSK_EXT && keys.family != DSSK_LINE) return true;
  const char* page = request->getParameter(keys.family == DSSK_EXT ? "extno" : "linepage");
  if (!dsskey::isGiven(page)) {
    log_log(kWebLog, kLogWarning, keys.family == DSSK_EXT ? "Get ext index error!\n" : "Get line page error!\n");
    return false;
  }
  keys.page = dsskey::numberIn(page);
  return true;
}

bool DssKeyServlet::GetKeyConfigDataFromPage(DssKey* key, HttpRequest* request) {
  if (!key || !request) return false;
  const std::string number = std::to_string(key->keyIndex);
  const char* type = request->getParameter(("selType_" + number).c_str());
  key->dktype = type ? dsskey::numberIn(type) : kNoKeyType;
  takeField(key->value, request, "memValue_", number);
  takeField(key->line, request, "selLine_", number);
  takeField(key->label, request, "memLabel_", number);
  takeField(key->extension, request, "memExt_", number);
  return true;
}

bool DssKeyServlet::PageData2ConfigData(HttpRequest* request, OrbList<DssKey>& keys, const Key_Display& display) {
  const auto take = [&](int keyIndex) {
    DssKey key;
    key.keyIndex = keyIndex;
    GetKeyConfigDataFromPage(&key, request);
    keys.push_back(std::move(key));
  };
  if (display.status == kKeyList) {
    for (const int index : display.keyIndexList) take(index);
    return true;
  }
  if (display.status != kKeyRange || display.keyIndexList.size() != 2) return false;
  for (int index = display.keyIndexList.front(); index <= display.keyIndexList.back(); ++index) take(index);
  return true;
}
