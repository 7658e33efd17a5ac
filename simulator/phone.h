// The one phone of this process.
#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <set>
#include <string>

#include "simulator/config_store.h"
#include "simulator/journal.h"
#include "simulator/state/device_state.h"

namespace simulator {

struct Phone {
  // Guards everything below but `root`, which changes only while no handler runs. Held for moments only: never while
  // a command runs.
  std::mutex mutex;
  std::string root;  // real path; empty before the first start
  ConfigStore config;
  DeviceState state;
  Journal journal;
  std::set<int> expansionHandles;
  std::chrono::steady_clock::time_point provisioningEnd;  // of the last run

  // The following two are called with the mutex held.
  void systemCall(const char* call, std::string text);
  // `reason` is the text of the journal entry.
  void reboot(std::string reason);
};

Phone& phone();

}  // namespace simulator
