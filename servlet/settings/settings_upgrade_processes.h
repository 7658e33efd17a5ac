// Ending what runs on the phone, so that its firmware can be replaced.
#pragma once

// What becomes of the processes of a list.
enum UpdateKill : int {
  kKillListed = 0,
  kKeepListed = 1,  // all others are killed
};

// Kills processes by their names, as "/proc" shows them; never this one, its parent, process 1 and threads of the
// kernel.
void update_kill(const char* const* names, int count, int keep);
