// The registration status alone, for phones whose accounts are set up by their server.
#include "framework/action_dispatch.h"
#include "framework/page_factory.h"
#include "framework/servlet_base.h"
#include "servlet/account/account_registration_status.h"

class AccountRegisterLyncServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);   // answers nothing
  int writeConfig(HttpRequest* request, HttpResponse* response);  // answers nothing
  int askStatus(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);  // adds nothing
};

int AccountRegisterLyncServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<AccountRegisterLyncServlet> kActions[] = {
      {"load", &AccountRegisterLyncServlet::loadConfig},
      {"write", &AccountRegisterLyncServlet::writeConfig},
      {"askstatus", &AccountRegisterLyncServlet::askStatus},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int AccountRegisterLyncServlet::loadConfig(HttpRequest*, HttpResponse*) {
  return 1;
}

int AccountRegisterLyncServlet::writeConfig(HttpRequest*, HttpResponse*) {
  return 1;
}

int AccountRegisterLyncServlet::askStatus(HttpRequest* request, HttpResponse* response) {
  return answerRegistrationStatus(request, response);
}

TMPL_varlist* AccountRegisterLyncServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest*) {
  return list;
}

PHONE_FACTORY(createAccountRegisterLyncServlet, HttpServlet, AccountRegisterLyncServlet);
