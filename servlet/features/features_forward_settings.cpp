#include "servlet/features/features_forward_settings.h"

#include <memory>
#include <string_view>

#include "framework/accounts.h"
#include "framework/config_operate.h"
#include "framework/text_utils.h"
#include "platform/registry.h"

namespace {

constexpr char kUserFile[] = "/config/user/user.ini";
constexpr std::size_t kUserNameSize = 128;

constexpr ForwardField kForwardFields[] = {
    {"AlwaysForwardSwitch", "AF_Enable", "0"},    {"AlwaysForwardTarget", "AF_Target", ""},
    {"AlwaysForwardOnCode", "AF_On_Code", ""},    {"AlwaysForwardOffCode", "AF_Off_Code", ""},
    {"BusyForwardSwitch", "BF_Enable", "0"},      {"BusyForwardTarget", "BF_Target", ""},
    {"BusyForwardOnCode", "BF_On_Code", ""},      {"BusyForwardOffCode", "BF_Off_Code", ""},
    {"NoAnswerForwardSwitch", "TF_Enable", "0"},  {"NoAnswerForwardTarget", "TF_Target", ""},
    {"NoAnswerForwardOnCode", "TF_On_Code", ""},  {"NoAnswerForwardOffCode", "TF_Off_Code", ""},
    {"NoAnswerForwardDelayTime", "Timeout", "2"},
};
constexpr ForwardField kDndFields[] = {
    {"DndStatus", "DND", "0"}, {"DndOnCode", "DND_On_Code", ""}, {"DndOffCode", "DND_Off_Code", ""}};

std::unique_ptr<ETL_SubClass> openAccount(const ForwardKind& kind, int account) {
  const std::string section = kind.section + std::to_string(account);
  return registryOpen(kUserFile, section.c_str(), RegistryFile::kMayBeMissing);
}

bool isMode(const ForwardKind& kind, HttpRequest* request, std::string_view mode) {
  const char* asked = request->getParameter(kind.mode);
  return asked && asked == mode;
}

bool storePhone(const ForwardKind& kind, HttpRequest* request) {
  bool changed = false;
  for (const ForwardField& field : kind.fields) {
    if (!request->getParameter(field.name)) continue;
    changed |= writeConfigOperate(GLOBAL_FILE, field.name, request, 0) > 0;
  }
  return changed;
}

bool storeAccount(const ForwardKind& kind, int account, HttpRequest* request) {
  const auto ini = openAccount(kind, account);
  if (!ini) return false;
  bool changed = false;
  for (const ForwardField& field : kind.fields) {
    const char* value = request->getParameter(field.name);
    if (!value || ini->registryGetString(field.iniKey, "") == value) continue;
    ini->registrySetString(field.iniKey, value);
    changed = true;
  }
  return changed && ini->registryFlush();
}

}  // namespace

constexpr ForwardKind kForwardKind{.mode = "ForwardMode",
                                   .section = "Account",
                                   .accountField = "ForwardAccount",
                                   .shownField = "fwd",
                                   .index = "FWDIndex",
                                   .noAccount = "FWDNoAccount",
                                   .fields = kForwardFields};
constexpr ForwardKind kDndKind{.mode = "DndMode",
                               .section = "DNDAccount",
                               .accountField = "DNDAccount",
                               .shownField = "dnd",
                               .index = "DNDIndex",
                               .noAccount = "DNDNoAccount",
                               .fields = kDndFields};

std::vector<EnabledAccount> enabledAccounts() {
  std::vector<EnabledAccount> accounts;
  for (int account = 0; account < GetAccountMax(); ++account) {
    if (readAccountConfigPlain("AccountEnable", account, kConfigValueSize) != "1") continue;
    std::string name;
    readConfigOperate(ACCOUNT_FILE, "AccountUserName", name, kUserNameSize, account);
    accounts.push_back({account, name});
  }
  return accounts;
}

int shownAccount(const ForwardKind& kind, HttpRequest* request, const std::vector<EnabledAccount>& accounts) {
  if (accounts.empty()) return -1;
  return validAccount(request->getParameter(kind.shownField)).value_or(accounts.front().index);
}

TMPL_varlist* addForwardData(TMPL_varlist* list, const ForwardKind& kind, const std::string& mode, int account) {
  if (mode == "0") {
    for (const ForwardField& field : kind.fields) list = readConfigOperate(GLOBAL_FILE, field.name, list, 0);
  }
  if (mode != "1") return list;
  const auto ini = account >= 0 ? openAccount(kind, account) : nullptr;
  if (!ini) list = TMPL_add_var(list, kind.noAccount, "true", nullptr);
  for (const ForwardField& field : kind.fields) {
    if (!ini) break;
    const std::string value = GetStringAndReplaceChar(*ini, field.iniKey, field.fallback);
    list = TMPL_add_var(list, field.name, value.c_str(), nullptr);
  }
  return TMPL_add_var(list, kind.index, std::to_string(account).c_str(), nullptr);
}

std::string forwardDelay(const std::string& mode, int account) {
  if (mode == "0") return readConfigText("NoAnswerForwardDelayTime", kConfigValueSize);
  if (mode != "1") return {};
  const auto ini = account >= 0 ? openAccount(kForwardKind, account) : nullptr;
  return ini ? GetStringAndReplaceChar(*ini, "Timeout", "2") : "2";
}

bool namesNoAccount(const ForwardKind& kind, HttpRequest* request) {
  const char* account = request->getParameter(kind.accountField);
  return isMode(kind, request, "1") && account && *account && !validAccount(account);
}

ForwardSave storeForwardData(const ForwardKind& kind, HttpRequest* request) {
  if (isMode(kind, request, "0")) return {.changed = storePhone(kind, request), .account = std::nullopt};
  if (!isMode(kind, request, "1")) return {};
  const std::optional<int> account = validAccount(request->getParameter(kind.accountField));
  return {.changed = account && storeAccount(kind, *account, request), .account = account};
}
