#include "servlet/contacts/contacts_callinfo_calls.h"

#include <ctime>
#include <string>

#include "framework/config_operate.h"
#include "framework/date_text.h"
#include "framework/text_utils.h"
#include "platform/local_directory.h"
#include "servlet/contacts/contacts_update_mark.h"

namespace {

using NS_DIRECTORY::CContactLocalManager;

constexpr std::size_t kAddressSize = 128;

// How calls are shown.
struct Manner {
  int dateFormat = 0;
  int timeFormat = 0;
  CContactLocalManager* names = nullptr;  // null: the number stands for the name
};

struct CallList {
  char type;
  const char* loop;
};
constexpr CallList kLists[] = {{'1', "callloop"}, {'2', "receiveloop"}, {'3', "missloop"}, {'4', "forwardloop"}};

Manner readManner() {
  Manner manner{.dateFormat = readConfigNumber("LocalTimeDateFormatType"),
                .timeFormat = readConfigNumber("LocalTimeTimeFormatType")};
  if (readConfigPlain("CalllogShowNumEnable", kConfigValueSize) == "1") return manner;
  reloadMarkedContacts();
  manner.names = CContactLocalManager::GetInstance();
  return manner;
}

std::string nameOf(const std::string& number, const Manner& manner) {
  std::string name = manner.names ? manner.names->GetContactNameByPhoneNumber(number) : "";
  return name.empty() ? number : name;
}

TMPL_varlist* callRow(pugi::xml_node call, int index, const Manner& manner) {
  const std::string remote = call.attribute("remote_sip_name").value();
  const std::string remoteServer = call.attribute("remote_sip_server").value();
  std::string local = std::string(call.attribute("local_sip_name").value()) + "@";
  local += call.attribute("local_sip_server").value();
  std::string number = remoteServer.empty() ? remote : remote + "@" + remoteServer;
  cutText(local, kAddressSize);
  cutText(number, kAddressSize);
  std::string first, second, third, separator, clock;
  const auto begin = static_cast<std::time_t>(call.attribute("born_tick").as_llong());
  LocalTime2StrTime(begin, first, second, third, separator, clock, manner.dateFormat, manner.timeFormat);
  return TMPL_add_var(nullptr, "index", std::to_string(index).c_str(), "First", first.c_str(), "Second", second.c_str(),
                      "Third", third.c_str(), "Sep", separator.c_str(), "Time", clock.c_str(), "LocalIdentity",
                      local.c_str(), "Name", nameOf(remote, manner).c_str(), "Number", number.c_str(), nullptr);
}

}  // namespace

TMPL_varlist* addCalls(TMPL_varlist* list, pugi::xml_node history) {
  const Manner manner = readManner();
  for (const auto& [type, name] : kLists) {
    TMPL_loop* loop = nullptr;
    int index = 0;
    for (const pugi::xml_node call : history.children("item")) {
      if (*call.attribute("type").value() == type) loop = TMPL_add_varlist(loop, callRow(call, ++index, manner));
    }
    list = TMPL_add_loop(list, name, loop);
  }
  return list;
}
