// The page "contactsbasic": the contacts of the local directory and their groups, ten to a page.
#pragma once

#include <cstdint>
#include <string>

#include "framework/servlet_base.h"
#include "platform/local_directory.h"

class ContactsBasicServlet : public HttpServlet {
 public:
  enum ContactOperatorType { kAdd = 0, kEdit = 1 };

  int onRequest(HttpRequest* request, HttpResponse* response) override;

  // Writes the notice for the result of a change; nothing for a result that needs none.
  static void SetContactsErrorNotice(std::string& text, std::int32_t result);

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* getCommonData(HttpRequest* request, int group, int page);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
  int call(HttpRequest* request, HttpResponse* response);
  int hangUp(HttpRequest* request, HttpResponse* response);

  // Changes, each answered with the list or with the notice why it was refused: contacts_basic_edit.cpp, ..._groups.cpp
  // and ..._photos.cpp.
  static bool getContactInfo(HttpRequest* request, NS_DIRECTORY::ContactGeneralItemData& contact);
  int doOperatorContact(HttpRequest* request, HttpResponse* response, ContactOperatorType type);
  int addContact(HttpRequest* request, HttpResponse* response);
  int editContact(HttpRequest* request, HttpResponse* response);
  int deleteRecord(HttpRequest* request, HttpResponse* response);
  int moveContact(HttpRequest* request, HttpResponse* response);
  int addGroup(HttpRequest* request, HttpResponse* response);
  int editGroup(HttpRequest* request, HttpResponse* response);
  int deleteGroup(HttpRequest* request, HttpResponse* response);
  int deleteAllGroups(HttpRequest* request, HttpResponse* response);
  int uploadPhoto(HttpRequest* request, HttpResponse* response);
  int deletePhoto(HttpRequest* request, HttpResponse* response);
};
