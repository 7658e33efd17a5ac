// The registration status alone, for phones whose accounts are set up by their server.
#pragma once

#include "framework/servlet_base.h"

class AccountRegisterLyncServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);   // answers nothing
  int writeConfig(HttpRequest* request, HttpResponse* response);  // answers nothing
  int askStatus(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);  // adds nothing
};
