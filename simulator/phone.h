// The one phone of this process.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "simulator/config_store.h"
#include "simulator/directory/directory.h"
#include "simulator/journal.h"
#include "simulator/state/device_state.h"

namespace simulator {

// What the applications remember until the phone goes down.
struct Running {
  std::chrono::steady_clock::time_point provisioningEnd;  // of the last run
  std::optional<std::chrono::steady_clock::time_point> directoriesFetched;
  std::optional<std::string> capture;  // the packets of the last one, as they stand in its file
  std::uint64_t capturedPackets = 0;
  bool safeMode = false;
};

// What the certificate library was told: paths of the phone, empty ones until then.
struct CertificateOptions {
  std::string trustedFolder = "/config/certs/";
  std::string serverCertificate = "/config/certs/server/WebServer.pem";
  std::string trustedInUse, serverInUse;
  int commonNameCheck = 0;
};

struct Phone {
  // Guards everything below but `root`, which changes only while no handler runs. Held for moments only: never while
  // a command runs.
  std::mutex mutex;
  std::string root;  // real path; empty before the first start
  ConfigStore config;
  Directory directory;
  DeviceState state;
  Journal journal;
  std::set<int> expansionHandles;
  Running running;
  CertificateOptions certificateOptions;

  // The following are called with the mutex held.
  // As simulator::setState().
  std::optional<std::string> patchState(const std::string& patch);
  void systemCall(const char* call, std::string text);
  // Loads the configuration and the directory, starts the applications, registers the accounts and brings the network
  // up.
  void comeUp();
  // `reason` is the text of the journal entry.
  // Safe mode lasts for one run of the phone: the next reboot ends it.
  void reboot(std::string reason);
  // Makes the configuration anew and reboots.
  void resetToFactory();
};

Phone& phone();

}  // namespace simulator
