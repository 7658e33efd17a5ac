#include "servlet/account/account_register_lync_servlet.h"

#include "framework/action_dispatch.h"
#include "framework/page_factory.h"
#include "servlet/account/account_registration_status.h"

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
