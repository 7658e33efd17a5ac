// The page "settings-config": the configuration as an archive, the custom factory settings, the system log.
#pragma once

#include "framework/servlet_base.h"

class SettingsConfigServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int exportConfig(HttpRequest* request, HttpResponse* response);
  int importConfig(HttpRequest* request, HttpResponse* response);
  int exportSyslog(HttpRequest* request, HttpResponse* response);
  int importFactory(HttpRequest* request, HttpResponse* response);
  int delFactory(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

// The settings that a factory reset restores in place of the delivered ones.
inline constexpr char kCustomFactory[] = "/data/customfactory";

// The lock that keeps the phone's processes from the ini files while the configuration is copied.
inline constexpr char kConfigLock[] = "WRLockiniFileName";
