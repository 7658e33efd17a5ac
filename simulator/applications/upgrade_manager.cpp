// The upgrade manager: knows whether an upgrade runs already.
#include "platform/phone_application.h"
#include "simulator/applications/application.h"

namespace simulator {
namespace {

int upgrading(Phone& phone, const JournalEntry&) {
  return phone.state.upgrading ? 1 : 0;
}

constexpr MessageHandler kMessages[] = {
    {.message = kUpgradeBegins, .answer = upgrading},
};

}  // namespace

constinit const Application upgradeManager{kUpgradeManager, kMessages};

}  // namespace simulator
