// The page "server-cert": what the phone's web pages show of themselves over HTTPS.
#include <string>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/certificates.h"
#include "servlet/security/security_certificates.h"
#include "servlet/security/security_tabs.h"

namespace {

constexpr const char* kMenu[] = {"server_cert", "trusted_cert", "password"};
constexpr const char* kItems[] = {"ServerCertsRecords", "ServerCertsUpload"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems};
static_assert(areTabsOf(kMenu, kSecurityTabs) && allUnique(kMenu) && allUnique(kItems));

constexpr std::size_t kChoiceSize = 8;

constexpr char kUploaded[] = "/config/certs/server/WebServer.pem";
constexpr char kBuiltIn[] = "/config/certs/phonedev/WebServer.pem";

// Any other value leaves the certificate as it is.
void SetServerCertsPath() {
  const std::string choice = readConfigPlain("HttpsDevCert", kChoiceSize);
  if (choice == "1") dl_set_option(kServerInUse, kUploaded);
  if (choice == "0") dl_set_option(kServerInUse, kBuiltIn);
}

TMPL_varlist* addCertificate(TMPL_varlist* list) {
  ServerCertificateInfo info;
  if (dl_get_ser_ca_info(&info) != 0) {
    return TMPL_add_loop(TMPL_add_var(list, "count", "0", nullptr), "TRLoop", nullptr);
  }
  TMPL_varlist* row = TMPL_add_var(nullptr, "IssuedTo", templateText(info.issuedTo).c_str(), "IssuedBy",
                                   templateText(info.issuedBy).c_str(), "Expiration", info.expiration, nullptr);
  return TMPL_add_loop(list, "TRLoop", TMPL_add_varlist(nullptr, addCertificateDetails(row, kUploaded)));
}

// The one that comes with the phone: people compare its fingerprint with what their browsers warn of.
TMPL_loop* builtInRow() {
  CertificateDetails details;
  if (dl_get_ca_details(kBuiltIn, &details) != 0) return nullptr;
  TMPL_varlist* row =
      TMPL_add_var(nullptr, "IssuedTo", templateText(details.issuedTo).c_str(), "IssuedBy",
                   templateText(details.issuedBy).c_str(), "Expiration", details.expiration.c_str(), nullptr);
  return TMPL_add_varlist(nullptr, addCertificateDetails(row, kBuiltIn));
}

int refuse(HttpResponse* response, const std::string& notice) {
  SetNoticePage(response, false, "server-cert", notice.c_str());
  return 1;
}

std::string textOfResult(int result) {
  switch (result) {
    case kServerDelivered:
      return "The cert file has prefabricated!";
    case kServerInstalledAlready:
      return "The cert file has existed!";
    default:
      return "Install server certs error! errorid=" + std::to_string(result);
  }
}

}  // namespace

class ServerCertServlet : public HttpServlet {
 public:
  int init() override;
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int upload(HttpRequest* request, HttpResponse* response);
  int deleteCert(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int ServerCertServlet::init() {
  dl_set_option(kServerCertificate, kUploaded);
  SetServerCertsPath();
  return 0;
}

int ServerCertServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ServerCertServlet> kActions[] = {
      {"write", &ServerCertServlet::writeConfig},
      {"upload", &ServerCertServlet::upload},
      {"delete", &ServerCertServlet::deleteCert},
      {"load", &ServerCertServlet::loadConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int ServerCertServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = TMPL_add_loop(addCertificate(nullptr), "BuiltInLoop", builtInRow());
  list = TMPL_add_var(list, "HttpsDevCert", readConfigText("HttpsDevCert", kChoiceSize).c_str(), nullptr);
  response->renderTemplate("/phone/www/WEB-INFO/template/server-cert.htm", showItemsByLevel(list, request));
  return 1;
}

int ServerCertServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, "HttpsDevCert", request, 0);
  SetServerCertsPath();
  if (wantsReboot(request)) {
    sysReboot(5);
    SetNoticePage(response, true, "server-cert", kRebootingNotice);
    return 1;
  }
  response->sendRedirect("/servlet?p=server-cert&q=load");
  return 1;
}

int ServerCertServlet::upload(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  if (isCertificateTooLarge(request)) return refuse(response, "The file is too large!");
  const UploadedCertificate file(request, "/tmp/WebServer.pem");
  const int result = file ? dl_install_ser_ca(file.path()) : -1;
  if (result != 0) return refuse(response, textOfResult(result));
  response->sendRedirect("/servlet?p=server-cert&q=load");
  return 1;
}

int ServerCertServlet::deleteCert(HttpRequest*, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  if (dl_del_ca(kUploaded) == -1) return refuse(response, "Delete server certs error!");
  response->sendRedirect("/servlet?p=server-cert&q=load");
  return 1;
}

TMPL_varlist* ServerCertServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createServerCertServlet, HttpServlet, ServerCertServlet);
