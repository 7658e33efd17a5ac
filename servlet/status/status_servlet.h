// The page "status": what the phone is and how it is doing.
#pragma once

#include "framework/servlet_base.h"

class StatusServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};
