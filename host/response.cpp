#include "host/response.h"

#include <array>
#include <cstdarg>
#include <cstdio>

#include "host/http_text.h"
#include "host/log.h"

namespace host {
namespace {
bool isHostsOwn(std::string_view header) {
  for (std::string_view own : {"Content-Length", "Transfer-Encoding", "Connection", "Keep-Alive", "Upgrade", "Date"}) {
    if (equalsIgnoreCase(header, own)) return true;
  }
  return false;
}

std::string_view orEmpty(const char* text) {
  return text ? text : "";
}

// Pages are UTF-8, and the browser is told so.
std::string withCharset(std::string_view type) {
  const bool bare = equalsIgnoreCase(trimBlanks(type), "text/html");
  return std::string(type) + (bare ? "; charset=utf-8" : "");
}
}  // namespace

bool Response::carries(std::string_view name, std::string_view value) const {
  if (isHeaderName(name) && isHeaderValue(value) && !isHostsOwn(name)) return true;
  logLine({"header dropped: ", printable(name, 64)});
  return false;
}

void Response::setContentType(const char* type) {
  if (carries("Content-Type", orEmpty(type))) answer_.setHeader("Content-Type", withCharset(orEmpty(type)));
}

void Response::setHeader(const char* name, const char* value) {
  if (carries(orEmpty(name), orEmpty(value))) answer_.setHeader(name, std::string(orEmpty(value)));
}

void Response::addHeader(const char* name, const char* value) {
  if (carries(orEmpty(name), orEmpty(value))) answer_.headers.push_back({name, std::string(orEmpty(value))});
}

void Response::sendRedirect(const char* location) {
  answer_.status = 302;
  answer_.setHeader("Location", headerSafeAddress(orEmpty(location)));
  body_.clear();
}

void Response::sendError(int status) {
  answer_.status = status >= 400 && status <= 599 ? status : 500;
}

void Response::print(const char* format, ...) {
  std::array<char, 1024> text;
  va_list arguments, again;
  va_start(arguments, format);
  va_copy(again, arguments);
  const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
  va_end(arguments);
  if (length >= static_cast<int>(text.size())) {
    std::string longer(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(longer.data(), longer.size(), format, again);
    body_.append(std::string_view(longer).substr(0, static_cast<std::size_t>(length)));
  } else if (length > 0) {
    body_.append({text.data(), static_cast<std::size_t>(length)});
  }
  va_end(again);
}

void Response::write(const void* data, int size, int count) {
  if (!data || size <= 0 || count <= 0) return;
  body_.append({static_cast<const char*>(data), static_cast<std::size_t>(size) * static_cast<std::size_t>(count)});
}

void Response::putChar(int byte) {
  const char c = static_cast<char>(byte);
  body_.append({&c, 1});
}

void Response::renderTemplate(const char* path, TMPL_varlist* list) {
  if (rights_) list = rights_->visible(orEmpty(path), list);
  if (asJson_) {
    answer_.setHeader("Content-Type", "application/json");
    body_.append(templateJson(orEmpty(path), list, context_));
  } else if (!renderer_.render(orEmpty(path), list, context_, body_)) {
    fail(500);
  }
}

void Response::setPhoneType(const char* model) {
  context_.phoneType = orEmpty(model);
}

void Response::fail(int status) {
  answer_ = {};
  answer_.status = status;
  body_.clear();
}

Answer Response::finish() {
  const std::size_t size = body_.size();
  FileHandle file = body_.takeFile();
  if (body_.failed()) {
    file.reset();
    logLine({"an answer found no room on the disk"});
    fail(500);
  }
  if (answer_.status >= 400 && body_.empty()) {
    Answer page = errorAnswer(answer_.status, asJson_);
    for (const Header& header : answer_.headers) {
      if (!page.header(header.name)) page.headers.push_back(header);
    }
    return page;
  }
  if (!answer_.header("Content-Type") && size > 0) setContentType("text/html");
  answer_.fileSize = size;
  answer_.file = std::move(file);
  if (!answer_.file) answer_.body = body_.takeMemory();
  return std::move(answer_);
}

}  // namespace host
