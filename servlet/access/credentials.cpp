#include "servlet/access/credentials.h"

#include "framework/config_operate.h"
#include "framework/file_password.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "platform/os_services.h"

namespace {

constexpr std::size_t kBuckets = 100;
constexpr std::size_t kMostClients = 10'000;  // beyond, the counts begin anew: memory stays bounded
constexpr int kAllowedFailures = 2;
constexpr std::time_t kLockSeconds = 179;

bool isVarSwitchedOff(const std::string& identity) {
  return identity == "var" && readConfigText("AdvancedVarEnabled", 4) == "0";
}

}  // namespace

CredentialsDoor::CredentialsDoor() : failures_(kBuckets) {}

Entry CredentialsDoor::enter(const std::string& client, const char* user, const char* password, std::string& identity) {
  identity.clear();
  if (isLockedOut(client)) return Entry::kLockedOut;
  GetIdentityByName(user ? user : "", &identity);
  const bool right = filePassword(kPasswordFile).IsRightUserPassword(user, password);
  if (!right || isVarSwitchedOff(identity)) return refuse(client);
  if (int* failures = failures_.find(client)) *failures = 0;
  return Entry::kGranted;
}

Entry CredentialsDoor::refuse(const std::string& client) {
  int* failures = failures_.find(client);
  if (!failures) {
    if (failures_.size() >= kMostClients) failures_.clear();
    failures = &failures_.set(client, 0);
  }
  if (++*failures <= kAllowedFailures) return Entry::kRefused;
  lockTime_ = osTime();
  return Entry::kLockedOut;
}

bool CredentialsDoor::isLockedOut(const std::string& client) {
  int* failures = failures_.find(client);
  if (!failures || *failures <= kAllowedFailures) return false;
  if (osTime() - lockTime_ <= kLockSeconds) return true;
  log_log(kWebLog, kLogInfo, "LoginServlet::onRequest() Lock already 3 min.\n");
  *failures = 0;
  return false;
}

int CredentialsDoor::failuresOf(const std::string& client) {
  const int* failures = failures_.find(client);
  return failures ? *failures : 0;
}

void CredentialsDoor::reset() {
  failures_.clear();
  lockTime_ = 0;
}

CredentialsDoor& credentialsDoor() {
  static CredentialsDoor door;
  return door;
}
