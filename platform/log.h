// The phone's log.
#pragma once

inline constexpr int kWebLog = 2;  // the module of the web interface

enum LogLevel : int {
  kLogError = 3,    // hard failures
  kLogWarning = 4,  // bad parameters, failed operations
  kLogInfo = 6,     // progress
};

// Writes one line. The format is printf's and always a literal: text from a request goes through "%s". Control
// characters in the result are written as "\xNN", so that no text can forge a line.
void log_log(int module, int level, const char* format, ...) __attribute__((format(printf, 3, 4)));
