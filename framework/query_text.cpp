#include "framework/query_text.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "framework/config_operate.h"
#include "platform/config_parser.h"

namespace {

constexpr std::string_view kUnreserved = "-_.~";
constexpr std::string_view kQueryMarks = "-_.~!$&'()*+,;=:@/?";

bool isAlnum(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

void appendEncoded(std::string& text, char c) {
  constexpr char kHex[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  text += {'%', kHex[byte >> 4], kHex[byte & 15]};
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

// True when the text begins with "%XX".
bool startsWithEncoded(std::string_view text) {
  return text.size() > 2 && text[0] == '%' && hexValue(text[1]) >= 0 && hexValue(text[2]) >= 0;
}

// The first field of the query, which goes on behind it.
std::string_view takeField(std::string_view& query) {
  const std::string_view field = query.substr(0, query.find('&'));
  query.remove_prefix(std::min(field.size() + 1, query.size()));
  return field;
}

std::string withoutSecret(std::string_view field) {
  const std::string decoded = decodeQueryText(field);
  if (decoded.starts_with('@') || decoded.find("&@") != std::string::npos) return kSecretPlaceholder;
  const std::size_t equals = field.find('=');
  if (equals == std::string_view::npos || !isSecretName(decodeQueryText(field.substr(0, equals)))) {
    return std::string(field);
  }
  return std::string(field.substr(0, equals + 1)) + kSecretPlaceholder;
}

}  // namespace

std::string encodeQueryValue(std::string_view text) {
  std::string encoded;
  for (const char c : text) {
    if (isAlnum(c) || kUnreserved.find(c) != std::string_view::npos) {
      encoded += c;
    } else {
      appendEncoded(encoded, c);
    }
  }
  return encoded;
}

std::string encodeQuery(std::string_view query) {
  std::string encoded;
  for (std::size_t i = 0; i < query.size(); ++i) {
    const char c = query[i];
    if (isAlnum(c) || kQueryMarks.find(c) != std::string_view::npos || startsWithEncoded(query.substr(i))) {
      encoded += c;
    } else {
      appendEncoded(encoded, c);
    }
  }
  return encoded;
}

std::string decodeQueryText(std::string_view text) {
  std::string decoded;
  for (; !text.empty(); text.remove_prefix(1)) {
    if (startsWithEncoded(text)) {
      decoded += static_cast<char>(hexValue(text[1]) * 16 + hexValue(text[2]));
      text.remove_prefix(2);
    } else {
      decoded += text.front() == '+' ? ' ' : text.front();
    }
  }
  return decoded;
}

bool hasField(std::string_view query, std::string_view name) {
  while (!query.empty()) {
    const std::string_view field = takeField(query);
    if (decodeQueryText(field.substr(0, field.find('='))) == name) return true;
  }
  return false;
}

bool isSecretName(std::string_view name) {
  std::string lower(name);
  std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::ranges::any_of(kSecretWords, [&](const char* word) { return lower.find(word) != std::string::npos; });
}

std::string withoutSecrets(std::string_view query) {
  std::string shown;
  while (!query.empty()) {
    const std::size_t before = query.size();
    const std::string_view field = takeField(query);
    shown += withoutSecret(field);
    if (field.size() < before) shown += '&';
  }
  return shown;
}
