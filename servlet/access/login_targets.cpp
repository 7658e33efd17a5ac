#include "servlet/access/login_targets.h"

#include "framework/query_text.h"
#include "framework/text_utils.h"
#include "platform/log.h"

namespace {

constexpr std::size_t kTargetSize = 64;
constexpr char kStatusTarget[] = "/servlet?p=status&q=load";

std::string_view field(HttpRequest* request, const char* name) {
  const char* value = request->getParameter(name);
  return value ? value : "";
}

std::string pageTarget(HttpRequest* request, std::string_view page) {
  // A name that is none could smuggle further fields into the address.
  if (!isPlainName(page) || page == "status") return kStatusTarget;
  const std::string target = "/servlet?p=" + std::string(page) + "&q=load";
  if (page == "contactsbasic") return target + "&num=1&group=";
  if (page == kKeyPage) return target + "&model=" + encodeQueryValue(field(request, "model"));
  if (!isAccountPage(page)) return target;
  const std::string_view account = field(request, "acc");
  return target + "&acc=" + encodeQueryValue(account.empty() ? "0" : account);
}

}  // namespace

std::string_view wantedPage(HttpRequest* request) {
  return field(request, "jumpto");
}

std::string wantedCommand(HttpRequest* request) {
  const std::string_view target = request->getRequestURI();
  const std::size_t start = target.find("URI&");
  return start == std::string_view::npos ? "" : std::string(target.substr(start + 4));
}

std::string commandTarget(const std::string& command) {
  const std::string target = "/servlet?" + encodeQuery(command);
  return command.empty() || hasField(command, "p") || target.size() >= kTargetSize ? "" : target;
}

std::string targetAfterLogin(HttpRequest* request, const std::string& command) {
  const std::string_view page = wantedPage(request);
  if (page == kCommand && command.empty()) return kStatusTarget;
  std::string target = page == kCommand ? commandTarget(command) : pageTarget(request, page);
  if (!target.empty() && target.size() < kTargetSize) return target;
  log_log(kWebLog, kLogWarning, "LoginServlet::login() target is refused\n");
  return kStatusTarget;
}
