#include "simulator/applications/network_directories.h"

#include <chrono>
#include <string>

namespace simulator {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kFetchTime{1};
constexpr char kStatusKey[] = "BsftCustomListStatus";

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ",") + name;
  return text;
}

}  // namespace

void fetchNetworkDirectories(Phone& phone) {
  phone.config.set({{kStatusKey, "2"}});
  phone.running.directoriesFetched = Clock::now() + kFetchTime;
}

void takeNetworkDirectories(Phone& phone) {
  if (!phone.running.directoriesFetched || Clock::now() < *phone.running.directoriesFetched) return;
  phone.running.directoriesFetched.reset();
  const std::string& error = phone.state.networkDirectoryError;
  if (error.empty()) {
    phone.config.set({{"BsftCustomListAll", joined(phone.state.networkDirectories)}, {kStatusKey, "3"}});
  } else {
    phone.config.set({{"BsftCustomListFailReason", error}, {kStatusKey, "4"}});
  }
}

}  // namespace simulator
