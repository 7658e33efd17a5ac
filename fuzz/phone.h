// A phone for a fuzzed process: its tree lies in a temporary folder that is gone at the end, its log is silent.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

// What has to hold whatever the input is. Ends the program, as a finding, when it does not.
inline void require(bool holds, std::string_view what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

// The folder that stands for the phone's root. The first call makes the phone.
const std::filesystem::path& fuzzedPhone();

// Commands are looked at only, unless a program asks for more.
inline bool fuzzedCommandsRun = false;

// Brings the phone back to what it is when it is delivered.
void resetFuzzedPhone();

// The bytes of an input.
inline std::string_view inputText(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Takes the text up to the separator off the front, the separator with it; all of it when there is none.
inline std::string_view takeUpTo(std::string_view& text, char separator) {
  const std::size_t end = text.find(separator);
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return part;
}

// A text of the input that ends with its line or at a NUL.
inline std::string takeLine(std::string_view& input) {
  const std::string_view line = takeUpTo(input, '\n');
  return std::string(line.substr(0, line.find('\0')));
}
