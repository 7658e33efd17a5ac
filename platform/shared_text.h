// Named texts in memory shared between the phone's applications, and the lock around them.
#pragma once

#include <cstddef>

// The text of that name, made with `size` bytes when there is none and `size` is not 0 (its first writer fixes the
// size); null when it does not exist. `*capacity` gets its size in bytes, the final NUL included. Valid until the
// process ends; look and change only under the global lock.
char* sharedTextGet(const char* name, std::size_t size, std::size_t* capacity);

void sharedTextLock();
void sharedTextUnlock();
