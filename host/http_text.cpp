#include "host/http_text.h"

#include <algorithm>
#include <cctype>

namespace host {
namespace {
char lower(char c) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

// "0.35" as 350; 1000 for anything that is no quality.
int parseQuality(std::string_view text) {
  if (text.empty() || text[0] != '0') return 1000;
  int quality = 0, weight = 100;
  for (char c : text.substr(std::min<std::size_t>(2, text.size()))) {
    if (c < '0' || c > '9') return 1000;
    quality += (c - '0') * weight;
    weight /= 10;
  }
  return quality;
}
}  // namespace

std::string_view trimBlanks(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

std::string_view nextItem(std::string_view& list, char separator) {
  std::size_t end = 0;
  for (bool quoted = false; end < list.size() && (quoted || list[end] != separator); ++end) {
    if (list[end] == '"') quoted = !quoted;
    if (quoted && list[end] == '\\' && end + 1 < list.size()) ++end;
  }
  end = std::min(end, list.size());
  const std::string_view item = trimBlanks(list.substr(0, end));
  list.remove_prefix(std::min(list.size(), end + 1));
  return item;
}

int qualityOf(std::string_view header, std::string_view token) {
  while (!header.empty()) {
    std::string_view item = nextItem(header, ',');
    if (!equalsIgnoreCase(nextItem(item, ';'), token)) continue;
    while (!item.empty()) {
      const std::string_view parameter = nextItem(item, ';');
      if (parameter.size() > 2 && lower(parameter[0]) == 'q' && parameter[1] == '=') {
        return parseQuality(parameter.substr(2));
      }
    }
    return 1000;
  }
  return -1;
}

bool acceptsGzip(std::string_view acceptEncoding) {
  const int named = qualityOf(acceptEncoding, "gzip");
  return named >= 0 ? named > 0 : qualityOf(acceptEncoding, "*") > 0;
}

bool prefersJson(std::string_view accept) {
  const int json = qualityOf(accept, "application/json");
  return json > 0 && json >= qualityOf(accept, "text/html");
}

bool matchesEtag(std::string_view ifNoneMatch, std::string_view etag) {
  while (!ifNoneMatch.empty()) {
    std::string_view item = nextItem(ifNoneMatch, ',');
    if (item.starts_with("W/")) item.remove_prefix(2);
    if (item == "*" || item == etag) return true;
  }
  return false;
}

std::string headerParameter(std::string_view header, std::string_view name) {
  nextItem(header, ';');
  while (!header.empty()) {
    std::string_view value = nextItem(header, ';');
    const std::size_t equals = value.find('=');
    if (equals == std::string_view::npos || !equalsIgnoreCase(trimBlanks(value.substr(0, equals)), name)) continue;
    value = trimBlanks(value.substr(equals + 1));
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
    return std::string(value);
  }
  return {};
}

std::string mediaType(std::string_view contentType) {
  std::string type(nextItem(contentType, ';'));
  std::transform(type.begin(), type.end(), type.begin(), lower);
  return type;
}

std::string_view cookieValue(std::string_view cookies, std::string_view name) {
  while (!cookies.empty()) {
    const std::string_view whole = cookies.substr(0, cookies.find(';'));  // quotes mean nothing here
    cookies.remove_prefix(std::min(cookies.size(), whole.size() + 1));
    const std::string_view cookie = trimBlanks(whole);
    if (cookie.starts_with(name) && cookie.substr(name.size()).starts_with('=')) return cookie.substr(name.size() + 1);
  }
  return {};
}

bool isHeaderName(std::string_view name) {
  static constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || kMarks.find(c) != std::string_view::npos;
  });
}

bool isHeaderValue(std::string_view value) {
  return std::none_of(value.begin(), value.end(), isControl);
}

std::string headerSafeAddress(std::string_view address) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  static constexpr std::string_view kUnsafe = " \"<>\\^`{|}";
  std::string out;
  for (char c : address) {
    const auto byte = static_cast<unsigned char>(c);
    if (isControl(c) || byte > 0x7f || kUnsafe.find(c) != std::string_view::npos) {
      out += '%';
      out += kDigits[byte >> 4];
      out += kDigits[byte & 15];
    } else {
      out += c;
    }
  }
  return out;
}

}  // namespace host
