#include "servlet/account/account_servers.h"

#include <cstddef>
#include <iterator>
#include <memory>
#include <string>

#include "framework/accounts.h"
#include "framework/config_operate.h"
#include "framework/text_utils.h"
#include "platform/registry.h"

namespace {

// The fields of one SIP server: form field and template variable beside the ini key.
struct ServerFields {
  const char* section;
  const char* server;
  const char* port;
  const char* expires;
  const char* retryCounts;
};
constexpr ServerFields kServers[] = {
    {"sipserver1", "server1", "port1", "expires1", "RetryCounts1"},
    {"sipserver2", "server2", "port2", "expires2", "RetryCounts2"},
};

struct IniField {
  const char* key;
  const char* field;
};

std::unique_ptr<ETL_SubClass> openSection(int account, const char* section) {
  return registryOpen(accountFile(account).c_str(), section, RegistryFile::kMayBeMissing);
}

// Stores the fields that the form has into one section of the account's file.
template <std::size_t N>
void storeSection(int account, const char* section, const IniField (&fields)[N], HttpRequest* request) {
  const auto ini = openSection(account, section);
  if (!ini) return;
  for (const IniField& field : fields) {
    if (const char* value = request->getParameter(field.field)) ini->registrySetString(field.key, value);
  }
  ini->registryFlush();
}

TMPL_varlist* addIniValue(TMPL_varlist* list, const char* name, ETL_SubClass& ini, const char* key,
                          const char* fallback) {
  return TMPL_add_var(list, name, GetStringAndReplaceChar(ini, key, fallback).c_str(), nullptr);
}

// The first server as the configuration service holds it: for a phone whose account file names no server yet.
TMPL_varlist* addConfiguredServer(TMPL_varlist* list, const ServerFields& fields, int account) {
  const auto add = [&](const char* name, const char* key) {
    std::string value;
    readConfigOperate(ACCOUNT_FILE, key, value, kConfigValueSize, account);
    list = TMPL_add_var(list, name, value.c_str(), nullptr);
  };
  add(fields.server, "AccountSIPServerHost");
  add(fields.port, "AccountSIPServerPort");
  add("AccountTransport", "AccountTransport");
  add(fields.expires, "AccountExpire");
  return list;
}

}  // namespace

TMPL_varlist* addServers(TMPL_varlist* list, int account) {
  const std::unique_ptr<ETL_SubClass> sections[] = {openSection(account, kServers[0].section),
                                                    openSection(account, kServers[1].section)};
  if (!sections[0] || !sections[1]) return list;
  const bool noServer =
      sections[0]->registryGetString("server", "").empty() && sections[1]->registryGetString("server", "").empty();
  const bool configured = !readAccountConfigPlain("AccountSIPServerHost", account, kConfigValueSize).empty();
  for (std::size_t i = 0; i < std::size(kServers); ++i) {
    const ServerFields& fields = kServers[i];
    ETL_SubClass& ini = *sections[i];
    if (i == 0 && noServer && configured) {
      list = addConfiguredServer(list, fields, account);
    } else {
      list = addIniValue(list, fields.server, ini, "server", "");
      list = addIniValue(list, fields.port, ini, "port", "5060");
      if (i == 0) list = addIniValue(list, "AccountTransport", ini, "transport", "0");
      list = addIniValue(list, fields.expires, ini, "expires", "3600");
    }
    list = addIniValue(list, fields.retryCounts, ini, "RetryCounts", "3");
  }
  return list;
}

void storeServers(int account, HttpRequest* request) {
  const IniField proxy[] = {{"server", "AccountOutboundProxy"}, {"port", "AccountOutboundPort"}};
  storeSection(account, "outboundProxy1", proxy, request);
  for (const ServerFields& fields : kServers) {
    const IniField server[] = {{"server", fields.server},
                               {"port", fields.port},
                               {"expires", fields.expires},
                               {"transport", "AccountTransport"},
                               {"RetryCounts", fields.retryCounts}};
    storeSection(account, fields.section, server, request);
  }
}
