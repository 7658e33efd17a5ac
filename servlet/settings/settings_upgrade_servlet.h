// The page "settings-upgrade": the phone's firmware, its restart and reset, and captures of its network traffic.
#pragma once

#include "framework/servlet_base.h"
#include "platform/upgrade.h"

class SettingsUpgradeServlet : public HttpServlet, public IUpgrader {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

  // The image as the upgrade library takes it: what is left of the body of the request that brings it.
  int OpenStream() override;
  int ReadStream(char* buffer, int length) override;
  int ReadStream(char* buffer, int size, int count);
  void CloseStream() override {}

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
  int reset(HttpRequest* request, HttpResponse* response);
  int reboot(HttpRequest* request, HttpResponse* response);
  int rebootBeforeUpgrade(HttpRequest* request, HttpResponse* response);

  // The browser's questions.
  int askTalking(HttpRequest* request, HttpResponse* response);
  int askUpgrade(HttpRequest* request, HttpResponse* response);
  int askRebootOK(HttpRequest* request, HttpResponse* response);
  int progress(HttpRequest* request, HttpResponse* response);

  // The upgrade itself: settings_upgrade_firmware.cpp.
  int beforeUpgrade(HttpRequest* request, HttpResponse* response);
  int upgrade(HttpRequest* request, HttpResponse* response);
  bool receiveFirmware(HttpRequest* request);
  bool install(HttpRequest* request);

  // Captures: settings_upgrade_capture.cpp.
  int startCapture(HttpRequest* request, HttpResponse* response);
  int stopCapture(HttpRequest* request, HttpResponse* response);
  int exportCapture(HttpRequest* request, HttpResponse* response);

  HttpRequest* upload_ = nullptr;  // while its image is installed
  bool isPrepared_ = false;        // from the first preparation on, for as long as the process lives
};
