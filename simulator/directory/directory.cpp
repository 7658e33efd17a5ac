#include "simulator/directory/directory.h"

#include <utility>

#include "platform/log.h"
#include "simulator/directory/directory_files.h"

namespace simulator {
namespace {

constexpr int kLogModule = 2;

}  // namespace

void Directory::load() {
  recoverFiles();
  loadGroups();
  loadContacts();
}

void Directory::loadGroups() {
  readGroups(contents_);
  regroupContacts(contents_);
}

void Directory::loadContacts() {
  names_.reset();
  readContacts(contents_);
}

bool Directory::replace(DirectoryContents next) {
  if (!writeFiles(contents_, next)) {
    log_log(kLogModule, 3, "directory: its files cannot be written\n");
    return false;
  }
  names_.reset();
  contents_ = std::move(next);
  return true;
}

std::string Directory::nameOf(const std::string& number) {
  if (!names_) {
    names_.emplace();
    for (const DirectoryContact& contact : contents_.contacts) {
      for (const std::string* one :
           {&contact.data.officeNumber, &contact.data.mobileNumber, &contact.data.otherNumber}) {
        if (!one->empty()) names_->emplace(*one, contact.data.displayName);
      }
    }
  }
  const auto found = names_->find(number);
  return found != names_->end() ? std::string(found->second) : std::string();
}

}  // namespace simulator
