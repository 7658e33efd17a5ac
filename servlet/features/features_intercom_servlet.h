// The page "features-intercom": calls that are answered by the phone itself.
#pragma once

#include "framework/servlet_base.h"

class FeaturesIntercomServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};
