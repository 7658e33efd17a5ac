#include "host/answer.h"

#include <microhttpd.h>

#include <algorithm>
#include <array>
#include <utility>

#include "host/http_text.h"

namespace host {

const std::string* Answer::header(std::string_view name) const {
  const auto at =
      std::find_if(headers.begin(), headers.end(), [&](const Header& h) { return equalsIgnoreCase(h.name, name); });
  return at == headers.end() ? nullptr : &at->value;
}

void Answer::setHeader(std::string_view name, std::string value) {
  std::erase_if(headers, [&](const Header& h) { return equalsIgnoreCase(h.name, name); });
  headers.push_back({std::string(name), std::move(value)});
}

const char* reasonOf(int status) {
  return MHD_get_reason_phrase_for(static_cast<unsigned>(status));
}

Answer errorAnswer(int status, bool asJson) {
  Answer answer;
  answer.status = status;
  const std::string code = std::to_string(status), reason = reasonOf(status);
  if (asJson) {
    answer.headers.push_back({"Content-Type", "application/json"});
    answer.body = "{\"error\":" + code + ",\"message\":\"" + reason + "\"}";
    return answer;
  }
  answer.headers.push_back({"Content-Type", "text/html; charset=utf-8"});
  answer.body = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>" + code + " " + reason +
                "</title><meta name=\"viewport\" content=\"width=device-width\"><link rel=\"stylesheet\" "
                "href=\"/css/style.css\"></head>\n<body><main class=\"error-page\"><h1>" +
                reason + "</h1><p>Error " + code + "</p><p><a href=\"/\">Home</a></p></main></body></html>\n";
  return answer;
}

void addCommonHeaders(Answer& answer, bool secure) {
  static constexpr std::array<std::pair<const char*, const char*>, 5> kHeaders{
      {{"X-Content-Type-Options", "nosniff"},
       {"X-Frame-Options", "DENY"},
       {"Referrer-Policy", "no-referrer"},
       {"Content-Security-Policy",
        "default-src 'self'; base-uri 'none'; form-action 'self'; frame-ancestors 'none'; object-src 'none'"},
       {"Cache-Control", "no-store"}}};
  for (const auto& [name, value] : kHeaders) {
    if (!answer.header(name)) answer.headers.push_back({name, value});
  }
  // A week: a phone that lost its certificate is not to be shut to its people for longer.
  if (secure) answer.setHeader("Strict-Transport-Security", "max-age=604800");
}

}  // namespace host
