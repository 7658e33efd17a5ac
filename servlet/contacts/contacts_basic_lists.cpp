#include "servlet/contacts/contacts_basic_lists.h"

#include <algorithm>
#include <string>
#include <vector>

#include "framework/text_list.h"
#include "framework/text_utils.h"

using namespace NS_DIRECTORY;

namespace {

constexpr int kGroupsShown = 50;

// A page's contacts and the total of its group.
bool contactsOfPage(ContactGeneralItemListData& list, int group, int page) {
  CContactLocalManager* directory = CContactLocalManager::GetInstance();
  list.start = (page - 1) * kContactsPerPage;
  list.count = kContactsPerPage;
  return directory && directory->GetContactListById(list, group);
}

TMPL_varlist* addContact(TMPL_varlist* row, const ContactGeneralItemData& contact) {
  return TMPL_add_var(row, "DisplayName", templateText(contact.displayName).c_str(), "OfficeNumber",
                      templateText(contact.officeNumber).c_str(), "MobilNumber",
                      templateText(contact.mobileNumber).c_str(), "OtherNumber",
                      templateText(contact.otherNumber).c_str(), "Account", std::to_string(contact.account).c_str(),
                      "Group", templateText(contact.groupName).c_str(), "Ring", templateText(contact.ring).c_str(),
                      "Photo", templateText(contact.photo).c_str(), nullptr);
}

TMPL_varlist* addNobody(TMPL_varlist* row) {
  return TMPL_add_var(row, "DisplayName", "", "OfficeNumber", "", "MobilNumber", "", "OtherNumber", "", "Account", "",
                      "Group", "", "Ring", "", nullptr);
}

// The first ten pieces; one that is no number counts as 0.
std::vector<int> rowNumbers(std::string_view record) {
  OrbList<std::string> pieces;
  String2List(pieces, record, ',');
  std::vector<int> numbers;
  for (const std::string& piece : pieces) {
    if (numbers.size() == kContactsPerPage) break;
    numbers.push_back(parseInt(piece).value_or(0));
  }
  return numbers;
}

}  // namespace

TMPL_loop* getGroupListLoop(int selected) {
  CContactLocalManager* directory = CContactLocalManager::GetInstance();
  ContactGroupSimpleListData list;
  list.count = kGroupsShown;
  if (!directory || !directory->GetGroupSimpleList(list)) return nullptr;
  TMPL_loop* loop = nullptr;
  for (const ContactGroupSimpleData& group : list.groups) {
    loop = TMPL_add_varlist(
        loop, TMPL_add_var(nullptr, "groupId", std::to_string(group.id).c_str(), "groupName",
                           templateText(group.name).c_str(), "selected", group.id == selected ? "1" : "0", nullptr));
  }
  return loop;
}

TMPL_loop* getContactListLoop(int group, int page) {
  ContactGeneralItemListData list;
  if (!contactsOfPage(list, group, page)) return nullptr;
  TMPL_loop* loop = nullptr;
  auto contact = list.contacts.begin();
  for (int i = 1; i <= kContactsPerPage; ++i) {
    TMPL_varlist* row = TMPL_add_var(nullptr, "index", std::to_string(list.start + i).c_str(), "classStyle",
                                     i % 2 == 0 ? "1" : "0", nullptr);
    loop = TMPL_add_varlist(loop, contact != list.contacts.end() ? addContact(row, *contact++) : addNobody(row));
  }
  return loop;
}

TMPL_loop* getPageListLoop(int group, int page) {
  ContactGeneralItemListData list;
  const int total = contactsOfPage(list, group, page) ? list.total : 0;
  const int pages = std::max(1, (total + kContactsPerPage - 1) / kContactsPerPage);
  TMPL_loop* loop = nullptr;
  for (int i = 1; i <= pages; ++i) {
    loop = TMPL_add_varlist(
        loop, TMPL_add_var(nullptr, "index", std::to_string(i).c_str(), "selected", i == page ? "1" : "0", nullptr));
  }
  return loop;
}

bool getContactNameList(OrbList<std::string>& names, std::string_view record, int group) {
  const std::vector<int> numbers = rowNumbers(record);
  if (numbers.empty() || numbers.front() <= 0) return false;
  ContactGeneralItemListData list;
  if (!contactsOfPage(list, group, (numbers.front() - 1) / kContactsPerPage + 1)) return false;
  auto number = numbers.begin();
  int position = 0;
  for (const ContactGeneralItemData& contact : list.contacts) {
    ++position;
    if (number == numbers.end()) break;
    if (*number <= 0 || *number % kContactsPerPage != position % kContactsPerPage) continue;
    names.push_back(contact.displayName);
    ++number;
  }
  return true;
}
