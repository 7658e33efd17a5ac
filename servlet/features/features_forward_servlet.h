// The page "features-forward": passing calls on, and do not disturb.
#pragma once

#include "framework/servlet_base.h"

class FeaturesForwardServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};
