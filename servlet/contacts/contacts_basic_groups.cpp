// The contacts page: its groups.
#include <string>

#include "framework/phone_messages.h"
#include "servlet/contacts/contacts_basic_results.h"
#include "servlet/contacts/contacts_basic_servlet.h"

using namespace NS_DIRECTORY;

namespace {

std::string textOf(HttpRequest* request, const char* field) {
  const char* text = request->getParameter(field);
  return text ? text : "";
}

ContactGroupData groupOf(HttpRequest* request) {
  return {.name = textOf(request, "GroupInfo"), .ring = textOf(request, "GroupRing")};
}

int answer(HttpResponse* response, std::int32_t result, bool changesContacts) {
  if (isRefused(response, result)) return 1;
  postConfigChanged(ConfigArea::kLocalContacts, kGroupsChanged);
  if (changesContacts) postConfigChanged(ConfigArea::kLocalContacts, kContactsChanged);
  response->sendRedirect("/servlet?p=contactsbasic&q=load&num=1&group=0");
  return 1;
}

}  // namespace

int ContactsBasicServlet::addGroup(HttpRequest* request, HttpResponse* response) {
  const ContactGroupData group = groupOf(request);
  return answer(response, changeDirectory([&](auto& directory) { return directory.AddGroup(group); }), false);
}

int ContactsBasicServlet::editGroup(HttpRequest* request, HttpResponse* response) {
  const std::string oldName = textOf(request, "oldGroupName");
  const ContactGroupData group = groupOf(request);
  return answer(response, changeDirectory([&](auto& directory) { return directory.UpdateGroupData(oldName, group); }),
                true);
}

int ContactsBasicServlet::deleteGroup(HttpRequest* request, HttpResponse* response) {
  const std::string name = textOf(request, "GroupInfo");
  return answer(response, changeDirectory([&](auto& directory) { return directory.RemoveGroup(name); }), true);
}

int ContactsBasicServlet::deleteAllGroups(HttpRequest*, HttpResponse* response) {
  return answer(response, changeDirectory([](auto& directory) { return directory.RemoveAllGroup(); }), true);
}
