// Reading of header texts.
#pragma once

#include <string>
#include <string_view>

namespace host {

std::string_view trimBlanks(std::string_view text);
bool equalsIgnoreCase(std::string_view a, std::string_view b);

// The next item of a list parted by `separator`, without blanks around it; `list` is moved past it. Separators inside
// a quoted text do not count.
std::string_view nextItem(std::string_view& list, char separator);

// The quality (0 to 1000) that an Accept or Accept-Encoding header gives `token`; -1 when it does not name it.
int qualityOf(std::string_view header, std::string_view token);

// True when a browser takes gzip.
bool acceptsGzip(std::string_view acceptEncoding);
// True when JSON is named and liked at least as well as HTML.
bool prefersJson(std::string_view accept);
// True when an If-None-Match header names `etag` (or is "*").
bool matchesEtag(std::string_view ifNoneMatch, std::string_view etag);

// The value of a parameter such as `boundary` in "multipart/form-data; boundary=x; charset=utf-8"; empty when absent.
std::string headerParameter(std::string_view header, std::string_view name);
// "text/html" of "Text/HTML; charset=utf-8": the type alone, in lower case.
std::string mediaType(std::string_view contentType);

// The value of the first cookie `name` in a Cookie header; empty when absent.
std::string_view cookieValue(std::string_view cookies, std::string_view name);

bool isHeaderName(std::string_view name);
bool isHeaderValue(std::string_view value);
// The address with every byte that has no place in a header percent-encoded.
std::string headerSafeAddress(std::string_view address);

}  // namespace host
