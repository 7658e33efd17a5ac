#include "platform/named_lock.h"

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <string_view>
#include <thread>

#include "platform/phone_root.h"

namespace {

constexpr std::chrono::milliseconds kPause{5};

bool isLockName(std::string_view name) {
  constexpr std::string_view kCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
  return !name.empty() && name.find_first_not_of(kCharacters) == std::string_view::npos;
}

// Takes or gives back the whole file. The lock belongs to the open file, not to the process: two threads of one
// process are kept apart like two processes.
bool setLock(int handle, short type) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  return ::fcntl(handle, F_OFD_SETLK, &lock) == 0;
}

}  // namespace

bool ETL_BaseHelper::chMutex::OpenMutex(const char* name) {
  CloseMutex();
  if (name == nullptr || !isLockName(name)) return false;
  const std::string path = phonePath("/tmp/" + std::string(name) + ".lock");
  if (!path.empty()) handle_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
  return handle_ >= 0;
}

// It asks again and again instead of sleeping in the system call, so that waiting has an end in time.
bool ETL_BaseHelper::chMutex::Lock(int milliseconds) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
  while (handle_ >= 0 && !setLock(handle_, F_WRLCK)) {
    if (milliseconds >= 0 && Clock::now() >= end) return false;
    std::this_thread::sleep_for(kPause);
  }
  return handle_ >= 0;
}

bool ETL_BaseHelper::chMutex::Unlock() {
  return handle_ >= 0 && setLock(handle_, F_UNLCK);
}

void ETL_BaseHelper::chMutex::CloseMutex() {
  if (handle_ >= 0) ::close(handle_);
  handle_ = -1;
}
