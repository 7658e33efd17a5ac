#include "simulator/directory/directory_contents.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <tuple>

namespace simulator {
namespace {

constexpr char kDefaultPhoto[] = "Default:default_contact_image.png";
constexpr std::string_view kPhotoSources[] = {"Default", "Resource", "Config"};
constexpr std::size_t kMaxPhotoName = 255;

auto fieldsOf(const NS_DIRECTORY::ContactGeneralItemData& data) {
  return std::tie(data.displayName, data.officeNumber, data.mobileNumber, data.otherNumber, data.photo, data.ring,
                  data.account);
}

// A file name that leads nowhere else.
bool isPlainName(std::string_view name) {
  return !name.empty() && name.size() <= kMaxPhotoName && name != "." && name != ".." &&
         name.find_first_of("/\\") == std::string_view::npos;
}

}  // namespace

bool DirectoryContact::operator==(const DirectoryContact& other) const {
  return group == other.group && fieldsOf(data) == fieldsOf(other.data);
}

DirectoryContents::DirectoryContents()
    : groups{{kAllContactsId, "All Contacts", kDefaultRing}, {kBlacklistId, "Blacklist", kDefaultRing}} {}

DirectoryGroup* DirectoryContents::group(int id) {
  const auto found = std::find_if(groups.begin(), groups.end(), [id](const auto& one) { return one.id == id; });
  return found != groups.end() ? &*found : nullptr;
}

const DirectoryGroup* DirectoryContents::group(int id) const {
  return const_cast<DirectoryContents*>(this)->group(id);
}

DirectoryGroup* DirectoryContents::group(const std::string& name) {
  const auto found = std::find_if(groups.begin(), groups.end(), [&name](const auto& one) { return one.name == name; });
  return found != groups.end() ? &*found : nullptr;
}

std::size_t DirectoryContents::blacklisted() const {
  return static_cast<std::size_t>(std::count_if(contacts.begin(), contacts.end(),
                                                [](const auto& contact) { return contact.group == kBlacklistId; }));
}

bool isListedIn(const DirectoryContact& contact, int group) {
  return group == kAllContactsId ? contact.group != kBlacklistId : contact.group == group;
}

bool isPhoto(const std::string& value) {
  const auto colon = value.find(':');
  if (colon == std::string::npos) return false;
  const std::string_view text = value;
  return std::find(std::begin(kPhotoSources), std::end(kPhotoSources), text.substr(0, colon)) !=
             std::end(kPhotoSources) &&
         isPlainName(text.substr(colon + 1));
}

void completeContact(NS_DIRECTORY::ContactGeneralItemData& contact) {
  contact.groupName.clear();
  contact.reserved = 0;
  if (contact.ring.empty()) contact.ring = kDefaultRing;
  if (!isPhoto(contact.photo)) contact.photo = kDefaultPhoto;
}

int appendGroup(DirectoryContents& contents, const std::string& name, const std::string& ring) {
  int id = kBlacklistId + 1;
  while (contents.group(id) != nullptr) ++id;
  contents.groups.push_back({id, name, ring.empty() ? kDefaultRing : ring});
  return id;
}

void regroupContacts(DirectoryContents& contents) {
  for (DirectoryContact& contact : contents.contacts) {
    if (contents.group(contact.group) == nullptr) contact.group = kAllContactsId;
  }
}

}  // namespace simulator
