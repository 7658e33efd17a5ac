// The page "settings-preference": language, screen, dialling, ring and wallpaper, and the files that users bring for
// them.
#pragma once

#include "framework/servlet_base.h"

class SettingsPreferenceServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);

  // Rings and wallpapers of the phone's users: settings_preference_media.cpp.
  int upload(HttpRequest* request, HttpResponse* response);
  int DeleteRing(HttpRequest* request, HttpResponse* response);
  int UploadWallpaper(HttpRequest* request, HttpResponse* response);
  int DeleteWallpaper(HttpRequest* request, HttpResponse* response);
};
