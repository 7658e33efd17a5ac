#include "host/admission.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "host/host_name.h"
#include "host/http_text.h"

namespace host {
namespace {
std::string_view withoutSuffix(std::string_view text, std::string_view suffix) {
  if (text.ends_with(suffix)) text.remove_suffix(suffix.size());
  return text;
}

// Without TLS of ours, there may be some in front of the phone. With it, a page that came without is none of ours:
// anybody on the way may have made it.
bool isOwnOrigin(std::string_view origin, std::string_view host, bool secure) {
  for (const auto& [scheme, port] : {std::pair{"http://", ":80"}, std::pair{"https://", ":443"}}) {
    if (!origin.starts_with(scheme) || (secure && std::string_view(port) == ":80")) continue;
    origin.remove_prefix(std::string_view(scheme).size());
    return !host.empty() && equalsIgnoreCase(withoutSuffix(origin, port), withoutSuffix(host, port));
  }
  return false;
}

// True when a page of another site started the request. Sec-Fetch-Site decides where the browser sends it; otherwise an
// Origin that is not this host.
bool isForeign(const RequestHead& head) {
  if (head.fetchSite == "cross-site" || head.fetchSite == "same-site") return true;
  // A form of our own pages comes with "null", since they ask for no referrer; then Sec-Fetch-Site vouches for it.
  if (head.origin.empty() || (head.origin == "null" && head.fetchSite == "same-origin")) return false;
  return !isOwnOrigin(head.origin, head.host.value_or(""), head.secure);
}

// A navigation by GET in a window of its own.
bool isTopLevelNavigation(const RequestHead& head) {
  return head.reads() && head.fetchMode == "navigate" && (head.fetchDest.empty() || head.fetchDest == "document");
}

// A link from elsewhere that only opens a page.
bool isPlainLink(const RequestHead& head) {
  if (!isTopLevelNavigation(head)) return false;
  if (head.path == "/") return true;
  const std::string* action = head.field("q");
  return head.path == "/servlet" && head.field("p") && action && (*action == "load" || *action == "loginForm");
}

Route routeOf(std::string_view path, const AdmissionRules& rules) {
  const auto isUserFile = [&](const std::string& prefix) { return path.starts_with(prefix); };
  if (path == "/") return Route::kHome;
  if (path == "/servlet") return Route::kServlet;
  if (path == "/settings.json") return Route::kSettings;
  if (std::ranges::any_of(rules.userPrefixes, isUserFile)) return Route::kUserFile;
  return path.starts_with("/simulator/") ? Route::kSimulator : Route::kStatic;
}

std::string_view methodsOf(Route route) {
  switch (route) {
    case Route::kServlet:
      return "GET, HEAD, POST";
    case Route::kSimulator:
      return "GET, HEAD, POST, PUT, PATCH, DELETE";
    default:
      return "GET, HEAD";
  }
}

bool lists(std::string_view list, std::string_view item) {
  while (!list.empty()) {
    if (nextItem(list, ',') == item) return true;
  }
  return false;
}

// A form without files is held in memory.
bool isPlainForm(const RequestHead& head) {
  return mediaType(head.contentType.value_or("")) == "application/x-www-form-urlencoded";
}

std::size_t maxBodyOf(Route route, const RequestHead& head, const AdmissionRules& rules) {
  const bool streams = route == Route::kServlet && head.method == "POST" && !head.isPush() && !isPlainForm(head);
  return streams ? rules.maxUpload : std::min(rules.maxUpload, kMaxGatheredBody);
}

using Verdict = std::optional<Refusal>;

Verdict refuse(int status) {
  return Refusal{status, {}};
}

Verdict judgeTarget(const RequestHead& head) {
  if (head.target.size() > kMaxTarget) return refuse(414);
  if (head.queryError != FieldResult::kOk || !head.target.starts_with('/')) return refuse(400);
  return {};
}

// What the client calls the phone; empty when it does not say, nothing when that is malformed or it names two.
std::optional<std::string> hostOf(const RequestHead& head) {
  if (!head.host && head.needsHost) return {};
  if (!head.host && !head.targetHost) return "";
  const auto name = hostName(head.host ? *head.host : *head.targetHost);
  if (head.targetHost && hostName(*head.targetHost) != name) return {};
  return name;
}

Verdict judgeHost(const RequestHead& head, const AdmissionRules& rules) {
  const auto host = hostOf(head);
  if (!host) return refuse(400);
  return isPhoneHost(*host, rules.names) ? Verdict() : refuse(421);
}

// By an address alone, as of a picture on some page, nobody logs in: a wrong guess would count against the reader.
bool isLogin(const RequestHead& head, Route route) {
  const auto is = [&](const char* name, const char* value) {
    const std::string* field = head.field(name);
    return field && *field == value;
  };
  return route == Route::kServlet && is("p", "login") && is("q", "login");
}

Verdict judgeMethod(const RequestHead& head, Route route) {
  const std::string_view allowed = methodsOf(route);
  if (!lists(allowed, head.method)) return Refusal{405, {{"Allow", std::string(allowed)}}};
  if (isLogin(head, route) && head.method != "POST") return Refusal{405, {{"Allow", "POST"}}};
  return {};
}

Verdict judgeClient(const RequestHead& head, Route route, const AdmissionRules& rules) {
  if (route == Route::kStatic) return {};
  if (route != Route::kSimulator) return isForeign(head) && !isPlainLink(head) ? refuse(403) : Verdict();
  if (!rules.hasSimulator) return refuse(404);
  const bool local = isLoopbackAddress(head.remoteAddress) && isLoopbackHost(hostOf(head).value_or(""));
  return !local || (isForeign(head) && !isTopLevelNavigation(head)) ? refuse(403) : Verdict();
}

Verdict judge(const RequestHead& head, const AdmissionRules& rules, bool rebooting, const Admission& admission) {
  if (Verdict verdict = judgeTarget(head)) return verdict;
  if (Verdict verdict = judgeHost(head, rules)) return verdict;
  if (Verdict verdict = judgeMethod(head, admission.route)) return verdict;
  if (Verdict verdict = judgeClient(head, admission.route, rules)) return verdict;
  const bool isPage = admission.route == Route::kServlet || admission.route == Route::kHome;
  if (isPage && rebooting) return rebootRefusal();
  return head.contentLength > admission.maxBody ? refuse(413) : Verdict();
}
}  // namespace

Admission admit(const RequestHead& head, const AdmissionRules& rules, bool rebooting) {
  Admission admission;
  admission.route = routeOf(head.path, rules);
  admission.maxBody = maxBodyOf(admission.route, head, rules);
  admission.refusal = judge(head, rules, rebooting, admission);
  return admission;
}

Refusal rebootRefusal() {
  return {503, {{"Retry-After", "2"}}};
}

Answer answerTo(const Refusal& refusal, bool asJson) {
  Answer answer = errorAnswer(refusal.status, asJson);
  for (const Header& header : refusal.headers) answer.setHeader(header.name, header.value);
  return answer;
}

}  // namespace host
