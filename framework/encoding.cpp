#include "framework/encoding.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

bool isBase64(char character) {
  return character == '=' || kAlphabet.find(character) != std::string_view::npos;
}

// Appends the bytes of one group of up to four characters.
void decodeGroup(std::string_view group, std::string& output) {
  unsigned bits = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    bits = bits << 6 | static_cast<unsigned>(i < group.size() ? GetBase64Value(group[i]) : 0);
  }
  const std::size_t characters = std::min(group.size(), group.find('='));
  for (std::size_t i = 1; i < characters; ++i) output += static_cast<char>(bits >> (24 - 8 * i));
}

int decodeText(std::string_view text, std::string& output) {
  output.clear();
  for (; !text.empty(); text.remove_prefix(std::min<std::size_t>(4, text.size()))) {
    decodeGroup(text.substr(0, 4), output);
  }
  return static_cast<int>(output.size());
}

}  // namespace

int Base64Enc(std::string& output, const void* data, int length) {
  output.clear();
  const auto* bytes = static_cast<const unsigned char*>(data);
  for (int i = 0; i < length; i += 3) {
    const int left = std::min(3, length - i);
    unsigned bits = 0;
    for (int j = 0; j < 3; ++j) bits = bits << 8 | (j < left ? bytes[i + j] : 0u);
    for (int j = 0; j < 4; ++j) output += j <= left ? kAlphabet[bits >> (18 - 6 * j) & 63] : '=';
  }
  return static_cast<int>(output.size());
}

int Base64Dec(std::string& output, const char* text, int length) {
  if (length < 0 || length % 4 != 0) return -1;
  const std::string_view whole(text, static_cast<std::size_t>(length));
  return decodeText(whole.substr(0, whole.find('\0')), output);
}

int base64_encode(const void* data, int length, char** output) {
  std::string text;
  Base64Enc(text, data, length);
  *output = strdup(text.c_str());
  return *output ? static_cast<int>(text.size()) : 0;
}

int base64_decode(const char* text, std::string& output) {
  const std::string_view whole = text;
  const auto end = std::ranges::find_if_not(whole, isBase64);
  return decodeText(whole.substr(0, static_cast<std::size_t>(end - whole.begin())), output);
}

int GetBase64Value(char character) {
  const std::size_t value = kAlphabet.find(character);
  return value == std::string_view::npos ? 0 : static_cast<int>(value);
}
