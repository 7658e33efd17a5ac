// Busy lamps of keys, as the phone application writes them out.
#include <string_view>

#include "dsskey/dsskey_model_base.h"
#include "dsskey/page_files.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "platform/log.h"
#include "platform/phone_application.h"

namespace {

bool isOfKey(std::string_view record, int number) {
  const auto mark = record.find('?');
  return mark != std::string_view::npos && parseInt(record.substr(0, mark)) == number;
}

// The record of a key; empty without one.
std::string findRecord(const std::string& text, int number) {
  OrbList<std::string> records;
  String2List(records, text, '$');
  for (const std::string& record : records) {
    log_log(kWebLog, kLogWarning, "BlfListValue strNode=[%s]\n", record.c_str());
    if (isOfKey(record, number)) return record;
  }
  return {};
}

// The texts behind the key's number, each without the mark that leads it.
void splitRecord(const std::string& record, std::string (&texts)[3]) {
  OrbList<std::string> fields;
  String2List(fields, record, '?');
  if (!fields.empty()) fields.erase(fields.begin());
  auto field = fields.begin();
  for (int i = 0; i < 3 && field != fields.end(); ++i, ++field) {
    texts[i] = field->substr(field->empty() ? 0 : 1);
    log_log(kWebLog, kLogWarning, "iterAll->dataEntry = %s\n", field->c_str());
    log_log(kWebLog, kLogWarning, "valueArr[%d] = %s\n", i, texts[i].c_str());
  }
}

}  // namespace

bool DssKey_Model_Base::GetBlfListDssKey(DssKey* key, DSSK_MODEL_TYPE family) {
  if (!key) {
    log_log(kWebLog, kLogWarning, "pDsskeyData = null\n");
    return false;
  }
  const std::string text = PageFiles::text(kBlfListPath);
  std::string texts[3];
  if (text.empty()) {
    log_log(kWebLog, kLogWarning, "file(/tmp/tmpBLFListValues) : EMPTY\n");
  } else {
    splitRecord(findRecord(text, family == DSSK_EXT ? key->keyIndex + 1 : key->keyIndex), texts);
  }
  constexpr DSSK_PARA_TYPE kParameters[] = {DSSK_PARA_VALUE, DSSK_PARA_LABEL, DSSK_PARA_EXT};
  for (std::size_t i = 0; i < std::size(kParameters); ++i) {
    Dsskey_Attr& attribute = attributeOf(*key, kParameters[i]);
    attribute.text = texts[i];
    attribute.enabled = EnableParamer(kParameters[i], family, key->dktype, key->keyIndex);
  }
  return true;
}
