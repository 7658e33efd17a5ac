#include "simulator/applications/provisioning_service.h"

#include <chrono>

#include "platform/phone_application.h"
#include "simulator/applications/application.h"

namespace simulator {
namespace {

constexpr std::chrono::seconds kProvisioningTime{3};

int provisioning(Phone& phone, const JournalEntry&) {
  return std::chrono::steady_clock::now() < phone.running.provisioningEnd ? 1 : 0;
}

void provision(Phone& phone, const JournalEntry&) {
  startProvisioning(phone);
}

constexpr MessageHandler kMessages[] = {
    {.message = kProvisioningState, .answer = provisioning},
    {.message = kProvisionNow, .react = provision},
};

}  // namespace

void startProvisioning(Phone& phone) {
  phone.running.provisioningEnd = std::chrono::steady_clock::now() + kProvisioningTime;
}

constinit const Application provisioningService{kProvisioningService, kMessages};

}  // namespace simulator
