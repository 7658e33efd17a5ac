#include "host/request.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <string_view>

namespace host {
namespace {
// What a form in the body is to be parsed as: none without POST, and a pushed document is none whatever it is called.
std::string formTypeOf(const RequestHead& head) {
  return head.method == "POST" && !head.isPush() ? head.contentType.value_or("") : "";
}
}  // namespace

Request::Request(const RequestHead& head, Body& body, SessionStore& sessions, PageContext& context,
                 const std::filesystem::path& root)
    : head_(head),
      body_(body),
      sessions_(sessions),
      context_(context),
      uploads_(root),
      form_(formTypeOf(head), body, uploads_) {
  if (!head.sessionId.empty()) {
    context_.session = sessions_.find(head.sessionId, visitor(), std::chrono::steady_clock::now());
  }
}

const char* Request::getParameter(const char* name) {
  if (!name) return nullptr;
  const std::string* value = head_.query.first(name);
  if (!value) value = form_.fields().first(name);
  if (!value) value = form_.fieldsWithFiles().first(name);
  return value && !hides(name) ? value->c_str() : nullptr;
}

const char** Request::getParameterValues(const char* name) {
  if (!name) return nullptr;
  std::vector<const char*> values;
  for (const Fields* fields : {&head_.query, &form_.fieldsWithFiles()}) {
    for (const Fields::Field& field : fields->all()) {
      if (field.name != name) continue;
      for (const std::string& value : field.values) values.push_back(value.c_str());
    }
  }
  if (values.empty() || hides(name)) return nullptr;
  values.push_back(nullptr);
  return valueLists_.emplace_back(std::move(values)).data();
}

// A chunked body that is still on its way has no known length: its limit is what a check for room must reckon with.
int Request::getContentLength() {
  const std::uint64_t known = body_.stream() ? head_.contentLength : body_.gathered().size();
  return static_cast<int>(std::min<std::uint64_t>(known, INT_MAX));
}

HttpSession* Request::getSession(int create) {
  if (context_.session && !context_.session->valid()) {
    context_.session = nullptr;
    context_.sessionEnded = true;
  }
  if (!context_.session && create) context_.session = sessions_.create(visitor(), std::chrono::steady_clock::now());
  if (held_.empty() || held_.back() != context_.session) held_.push_back(context_.session);
  return context_.session.get();
}

int Request::read(char* buffer, int length) {
  if (!buffer || length <= 0 || form_.consumedStream()) return 0;
  const std::size_t count = body_.read(readAt_, buffer, static_cast<std::size_t>(length));
  readAt_ += count;
  return static_cast<int>(count);
}

}  // namespace host
