// The state of the simulated device, as its HTTP control shows and changes it.
#pragma once

#include <cstdint>
#include <ctime>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "platform/phone_application.h"
#include "simulator/config_store.h"
#include "simulator/state/network_interface.h"

namespace simulator {

inline constexpr int kAccountCount = 16;

// The SIP server that an account registers with; empty without one.
std::string sipServer(const ConfigStore& config, int account);

struct ExpansionModule {
  int type = 0;
  std::string hardware;
  std::string firmware;
};

// What a key shows of somebody's line.
struct BusyLamp {
  int key = 0;
  std::string value, label, extension;
};

struct DirectoryState {
  bool available = true;
  bool busy = false;
  int refusal = 0;  // a negative code refuses every change
};

// A field that the control is to show gets a row in state_members.cpp.
struct DeviceState {
  int phoneType = 46;
  std::string hardwareVersion = "46.0.0.1";
  std::string mac = "02005e000046";  // 12 hex digits, or empty when the phone does not know it
  bool talking = false;
  std::vector<int> registration;  // by account
  NetworkInterface network;
  std::vector<ExpansionModule> expansionModules;
  std::map<std::string, std::string> bootEnvironment;
  bool bootEnvironmentLocked = false;  // no variable can be set
  bool upgrading = false;
  bool capturing = false;
  std::int64_t clockOffset = 0;  // seconds
  int rebootSeconds = 0;
  std::map<std::string, int> answers;  // by "THREAD 0xMESSAGE"
  DirectoryState directory;
  std::vector<BusyLamp> blfList;
  std::vector<std::string> networkDirectories = {"Sales", "Support"};
  std::string networkDirectoryError;             // empty: they can be fetched
  std::vector<std::string> missingApplications;  // threads that nobody finds

  // What the phone does when it comes up: ends its calls, registers its accounts and brings its interface up, from its
  // configuration.
  void bringUp(const ConfigStore& config);
  void registerAccount(const ConfigStore& config, int account);

  int registrationOf(int account) const;

  // The phone's clock, in seconds since the epoch.
  std::time_t time() const { return std::time(nullptr) + clockOffset; }

  nlohmann::ordered_json json() const;
  // Merges a patch. A member that is null goes back to what the phone itself came up with. The error text names the
  // member that is unknown or of a wrong type; the state is unchanged then.
  std::optional<std::string> patch(const nlohmann::json& patch, const ConfigStore& config);
};

}  // namespace simulator
