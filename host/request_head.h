// What the host knows of a request before its body.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/fields.h"

namespace host {

struct RequestHead {
  std::string method;
  std::string target;  // as received, from the first "/" on
  std::string path;    // of the target, not decoded
  Fields query;
  FieldResult queryError = FieldResult::kOk;
  std::string remoteAddress;
  bool secure = false;                    // came over TLS
  std::optional<std::string> host;        // the Host header; several of them as a list
  bool needsHost = false;                 // from HTTP/1.1 on
  std::optional<std::string> targetHost;  // of a target that names one, as a proxy's client sends it
  std::optional<std::string> contentType;
  std::string sessionId;  // from the cookie; empty when there is none
  std::string origin, fetchSite, fetchMode, fetchDest;
  bool wantsJson = false, acceptsGzip = false;
  std::string ifNoneMatch;
  std::uint64_t contentLength = 0;

  // A field of the query; null when absent.
  const std::string* field(std::string_view name) const { return query.first(name); }
  bool reads() const { return method == "GET" || method == "HEAD"; }
  // True for a document that is pushed to the phone. It goes to the filter, which lets strangers in with it; what else
  // the request names is not for them.
  bool isPush() const { return std::string_view(target).substr(path.size()).starts_with("?push"); }
};

// Over TLS it has a name that browsers let nobody set but the TLS server itself. Under one name for both, they would
// refuse the cookie of plain HTTP while they have the other, and whoever had logged in over TLS could not do so there.
constexpr const char* sessionCookie(bool secure) {
  return secure ? "__Host-PHONESESSION" : "PHONESESSION";
}

// The value of a header; null when absent.
using HeaderLookup = std::function<const char*(const char* name)>;

struct Sender {
  std::string address;
  bool secure = false;  // sends over TLS
};

// `target` as received, a proxy's absolute one included.
RequestHead readHead(std::string method, std::string_view target, Sender sender, const HeaderLookup& headers);

}  // namespace host
