// Goes before the phone's upgrade library: takes an image out of its stream and leaves it at that, so that what the
// page needs can be told apart from what a sum and a file need.
#include "platform/upgrade.h"

int upui_Upgrade(IUpgrader* upgrader, int) {
  static char piece[64 * 1024];  // as the library reads
  while (upgrader->ReadStream(piece, sizeof piece) > 0) continue;
  return 0;
}
