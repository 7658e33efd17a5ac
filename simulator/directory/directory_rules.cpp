#include "simulator/directory/directory_rules.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "simulator/xml_file.h"

namespace simulator {
namespace {

using namespace NS_DIRECTORY;
using Names = std::unordered_set<std::string_view>;

bool isName(const std::string& name) {
  return !name.empty() && fitsXml(name);
}

bool isFixed(const DirectoryGroup& group) {
  return group.id == kAllContactsId || group.id == kBlacklistId;
}

DirectoryContact* contactNamed(DirectoryContents& contents, const std::string& name) {
  const auto found =
      std::find_if(contents.contacts.begin(), contents.contacts.end(),
                   [&name](const DirectoryContact& contact) { return contact.data.displayName == name; });
  return found != contents.contacts.end() ? &*found : nullptr;
}

// What the file cannot keep, and a photo that is none; an empty photo stands for the default one.
int checkFields(const ContactGeneralItemData& contact) {
  for (const std::string* text : {&contact.officeNumber, &contact.mobileNumber, &contact.otherNumber, &contact.ring}) {
    if (!fitsXml(*text)) return kDirectoryFailed;
  }
  const bool isUsable = contact.photo.empty() || (isPhoto(contact.photo) && fitsXml(contact.photo));
  return isUsable ? kDirectoryDone : kPhotoNameInvalid;
}

bool isBlacklistFull(const DirectoryContents& contents, std::size_t joining) {
  return joining > 0 && contents.blacklisted() + joining > kMaxBlacklist;
}

bool isOneOf(const Names& names, const DirectoryContact& contact) {
  return names.contains(contact.data.displayName);
}

// True when each of the names is a contact's.
bool areContacts(const DirectoryContents& contents, const Names& names) {
  return static_cast<std::size_t>(std::count_if(contents.contacts.begin(), contents.contacts.end(),
                                                [&names](const auto& contact) { return isOneOf(names, contact); })) ==
         names.size();
}

}  // namespace

int addContact(DirectoryContents& contents, const std::string& groupName, ContactGeneralItemData contact) {
  if (!isName(contact.displayName)) return kDirectoryFailed;
  if (contactNamed(contents, contact.displayName) != nullptr) return kContactExists;
  if (const int error = checkFields(contact)) return error;
  if (contents.contacts.size() >= kMaxContacts) return kContactsFull;
  const DirectoryGroup* group = contents.group(groupName);
  const int id = group != nullptr ? group->id : kAllContactsId;
  if (id == kBlacklistId && isBlacklistFull(contents, 1)) return kBlacklistFull;
  completeContact(contact);
  contents.contacts.push_back({std::move(contact), id});
  return kDirectoryDone;
}

int updateContact(DirectoryContents& contents, const std::string& oldName, ContactGeneralItemData contact) {
  DirectoryContact* old = contactNamed(contents, oldName);
  if (old == nullptr) return kContactUnknown;
  if (!isName(contact.displayName)) return kDirectoryFailed;
  if (contact.displayName != oldName && contactNamed(contents, contact.displayName) != nullptr) return kContactExists;
  if (const int error = checkFields(contact)) return error;
  const DirectoryGroup* group = contents.group(contact.groupName);
  const int id = group != nullptr ? group->id : old->group;
  if (id == kBlacklistId && isBlacklistFull(contents, old->group != kBlacklistId)) return kBlacklistFull;
  if (contact.ring.empty()) contact.ring = old->data.ring;
  if (contact.photo.empty()) contact.photo = old->data.photo;
  completeContact(contact);
  *old = {std::move(contact), id};
  return kDirectoryDone;
}

int removeContacts(DirectoryContents& contents, const OrbList<std::string>& names) {
  const Names removed(names.begin(), names.end());
  if (!areContacts(contents, removed)) return kContactUnknown;
  std::erase_if(contents.contacts, [&removed](const auto& contact) { return isOneOf(removed, contact); });
  return kDirectoryDone;
}

int removeAllContacts(DirectoryContents& contents, int group) {
  if (contents.group(group) == nullptr) return kGroupIdInvalid;
  std::erase_if(contents.contacts, [group](const auto& contact) { return isListedIn(contact, group); });
  return kDirectoryDone;
}

int moveContacts(DirectoryContents& contents, const OrbList<std::string>& names, const std::string& groupName) {
  const DirectoryGroup* group = contents.group(groupName);
  if (group == nullptr) return kGroupUnknown;
  const Names moved(names.begin(), names.end());
  if (!areContacts(contents, moved)) return kContactUnknown;
  const auto joining = std::count_if(contents.contacts.begin(), contents.contacts.end(), [&moved](const auto& contact) {
    return contact.group != kBlacklistId && isOneOf(moved, contact);
  });
  if (group->id == kBlacklistId && isBlacklistFull(contents, static_cast<std::size_t>(joining))) return kBlacklistFull;
  for (DirectoryContact& contact : contents.contacts) {
    if (isOneOf(moved, contact)) contact.group = group->id;
  }
  return kDirectoryDone;
}

int addGroup(DirectoryContents& contents, const ContactGroupData& group) {
  if (!isName(group.name) || !fitsXml(group.ring)) return kDirectoryFailed;
  if (contents.group(group.name) != nullptr) return kGroupExists;
  if (contents.groups.size() >= kMaxGroups) return kGroupsFull;
  appendGroup(contents, group.name, group.ring);
  return kDirectoryDone;
}

int updateGroup(DirectoryContents& contents, const std::string& oldName, const ContactGroupData& group) {
  DirectoryGroup* old = contents.group(oldName);
  if (old == nullptr) return kGroupUnknown;
  if (!isName(group.name) || !fitsXml(group.ring)) return kDirectoryFailed;
  if (isFixed(*old) && group.name != oldName) return kGroupFixed;
  if (group.name != oldName && contents.group(group.name) != nullptr) return kGroupExists;
  old->name = group.name;
  old->ring = group.ring.empty() ? kDefaultRing : group.ring;
  return kDirectoryDone;
}

int removeGroup(DirectoryContents& contents, const std::string& name) {
  const DirectoryGroup* group = contents.group(name);
  if (group == nullptr) return kGroupUnknown;
  if (isFixed(*group)) return kGroupFixed;
  std::erase_if(contents.groups, [&name](const DirectoryGroup& one) { return one.name == name; });
  regroupContacts(contents);
  return kDirectoryDone;
}

int removeAllGroups(DirectoryContents& contents) {
  std::erase_if(contents.groups, [](const DirectoryGroup& group) { return !isFixed(group); });
  regroupContacts(contents);
  return kDirectoryDone;
}

int setDefaultPhoto(DirectoryContents& contents, const std::string& photo) {
  if (!isPhoto(photo)) return kPhotoNameInvalid;
  for (DirectoryContact& contact : contents.contacts) {
    if (contact.data.photo != photo) continue;
    contact.data.photo.clear();
    completeContact(contact.data);
  }
  return kDirectoryDone;
}

}  // namespace simulator
