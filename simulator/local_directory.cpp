#include "platform/local_directory.h"

#include <algorithm>

#include "simulator/directory/directory_rules.h"
#include "simulator/phone.h"

namespace NS_DIRECTORY {
namespace {

using simulator::DirectoryContents;
using simulator::phone;

// Runs one of the rules on the directory and keeps what came out.
template <class Rule>
int change(Rule rule) {
  simulator::Phone& phone = simulator::phone();
  const std::lock_guard lock(phone.mutex);
  if (phone.state.directory.busy) return kDirectoryBusy;
  if (phone.state.directory.refusal < 0) return phone.state.directory.refusal;
  DirectoryContents next = phone.directory.contents();
  const int result = rule(next);
  if (result < 0) return result;
  return phone.directory.replace(std::move(next)) ? result : kDirectoryFailed;
}

// Takes the entries that were asked for, one after the other.
template <class List>
class Filling {
 public:
  explicit Filling(List& list) : list_(list) { list_.total = 0; }
  template <class Entries, class Entry>
  void add(Entries& entries, const Entry& entry) {
    const std::int64_t position = list_.total++, start = std::max(list_.start, 0);
    if (position >= start && position - start < list_.count) entries.push_back(entry());
  }

 private:
  List& list_;
};

}  // namespace

CContactLocalManager* CContactLocalManager::GetInstance() {
  static CContactLocalManager instance;
  const std::lock_guard lock(phone().mutex);
  return phone().state.directory.available ? &instance : nullptr;
}

bool CContactLocalManager::GetContactListById(ContactGeneralItemListData& list, int group) {
  const std::lock_guard lock(phone().mutex);
  const DirectoryContents& contents = phone().directory.contents();
  list.contacts.clear();
  Filling filling(list);
  for (const simulator::DirectoryContact& contact : contents.contacts) {
    if (!isListedIn(contact, group)) continue;
    filling.add(list.contacts, [&] {
      ContactGeneralItemData data = contact.data;
      data.groupName = contents.group(contact.group)->name;
      return data;
    });
  }
  return contents.group(group) != nullptr;
}

bool CContactLocalManager::GetGroupSimpleList(ContactGroupSimpleListData& list) {
  const std::lock_guard lock(phone().mutex);
  list.groups.clear();
  Filling filling(list);
  for (const simulator::DirectoryGroup& group : phone().directory.contents().groups) {
    filling.add(list.groups, [&group] { return ContactGroupSimpleData{group.name, group.id}; });
  }
  return true;
}

bool CContactLocalManager::GetGroupDataByID(ContactGroupData& group, int id) {
  const std::lock_guard lock(phone().mutex);
  const simulator::DirectoryGroup* found = phone().directory.contents().group(id);
  if (found == nullptr) return false;
  group = {found->name, found->ring};
  return true;
}

std::string CContactLocalManager::GetContactNameByPhoneNumber(const std::string& number) {
  const std::lock_guard lock(phone().mutex);
  return phone().directory.nameOf(number);
}

int CContactLocalManager::AddContact(const std::string& groupName, const ContactGeneralItemData& contact) {
  return change([&](DirectoryContents& contents) { return addContact(contents, groupName, contact); });
}

int CContactLocalManager::UpdateContactData(const std::string& oldName, const ContactGeneralItemData& contact) {
  return change([&](DirectoryContents& contents) { return updateContact(contents, oldName, contact); });
}

int CContactLocalManager::RemoveContactList(const OrbList<std::string>& names) {
  return change([&](DirectoryContents& contents) { return removeContacts(contents, names); });
}

int CContactLocalManager::RemoveAllContacts(int group) {
  return change([&](DirectoryContents& contents) { return removeAllContacts(contents, group); });
}

int CContactLocalManager::MoveListToGroup(const OrbList<std::string>& names, const std::string& groupName) {
  return change([&](DirectoryContents& contents) { return moveContacts(contents, names, groupName); });
}

int CContactLocalManager::AddGroup(const ContactGroupData& group) {
  return change([&](DirectoryContents& contents) { return addGroup(contents, group); });
}

int CContactLocalManager::UpdateGroupData(const std::string& oldName, const ContactGroupData& group) {
  return change([&](DirectoryContents& contents) { return updateGroup(contents, oldName, group); });
}

int CContactLocalManager::RemoveGroup(const std::string& name) {
  return change([&](DirectoryContents& contents) { return removeGroup(contents, name); });
}

int CContactLocalManager::RemoveAllGroup() {
  return change([](DirectoryContents& contents) { return removeAllGroups(contents); });
}

int CContactLocalManager::SetDefaultPhoto(const std::string& photo) {
  return change([&](DirectoryContents& contents) { return setDefaultPhoto(contents, photo); });
}

void CContactLocalManager::ReloadContactXml() {
  const std::lock_guard lock(phone().mutex);
  phone().directory.loadContacts();
}

void CContactLocalManager::ReloadGroupXml() {
  const std::lock_guard lock(phone().mutex);
  phone().directory.loadGroups();
}

}  // namespace NS_DIRECTORY
