// The phone's log.
#pragma once

// Writes one line. `module` is 2 for the web interface; `level` is 3 for hard failures, 4 for bad parameters and failed
// operations, 6 for progress. The format is printf's and always a literal: text from a request goes through "%s".
// Control characters in the result are written as "\xNN", so that no text can forge a line.
void log_log(int module, int level, const char* format, ...) __attribute__((format(printf, 3, 4)));
