// The page "trusted-cert": whom the phone trusts when it connects to a server.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "platform/certificates.h"
#include "platform/log.h"
#include "servlet/security/security_certificates.h"
#include "servlet/security/security_tabs.h"
#include "servlet/security/trusted_cert_rows.h"

namespace {

constexpr const char* kKeys[] = {"HTTPSTrustCertificates", "HttpsCNValidation", "HttpsCaCert"};
constexpr auto kMenu = ownTabFirst(kSecurityTabs, "trusted_cert");
constexpr const char* kItems[] = {"TrustCertsRecords", "TrustCertsbtndeleteCerts", "TrustCertsOnlyAcceptTrustedCerts",
                                  "TrustCertsUploadTrustCerts"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems};
static_assert(allUnique(kKeys) && allUnique(kItems));

constexpr char kFolder[] = "/config/certs/";
constexpr std::size_t kMaxDeleted = 1024;  // names that one request may delete

constexpr std::size_t kMaxName = 256;  // bytes that are looked at, one more than a file's name has

// Any other value leaves the folder as it is.
void SetTrustedCertsPath() {
  const std::string choice = readConfigPlain("HttpsCaCert", 8);
  if (choice == "1") dl_set_option(kTrustedInUse, "/config/certs/");
  if (choice == "0") dl_set_option(kTrustedInUse, "/config/certs/phoneca");
  if (choice == "2") dl_set_option(kTrustedInUse, "/config/certs/ca");
}

void setNameCheck() {
  const int check = readConfigNumber("HttpsCNValidation");
  dl_set_option(kCommonNameCheck, &check);
}

// Deletes what each name that a comma follows stands for.
void deleteNamed(std::string_view names) {
  std::size_t count = 0;
  for (std::size_t comma; (comma = names.find(',')) != std::string_view::npos; names.remove_prefix(comma + 1)) {
    if (++count > kMaxDeleted) {
      log_log(kWebLog, kLogWarning, "TrustedCertServlet::deleteCerts() too many names\n");
      return;
    }
    const std::string name(names.substr(0, std::min(comma, kMaxName)));
    const bool isDeleted = isFileName(name) && dl_del_ca((kFolder + name).c_str()) == 0;
    if (!isDeleted) log_log(kWebLog, kLogWarning, "delete cert %s failed!\n", name.c_str());
  }
}

int refuse(HttpResponse* response, const std::string& notice) {
  SetNoticePage(response, false, "trusted-cert", notice.c_str());
  return 1;
}

std::string textOfResult(int result) {
  switch (result) {
    case kTrustedFileError:
      return "Upload cert file error!";
    case kTrustedDelivered:
      return "The cert file has prefabricated!";
    case kTrustedInstalledAlready:
      return "The cert file has existed!";
    case kTrustedInstallFailed:
      return "Install certs failed!";
    default:
      return "Other error! errorid=" + std::to_string(result);
  }
}

}  // namespace

class TrustedCertServlet : public HttpServlet {
 public:
  int init() override;
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int upload(HttpRequest* request, HttpResponse* response);
  int deleteCerts(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int TrustedCertServlet::init() {
  dl_set_option(kTrustedFolder, kFolder);
  setNameCheck();
  SetTrustedCertsPath();
  return 0;
}

int TrustedCertServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<TrustedCertServlet> kActions[] = {
      {"write", &TrustedCertServlet::writeConfig},
      {"upload", &TrustedCertServlet::upload},
      {"delete", &TrustedCertServlet::deleteCerts},
      {"load", &TrustedCertServlet::loadConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int TrustedCertServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = TMPL_add_loop(nullptr, "TRLoop", trustedCertificateRows());
  list = readConfigOperate(GLOBAL_FILE, kKeys, list, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/trusted-cert.htm", showItemsByLevel(list, request));
  return 1;
}

int TrustedCertServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kKeys, request, 0);
  SetTrustedCertsPath();
  setNameCheck();
  if (wantsReboot(request)) {
    sysReboot(5);
    SetNoticePage(response, true, "trusted-cert", kRebootingNotice);
    return 1;
  }
  response->sendRedirect("/servlet?p=trusted-cert&q=load");
  return 1;
}

int TrustedCertServlet::upload(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  if (isCertificateTooLarge(request)) return refuse(response, "The file is too large!");
  const UploadedCertificate file(request, "/tmp/certxxxx.cer");
  if (!file) {
    log_log(kWebLog, kLogWarning, "TrustedCertServlet::upload() rename file failed! filename[0]=%s newPath=%s\n",
            file.upload().c_str(), file.path());
    return refuse(response, "Upload cert file error!");
  }
  const int result = dl_install_ca(file.path());
  if (result != 0) return refuse(response, textOfResult(result));
  response->sendRedirect("/servlet?p=trusted-cert&q=load");
  return 1;
}

int TrustedCertServlet::deleteCerts(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const char* names = request->getParameter("z");
  if (!names) return 1;
  deleteNamed(names);
  response->sendRedirect("/servlet?p=trusted-cert&q=load");
  return 1;
}

TMPL_varlist* TrustedCertServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createTrustedCertServlet, HttpServlet, TrustedCertServlet);
