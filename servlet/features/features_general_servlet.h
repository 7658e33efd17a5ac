// The page "features-general": what has no page of its own, and the logo.
#pragma once

#include "framework/servlet_base.h"

class FeaturesGeneralServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int UploadLogoFile(HttpRequest* request, HttpResponse* response);
  int DeleteLogoFile(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};
