#include "simulator/directory/directory_exchange.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "platform/phone_application.h"
#include "platform/phone_root.h"
#include "simulator/directory/directory_files.h"
#include "simulator/number.h"
#include "simulator/xml_file.h"

namespace simulator {
namespace {

constexpr char kRoot[] = "root_contact";

// The file writes some characters that XML cannot carry as references.
bool isCarried(const pugi::xml_node& element) {
  const auto attributes = element.attributes();
  return std::all_of(attributes.begin(), attributes.end(),
                     [](const pugi::xml_attribute& attribute) { return fitsXml(attribute.value()); });
}

ExchangeResult importGroups(const pugi::xml_node& root, DirectoryContents& contents) {
  std::unordered_set<std::string> names;
  for (const pugi::xml_node& element : root.children("group")) {
    const std::string name = element.attribute("display_name").value(), ring = element.attribute("ring").value();
    if (!isCarried(element)) return kFileInvalid;
    if (name.empty()) return kGroupNameEmpty;
    if (!names.insert(name).second) return kGroupTwice;
    if (DirectoryGroup* known = contents.group(name)) {
      if (!ring.empty()) known->ring = ring;
    } else if (contents.groups.size() >= kMaxGroups) {
      return kTooManyGroups;
    } else {
      appendGroup(contents, name, ring);
    }
  }
  return kExchanged;
}

class ContactImport {
 public:
  explicit ContactImport(DirectoryContents& contents) : contents_(contents), known_(contents.groups) {
    for (std::size_t i = 0; i < contents.contacts.size(); ++i) places_[contents.contacts[i].data.displayName] = i;
  }

  ExchangeResult add(const pugi::xml_node& element) {
    DirectoryContact contact{contactOf(element)};
    if (!isCarried(element)) return kFileInvalid;
    if (contact.data.displayName.empty()) return kContactNameEmpty;
    if (!names_.insert(element.attribute("display_name").value()).second) return kContactTwice;
    contact.group = groupOf(element.attribute("group_id_name").value());
    if (contents_.groups.size() > kMaxGroups) return kTooManyGroups;
    completeContact(contact.data);
    if (const auto place = places_.find(contact.data.displayName); place != places_.end()) {
      contents_.contacts[place->second] = std::move(contact);
    } else {
      contents_.contacts.push_back(std::move(contact));
    }
    return kExchanged;
  }

 private:
  int groupOf(const std::string& text) {
    if (text.empty()) return kAllContactsId;
    if (const DirectoryGroup* group = contents_.group(text)) return group->id;
    const auto id = decimalNumber(text);
    const bool isId = std::any_of(known_.begin(), known_.end(), [id](const auto& group) { return group.id == id; });
    return isId ? *id : appendGroup(contents_, text, kDefaultRing);
  }

  DirectoryContents& contents_;
  const std::vector<DirectoryGroup> known_;  // before contacts made more
  std::unordered_map<std::string, std::size_t> places_;
  std::unordered_set<std::string_view> names_;  // of the file
};

ExchangeResult importContacts(const pugi::xml_node& root, DirectoryContents& contents) {
  ContactImport import(contents);
  for (const pugi::xml_node& element : root.children("contact")) {
    if (const ExchangeResult result = import.add(element); result != kExchanged) return result;
  }
  if (contents.contacts.size() > kMaxContacts) return kTooManyContacts;
  return contents.blacklisted() > kMaxBlacklist ? kTooManyInBlacklist : kExchanged;
}

}  // namespace

ExchangeResult exportDirectory(const DirectoryContents& contents) {
  XmlRows rows(kRoot, contents.contacts.size() * kContactSize);
  for (const DirectoryGroup& group : contents.groups) {
    if (group.id <= kBlacklistId) continue;
    pugi::xml_node element = rows.add("group");
    element.append_attribute("display_name") = group.name.c_str();
    element.append_attribute("ring") = group.ring.c_str();
  }
  for (const DirectoryContact& contact : contents.contacts) {
    writeContact(rows.add("contact"), contact.data, contents.group(contact.group)->name);
  }
  return replaceXml(phonePath(kDirectoryFilePath), rows.take()) ? kExchanged : kPathInvalid;
}

ExchangeResult importDirectory(DirectoryContents& contents) {
  pugi::xml_document document;
  const pugi::xml_node root = readXml(kDirectoryFilePath, document);
  if (std::string_view(root.name()) != kRoot) return kFileInvalid;
  const ExchangeResult result = importGroups(root, contents);
  return result == kExchanged ? importContacts(root, contents) : result;
}

}  // namespace simulator
