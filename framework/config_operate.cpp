#include "framework/config_operate.h"

#include <string_view>

#include "framework/text_utils.h"
#include "platform/config_parser.h"
#include "platform/log.h"

namespace {

std::string storedName(FILETYPE type, const char* key, int account) {
  return type == ACCOUNT_FILE ? configParser_GetAccountConfigName(key, account) : std::string(key);
}

std::string storedValue(FILETYPE type, const char* key, int account, std::size_t size = kConfigValueSize) {
  std::string value = configParser_GetConfigString(storedName(type, key, account).c_str());
  cutText(value, size);
  return value;
}

std::string shownValue(FILETYPE type, const char* key, int account) {
  std::string value = storedValue(type, key, account);
  ReplaceSpecailStrs(value);
  return value;
}

int store(FILETYPE type, const char* key, const char* value, int account) {
  return configParser_SetConfigString(storedName(type, key, account).c_str(), value);
}

}  // namespace

TMPL_varlist* readConfigOperate(FILETYPE type, const char* const* keys, int count, TMPL_varlist* list, int account) {
  if (count < 1) return list;
  if (!keys) {
    log_log(kWebLog, kLogWarning, "readConfigOperate() para error\n");
    return nullptr;
  }
  for (int i = 0; i < count; ++i) {
    if (keys[i]) list = readConfigOperate(type, keys[i], list, account);
  }
  return list;
}

TMPL_varlist* readConfigOperate(FILETYPE type, const char* key, TMPL_varlist* list, int account) {
  if (!key) {
    log_log(kWebLog, kLogWarning, "readConfigOperate() para error\n");
    return nullptr;
  }
  return TMPL_add_var(list, key, shownValue(type, key, account).c_str(), nullptr);
}

TMPL_varlist* readConfigOperate(FILETYPE type, const char* key, TMPL_varlist* list, char, int account) {
  return readConfigOperate(type, key, list, account);
}

void readConfigOperate(FILETYPE type, const char* key, std::string& buffer, std::size_t size, int account) {
  if (!key) {
    log_log(kWebLog, kLogWarning, "readConfigOperate() para error\n");
    return;
  }
  buffer = shownValue(type, key, account);
  cutText(buffer, size);
}

std::string readConfigText(const char* key, std::size_t size) {
  std::string text;
  readConfigOperate(GLOBAL_FILE, key, text, size, 0);
  return text;
}

std::string readConfigPlain(const char* key, std::size_t size) {
  return storedValue(GLOBAL_FILE, key, 0, size);
}

std::string readAccountConfigPlain(const char* key, int account, std::size_t size) {
  return storedValue(ACCOUNT_FILE, key, account, size);
}

int readConfigNumber(const char* key) {
  return parseInt(readConfigPlain(key, kConfigValueSize)).value_or(0);
}

int writeConfigOperate(FILETYPE type, const char* const* keys, int count, HttpRequest* request, int account) {
  if (!keys || !request) {
    log_log(kWebLog, kLogWarning, "Parameter is null\n");
    return -1;
  }
  int changed = 0;
  for (int i = 0; i < count; ++i) {
    const char* value = keys[i] ? request->getParameter(keys[i]) : nullptr;
    if (value && store(type, keys[i], value, account)) changed = 1;
  }
  return changed;
}

int writeConfigOperate(FILETYPE type, const char* key, HttpRequest* request, int account) {
  if (!key || !request) {
    log_log(kWebLog, kLogWarning, "writeConfigOperate() para error.\n");
    return -1;
  }
  const char* value = request->getParameter(key);
  if (!value) {
    log_log(kWebLog, kLogWarning, "writeConfigOperate() get %s =NULL.\n", key);
    return -1;
  }
  return store(type, key, value, account);
}

int writeConfigOperate(FILETYPE type, const char* key, const char* value, int account) {
  if (!key || !value) {
    log_log(kWebLog, kLogWarning, "Parameter is null\n");
    return -1;
  }
  return store(type, key, value, account);
}

bool writeSecret(FILETYPE type, const char* key, const char* field, int account) {
  if (!field || std::string_view(field) == kSecretPlaceholder) return false;
  return writeConfigOperate(type, key, field, account) > 0;
}
