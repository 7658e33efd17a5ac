#include "host/servlet_runner.h"

#include <chrono>
#include <exception>

#include "host/admission.h"
#include "host/json_answer.h"
#include "host/log.h"
#include "host/page_table.h"
#include "host/request.h"
#include "host/response.h"
#include "host/settings_index.h"

namespace host {
namespace {
constexpr std::string_view kLoginPage = "login";

int statusOf(FieldResult error) {
  return error == FieldResult::kTooLarge ? 413 : 400;
}

// The page that is asked for; null when there is none.
const char* pageOf(const RequestHead& head, const Body& body, Request& request) {
  if (head.isPush()) return nullptr;
  if (const std::string* named = head.field("p")) return named->c_str();
  return body.readable() ? request.getParameter("p") : nullptr;
}

// A field that can be had without the body of a request that is still on its way; null when absent.
const char* fieldOf(const RequestHead& head, const Body& body, Request& request, const char* name) {
  if (body.rewindable()) return request.getParameter(name);
  const std::string* value = head.field(name);
  return value ? value->c_str() : nullptr;
}

// What is left to do when the filter has let a request in that names no page: nothing for a command, which it carried
// out itself.
void answerWithoutPage(const RequestHead& head, Response& response) {
  if (head.target.size() <= head.path.size() + 1) response.sendRedirect(kHomePage);
}

// The answer to who may not see the page, or do what he asked for there.
void forbid(Rights& rights, bool asJson, Response& response) {
  if (!asJson) response.renderTemplate("/phone/www/WEB-INFO/template/forbidden.htm", rights.forbiddenList());
  response.sendError(403);
}
}  // namespace

ServletRunner::ServletRunner(PageTable& pages, Settings settings)
    : pages_(pages),
      settings_(std::move(settings)),
      renderer_(settings_.root),
      rights_(settings_.root / "phone/www/WEB-INFO/template") {
  if (settings_.device.rebootCount) reboots_ = settings_.device.rebootCount();
}

void ServletRunner::forgetSessionsAfterReboot() {
  if (!settings_.device.rebootCount) return;
  const std::uint64_t now = settings_.device.rebootCount();
  if (now != reboots_) sessions_.clear();
  reboots_ = now;
}

bool ServletRunner::isLoggedIn(const RequestHead& head) const {
  const bool rebooted = settings_.device.rebootCount && settings_.device.rebootCount() != reboots_;
  return !rebooted && sessions_.isLoggedIn(head.sessionId, head.secure, std::chrono::steady_clock::now());
}

// Lets no exception out, and nobody in while the device reboots.
template <class Serve>
Answer ServletRunner::guarded(const RequestHead& head, const Serve& serve) {
  try {
    forgetSessionsAfterReboot();
    if (settings_.device.rebooting && settings_.device.rebooting()) return answerTo(rebootRefusal(), head.wantsJson);
    return serve();
  } catch (const std::exception& error) {
    logLine({"request failed: ", error.what()});
  } catch (...) {
    logLine({"request failed"});
  }
  return errorAnswer(500, head.wantsJson);
}

Answer ServletRunner::run(const RequestHead& head, Body& body) {
  return guarded(head, [&] { return serve(head, body); });
}

Answer ServletRunner::settings(const RequestHead& head) {
  return guarded(head, [&] { return serveSettings(head); });
}

Answer ServletRunner::serve(const RequestHead& head, Body& body) {
  const TemplateArena arena;
  PageContext context;
  Request request(head, body, sessions_, context, settings_.root);
  Response response(renderer_, context, settings_.spoolFolder, head.wantsJson);
  const char* page = pageOf(head, body, request);
  if (page) context.page = page;
  // For a form that is answered as refused, the filter is not to carry out a command either.
  if (request.formError() == FieldResult::kOk && pages_.filter().onRequest(&request, &response) != 0) {
    body.open();
    if (!page) {
      answerWithoutPage(head, response);
    } else if (!runPage(head, body, request, context, response)) {
      response.sendError(404);
    }
  }
  Answer answer = response.finish();
  if (request.formError() != FieldResult::kOk) answer = errorAnswer(statusOf(request.formError()), head.wantsJson);
  addSessionCookie(head, context, answer);
  return answer;
}

Answer ServletRunner::serveSettings(const RequestHead& head) {
  const std::string user = sessions_.userOf(head.sessionId, head.secure, std::chrono::steady_clock::now());
  if (user.empty()) return errorAnswer(403, true);
  rights_.refresh();
  std::optional<Rights> rights;
  if (hasRights()) rights.emplace(rights_, settings_.device, user, "", "");
  return jsonAnswer(settingsIndex(rights_, rights ? &*rights : nullptr), head);
}

bool ServletRunner::hasRights() const {
  return settings_.rights && settings_.device.level && settings_.device.identity;
}

// Nothing for those whom the filter let in without a login, and where everyone has all rights.
std::optional<Rights> ServletRunner::rightsOf(const PageContext& context, const char* action) {
  if (!hasRights() || context.page == kLoginPage) return std::nullopt;
  const char* user = context.session ? context.session->getAttribute("user") : nullptr;
  if (!user) return std::nullopt;
  return std::optional<Rights>(std::in_place, rights_, settings_.device, user, context.page, action ? action : "");
}

// Lets the page have the request. True when there was an answer, be it an empty one.
bool ServletRunner::runPage(const RequestHead& head, Body& body, Request& request, PageContext& context,
                            Response& response) {
  HttpServlet* handler = pages_.find(context.page);
  // A page that saves what a form holds is not to take a refused one for an empty one.
  if (!handler || !request.formIsSound()) return handler;
  const FieldLookup field = [&](const std::string& name) { return fieldOf(head, body, request, name.c_str()); };
  std::optional<Rights> rights = rightsOf(context, field("q"));
  if (rights && !rights->mayRun(field)) {
    forbid(*rights, head.wantsJson, response);
    return true;
  }
  request.limitFields(rights ? &*rights : nullptr);
  response.limit(rights ? &*rights : nullptr);
  handler->onRequest(&request, &response);
  request.limitFields(nullptr);
  response.limit(nullptr);
  return true;
}

void ServletRunner::addSessionCookie(const RequestHead& head, const PageContext& context, Answer& answer) const {
  const bool valid = context.session && context.session->valid();
  const std::string id = valid ? context.session->id() : std::string();
  const bool ended = (context.session && !valid) || context.sessionEnded;
  if (id == head.sessionId || (id.empty() && (!ended || head.sessionId.empty()))) return;
  std::string cookie = std::string(sessionCookie(head.secure)) + "=" + id + "; Path=/; HttpOnly; SameSite=Strict";
  if (head.secure) cookie += "; Secure";
  if (id.empty()) cookie += "; Max-Age=0";
  answer.headers.push_back({"Set-Cookie", std::move(cookie)});
}

}  // namespace host
