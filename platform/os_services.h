// What the module asks of the operating system beyond files. In the simulator a shell command runs with the root's
// own bin folder first in PATH, a kill and a sleep are only recorded, and the clock can be moved.
#pragma once

#include <ctime>
#include <string>

// Runs a command through the system shell and waits for it: its exit status, or -1 when it did not run or was ended
// by a signal. Paths in it have passed phonePath(), and each word that is not a literal has passed shellQuote(). The
// configuration service has read its files anew then, if they changed.
int osShell(const std::string& command);

// Sends a signal to a process. 0, or -1 on failure.
int osKill(int process, int signal);

void osSleep(int milliseconds);

// The wall clock, in seconds since the epoch.
std::time_t osTime();

// Writes a line to the system log at a priority of <syslog.h>. The text is taken as it is, never as a format.
void osSyslog(int priority, const char* text);
