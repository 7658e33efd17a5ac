#include "servlet/access/action_uri.h"

#include <syslog.h>

#include <algorithm>
#include <iterator>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/phone_messages.h"
#include "framework/session.h"
#include "framework/shell_command.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "platform/log.h"
#include "platform/os_services.h"
#include "platform/phone_root.h"
#include "servlet/access/trusted_clients.h"

namespace {

constexpr std::size_t kCommandSize = 1024;
constexpr std::size_t kPairSize = 128;
constexpr std::size_t kBlockSize = 1024;
constexpr char kExportedConfig[] = "/tmp/phonecfg.ini";

// The first `count` items of the query that are name=value pairs; only the query's first item goes without "&".
std::string pairsOf(const std::string& query, std::size_t count) {
  OrbList<std::string> items;
  String2List(items, query, '&');
  std::string command;
  std::size_t index = 0;
  for (const std::string& item : items) {
    if (index == count) break;
    if (item.find('=') != std::string::npos) {
      std::string pair = index == 0 ? item : "&" + item;
      cutText(pair, kPairSize);
      command += pair;
    }
    ++index;
  }
  cutText(command, kCommandSize);
  return command;
}

// The client's command as the phone application gets it, noted in the system log.
std::string commandFor(HttpRequest* request, std::string text) {
  const char* address = request->getRemoteAddr();
  cutText(text, kCommandSize);
  ActionURISyslog(text, address);
  AddIPtoURI(&text, address);
  return text;
}

int postCommand(unsigned message, const std::string& command) {
  postText(kPhoneApplication, message, command);
  return 1;
}

int sendExportedConfig(HttpResponse* response) {
  response->setContentType("text/xml");
  response->setHeader("Content-disposition", "attachment; filename=phonecfg.ini");
  response->setHeader("Accept-Ranges", "bytes");
  response->setHeader("Expires", "-1");
  std::string content;
  if (!readFile(kExportedConfig, content)) {
    log_log(kWebLog, kLogWarning, "export phonecfg.ini End. failed to open file\n");
    return 0;
  }
  for (std::size_t start = 0; start < content.size(); start += kBlockSize) {
    response->write(content.data() + start, 1, static_cast<int>(std::min(kBlockSize, content.size() - start)));
  }
  CommandShell(ShellCommand("rm").path(kExportedConfig));
  return 1;
}

int runKey(HttpRequest* request, HttpResponse*, const std::string& query) {
  std::string text = query;
  if (readConfigText("ISUME", 8) == "1" && query.starts_with("key=IP:")) {
    text = "key=IP:" + std::string(request->getRemoteAddr()) + query.substr(query.rfind(':'));
  }
  return postCommand(kActionUri, commandFor(request, text));
}

int runNumber(HttpRequest* request, HttpResponse*, const std::string& query) {
  return postCommand(kActionUri, commandFor(request, query));
}

int runExport(HttpRequest* request, HttpResponse* response, const std::string& query) {
  const std::string command = commandFor(request, pairsOf(query, 9));
  const int answer = askWithText(kAnswerTimeout, kPhoneApplication, kExportConfig, command);
  return answer == 1 ? sendExportedConfig(response) : 1;
}

int runRedirect(HttpRequest* request, HttpResponse*, const std::string& query) {
  return postCommand(kRedirectCall, commandFor(request, pairsOf(query, 10)));
}

int runForward(HttpRequest* request, HttpResponse*, const std::string& query) {
  return postCommand(kForwardCall, commandFor(request, pairsOf(query, 10)));
}

int runServer(HttpRequest* request, HttpResponse*, const std::string&) {
  const char* server = request->getParameter("Server");
  if (!server) return 0;
  writeConfigOperate(GLOBAL_FILE, "AutoProvisionServerURL", server, 0);
  if (const char* user = request->getParameter("UserName")) {
    writeConfigOperate(GLOBAL_FILE, "AutoProvisionUser", user, 0);
    writeSecret(GLOBAL_FILE, "AutoProvisionPassword", request->getParameter("Password"), 0);
  }
  postMessage(kPhoneApplication, kServerChanged);
  return 1;
}

struct Command {
  std::string_view type;
  int (*run)(HttpRequest* request, HttpResponse* response, const std::string& query);
};
// In the order in which a query is compared with them.
constexpr Command kCommands[] = {{"key", runKey},         {"number", runNumber},
                                 {"phonecfg", runExport}, {"redirectcall", runRedirect},
                                 {"forward", runForward}, {"Server", runServer}};

}  // namespace

std::string_view getURIType(std::string_view query) {
  for (const Command& command : kCommands) {
    if (query.starts_with(command.type)) return command.type;
  }
  return {};
}

int proccessActionURI(HttpRequest* request, HttpResponse* response, std::string_view type, const std::string& query,
                      const char* user) {
  const auto command = std::ranges::find(kCommands, type, &Command::type);
  if (command == std::end(kCommands)) {
    log_log(kWebLog, kLogWarning, "proccessActionURI para error.\n");
    response->sendError(404);
    return 0;
  }
  const char* address = request->getRemoteAddr();
  if (!IsTrustIP(address)) {
    log_log(kWebLog, kLogWarning, "proccessActionURI() limitip action not send\n");
    ActionURISyslog("Permission Denied !", address);
    response->sendError(401);
    return 0;
  }
  if (user) logInSession(request, user);
  return command->run(request, response, query);
}

void ActionURISyslog(const std::string& action, const char* address) {
  if (readConfigNumber("ServerLogLevel") <= 2) return;
  std::string line = "Action URI: IP(" + std::string(address ? address : "") + ") Action(" + action + ")";
  cutText(line, 512);
  osSyslog(LOG_INFO, line.c_str());
}

void AddIPtoURI(std::string* command, const char* address) {
  if (!command || !address) {
    log_log(kWebLog, kLogWarning, "AddIPtoURI para error.\n");
    return;
  }
  command->append("&RIP=").append(address);
}
