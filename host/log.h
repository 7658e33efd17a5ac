// The host's log lines.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace host {

// Writes the parts as one line to the sink. Control characters become \xNN, so no text from outside breaks a line.
// Safe from any thread.
void logLine(std::initializer_list<std::string_view> parts);

// Where lines go (without line end); standard error when null. Not to be called while the server runs.
void setLogSink(std::function<void(std::string_view line)> sink);

// The text with control characters, '"' and '\' escaped, cut to `limit` bytes of the original.
std::string printable(std::string_view text, std::size_t limit);

}  // namespace host
