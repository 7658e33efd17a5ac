// The contacts page: adding, editing, deleting and moving contacts.
#include <string>
#include <string_view>

#include "framework/notice.h"
#include "framework/phone_messages.h"
#include "framework/text_utils.h"
#include "platform/log.h"
#include "servlet/contacts/contacts_basic_lists.h"
#include "servlet/contacts/contacts_basic_results.h"
#include "servlet/contacts/contacts_basic_servlet.h"

using namespace NS_DIRECTORY;

namespace {

constexpr int kNoGroup = -1;

// The field as a text; false when the request lacks it.
bool readField(HttpRequest* request, const char* field, std::string& text) {
  const char* value = request->getParameter(field);
  text = value ? value : "";
  return value != nullptr;
}

// A text that is no number names no group: never the one that holds everybody.
int groupId(const char* text) {
  return parseInt(text).value_or(kNoGroup);
}

int answerWithList(HttpResponse* response, const char* page, const char* group) {
  postConfigChanged(ConfigArea::kLocalContacts, kContactsChanged);
  response->sendRedirect(listAddress(page, group).c_str());
  return 1;
}

}  // namespace

// False when a text is missing without which a contact would be stored with less than its reader sees.
bool ContactsBasicServlet::getContactInfo(HttpRequest* request, ContactGeneralItemData& contact) {
  bool isWhole = readField(request, "DisplayName", contact.displayName);
  isWhole &= readField(request, "OfficeNum", contact.officeNumber);
  isWhole &= readField(request, "MobileNumber", contact.mobileNumber);
  isWhole &= readField(request, "OtherNum", contact.otherNumber);
  readField(request, "RingTone", contact.ring);
  readField(request, "Photo", contact.photo);
  contact.account = parseInt(request->getParameter("varAccount")).value_or(-1);
  const char* id = request->getParameter("ConGroup");
  ContactGroupData group;
  findGroup(id ? groupId(id) : 0, group);
  contact.groupName = group.name;
  return isWhole;
}

int ContactsBasicServlet::doOperatorContact(HttpRequest* request, HttpResponse* response, ContactOperatorType type) {
  ContactGeneralItemData contact;
  std::string oldName;
  const bool isWhole = getContactInfo(request, contact);
  std::int32_t result = kDirectoryDone;
  switch (type) {
    case kAdd:
      result = changeDirectory([&](auto& directory) { return directory.AddContact(contact.groupName, contact); });
      break;
    case kEdit:
      result = isWhole && readField(request, "OldName", oldName)
                   ? changeDirectory([&](auto& directory) { return directory.UpdateContactData(oldName, contact); })
                   : kDirectoryFailed;
      break;
    default:
      log_log(kWebLog, kLogInfo, "Do nothing.\n");
  }
  if (isRefused(response, result)) return 1;
  return answerWithList(response, request->getParameter("num"), request->getParameter("ConGroup"));
}

int ContactsBasicServlet::addContact(HttpRequest* request, HttpResponse* response) {
  return doOperatorContact(request, response, kAdd);
}

int ContactsBasicServlet::editContact(HttpRequest* request, HttpResponse* response) {
  return doOperatorContact(request, response, kEdit);
}

int ContactsBasicServlet::deleteRecord(HttpRequest* request, HttpResponse* response) {
  const char* record = request->getParameter("record");
  const char* group = request->getParameter("group");
  if (!record || !group) {
    log_log(kWebLog, kLogWarning, "ContactsBasicServlet::deleteRecord() para error\n");
    response->sendRedirect("/servlet?p=contactsbasic&q=load&num=1&group=0");
    return 1;
  }
  const int id = groupId(group);
  const auto remove = [&](CContactLocalManager& directory) -> std::int32_t {
    OrbList<std::string> names;
    if (std::string_view(record) == "*") {
      directory.RemoveAllContacts(id);
      return kDirectoryDone;
    }
    return getContactNameList(names, record, id) ? directory.RemoveContactList(names) : kDirectoryDone;
  };
  if (isRefused(response, changeDirectory(remove))) return 1;
  return answerWithList(response, "1", group);
}

int ContactsBasicServlet::moveContact(HttpRequest* request, HttpResponse* response) {
  const char* record = request->getParameter("record");
  const char* oldGroup = request->getParameter("oldgroup");
  const char* newGroup = request->getParameter("newgroup");
  if (!record || !oldGroup || !newGroup) {
    log_log(kWebLog, kLogWarning, "ContactsBasicServlet::moveInContact() para error\n");
    return 1;
  }
  const auto move = [&](CContactLocalManager& directory) -> std::int32_t {
    OrbList<std::string> names;
    ContactGroupData group;
    const bool isSelected = getContactNameList(names, record, groupId(oldGroup));
    const bool isKnown = findGroup(groupId(newGroup), group);
    return isSelected && isKnown ? directory.MoveListToGroup(names, group.name) : kNoDirectory;
  };
  if (isRefused(response, changeDirectory(move))) return 1;
  return answerWithList(response, "1", newGroup);
}
