#include "simulator/directory/directory_files.h"

#include <unistd.h>

#include <optional>
#include <unordered_set>
#include <utility>

#include "platform/phone_root.h"
#include "simulator/files.h"
#include "simulator/number.h"
#include "simulator/xml_file.h"

namespace simulator {
namespace {

using NS_DIRECTORY::ContactGeneralItemData;

constexpr char kContactFile[] = "/config/data/contact_list.xml";
constexpr char kGroupFile[] = "/config/data/contact_group_list.xml";
// Beside the files while both change.
constexpr char kNextContactFile[] = "/config/data/contact_list.xml.next";
constexpr char kNextGroupFile[] = "/config/data/contact_group_list.xml.next";

constexpr char kContactRoot[] = "root_contact";
constexpr char kGroupRoot[] = "root_group";

pugi::xml_node rootOf(const char* path, const char* name, pugi::xml_document& document) {
  const pugi::xml_node root = readXml(path, document);
  return std::string_view(root.name()) == name ? root : pugi::xml_node();
}

std::string contactText(const DirectoryContents& contents) {
  XmlRows rows(kContactRoot, contents.contacts.size() * kContactSize);
  for (const DirectoryContact& contact : contents.contacts) {
    writeContact(rows.add("contact"), contact.data, std::to_string(contact.group));
  }
  return rows.take();
}

std::string groupText(const DirectoryContents& contents) {
  XmlRows rows(kGroupRoot, 0);
  for (const DirectoryGroup& group : contents.groups) {
    pugi::xml_node element = rows.add("group");
    element.append_attribute("id") = group.id;
    element.append_attribute("display_name") = group.name.c_str();
    element.append_attribute("ring") = group.ring.c_str();
  }
  return rows.take();
}

// Takes one group of the file over. The groups that are always there keep their names.
void readGroup(const pugi::xml_node& element, DirectoryContents& contents) {
  const int id = decimalNumber(element.attribute("id").value()).value_or(-1);
  const std::string name = element.attribute("display_name").value(), ring = element.attribute("ring").value();
  if (DirectoryGroup* known = contents.group(id)) {
    if (id <= kBlacklistId && !ring.empty()) known->ring = ring;
  } else if (id > kBlacklistId && !name.empty() && contents.groups.size() < kMaxGroups &&
             contents.group(name) == nullptr) {
    contents.groups.push_back({id, name, ring.empty() ? kDefaultRing : ring});
  }
}

bool exists(const std::string& path) {
  return fileStamp(path).has_value();
}

void putBack(const std::string& path, const std::optional<std::string>& bytes) {
  if (bytes) {
    replaceFile(path, *bytes);
  } else {
    ::unlink(path.c_str());
  }
}

// Both are written beside before the first is renamed. From then on a new group file without a new contact file beside
// it tells that the change is to be finished.
bool replaceBoth(const std::string& contacts, const std::string& groups) {
  const std::string contactFile = phonePath(kContactFile), nextContacts = phonePath(kNextContactFile),
                    nextGroups = phonePath(kNextGroupFile);
  const std::optional<std::string> old = readFile(contactFile);
  if (!old && exists(contactFile)) return false;
  bool isDone = false;
  if (replaceXml(nextContacts, contacts) && replaceXml(nextGroups, groups) && renameFile(nextContacts, contactFile)) {
    isDone = renameFile(nextGroups, phonePath(kGroupFile));
    if (!isDone) putBack(contactFile, old);
  }
  ::unlink(nextGroups.c_str());
  ::unlink(nextContacts.c_str());
  return isDone;
}

}  // namespace

void readGroups(DirectoryContents& contents) {
  contents.groups = DirectoryContents().groups;
  pugi::xml_document document;
  for (const pugi::xml_node& element : rootOf(kGroupFile, kGroupRoot, document).children("group")) {
    readGroup(element, contents);
  }
}

void readContacts(DirectoryContents& contents) {
  contents.contacts.clear();
  pugi::xml_document document;
  std::unordered_set<std::string> names;
  for (const pugi::xml_node& element : rootOf(kContactFile, kContactRoot, document).children("contact")) {
    if (contents.contacts.size() >= kMaxContacts) break;
    ContactGeneralItemData contact = contactOf(element);
    if (contact.displayName.empty() || !names.insert(contact.displayName).second) continue;
    completeContact(contact);
    const int group = decimalNumber(element.attribute("group_id_name").value()).value_or(kAllContactsId);
    contents.contacts.push_back({std::move(contact), group});
  }
  regroupContacts(contents);
}

void recoverFiles() {
  const std::string nextContacts = phonePath(kNextContactFile), nextGroups = phonePath(kNextGroupFile);
  if (!exists(nextContacts) && exists(nextGroups)) renameFile(nextGroups, phonePath(kGroupFile));
  ::unlink(nextGroups.c_str());
  ::unlink(nextContacts.c_str());
}

bool writeFiles(const DirectoryContents& old, const DirectoryContents& now) {
  const bool sameContacts = now.contacts == old.contacts, sameGroups = now.groups == old.groups;
  if (!sameContacts && !sameGroups) return replaceBoth(contactText(now), groupText(now));
  if (!sameContacts) return replaceXml(phonePath(kContactFile), contactText(now));
  return sameGroups || replaceXml(phonePath(kGroupFile), groupText(now));
}

ContactGeneralItemData contactOf(const pugi::xml_node& element) {
  ContactGeneralItemData contact;
  contact.displayName = element.attribute("display_name").value();
  contact.officeNumber = element.attribute("office_number").value();
  contact.mobileNumber = element.attribute("mobile_number").value();
  contact.otherNumber = element.attribute("other_number").value();
  contact.account = decimalNumber<std::int32_t>(element.attribute("line").value()).value_or(-1);
  contact.ring = element.attribute("ring").value();
  contact.photo = element.attribute("default_photo").value();
  return contact;
}

void writeContact(pugi::xml_node element, const ContactGeneralItemData& contact, const std::string& group) {
  element.append_attribute("display_name") = contact.displayName.c_str();
  element.append_attribute("office_number") = contact.officeNumber.c_str();
  element.append_attribute("mobile_number") = contact.mobileNumber.c_str();
  element.append_attribute("other_number") = contact.otherNumber.c_str();
  element.append_attribute("line") = contact.account;
  element.append_attribute("ring") = contact.ring.c_str();
  element.append_attribute("group_id_name") = group.c_str();
  element.append_attribute("default_photo") = contact.photo.c_str();
}

}  // namespace simulator
