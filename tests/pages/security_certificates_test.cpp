// The pages of trusted certificates and of the server's certificate.
#include "simulator/phone.h"
#include "tests/support/certificates.h"
#include "tests/support/page_test.h"

namespace {

constexpr char kTrusted[] = "trusted-cert";
constexpr char kOwn[] = "server-cert";
constexpr char kTooLarge[] = "The file is too large!";

class CertificatePages : public PageTest {
 protected:
  CertificatePages() {
    for (const char* page : {kTrusted, kOwn}) pageHandler(page).init();
  }
  // The text of the notice that an upload ends in, "done" when it leads back to the page. No file of it may stay.
  std::string upload(const std::string& page, const std::string& text, int length = -1) {
    write("/tmp/cert_aB3xyz", text);
    FakeRequest request{{"q", "upload"}, {"certificatefile", "/tmp/cert_aB3xyz"}};
    request.contentLength = length;
    request.session = &session;
    const RecordingResponse answer = serve(pageHandler(page), request);
    if (request.uploadTemplate.empty()) {
      std::filesystem::remove(file("/tmp/cert_aB3xyz"));  // the host stored none
    } else {
      EXPECT_EQ(request.uploadTemplate, "/tmp/cert_XXXXXX");
    }
    for (const char* path : {"/tmp/cert_aB3xyz", "/tmp/certxxxx.cer", "/tmp/WebServer.pem"}) {
      EXPECT_FALSE(std::filesystem::is_regular_file(file(path))) << path;
    }
    return outcome(page, answer);
  }
  static std::string outcome(const std::string& page, const RecordingResponse& answer) {
    if (answer.redirects == Messages{"/servlet?p=" + page + "&q=load"}) return "done";
    const std::string label = answer.variable("noticeLabel"), front = "setTimeout$" + page + "$";
    return label.starts_with(front) ? label.substr(front.size()) : label;
  }
  std::string listed(const std::string& names) { return columns(load(kTrusted), "TRLoop", names); }
};

TEST_F(CertificatePages, TheTableHasTenRows) {
  EXPECT_EQ(listed("row setColor IssuedTo FilePath"),
            "1|2|3|4|5|6|7|8|9|10, 1|0|1|0|1|0|1|0|1|0, |||||||||, "
            "(absent)|(absent)|(absent)|(absent)|(absent)|(absent)|(absent)|(absent)|(absent)|(absent)");
  for (const std::string name : {"a3.pem", "a0.der", "odd.pem"})
    EXPECT_EQ(upload(kTrusted, certificateFile(name)), "done");
  EXPECT_EQ(listed("row IssuedTo IssuedBy"),
            "1|2|3|4|5|6|7|8|9|10, Authority 3|Authority 0|A\\01\\0Aä &amp;amp; B|||||||, "
            "Authority 3|Authority 0|A\\01\\0Aä &amp;amp; B|||||||");
  for (const std::string i : {"1", "2", "4", "5", "6", "7", "8"}) upload(kTrusted, certificateFile("a" + i + ".pem"));
  EXPECT_EQ(listed("row setColor"), "1|2|3|4|5|6|7|8|9|10, 1|0|1|0|1|0|1|0|1|0");
  EXPECT_EQ(upload(kTrusted, certificateFile("a9.pem")), "Install certs failed!");
  EXPECT_EQ(listed("Expiration").find("||"), std::string::npos);
  std::filesystem::remove_all(file("/config/certs"));
  EXPECT_EQ(listed("IssuedTo"), "|||||||||");
}

TEST_F(CertificatePages, UploadsEndInTheirNotices) {
  const std::string a0 = certificateFile("a0.pem"), own = certificateFile("leaf.pem") + certificateFile("leaf.key");
  const std::string delivered = content("/config/certs/phoneca/phone-root-ca.pem");
  write("/config/certs/phonedev/WebServer.pem", a0);
  const std::tuple<const char*, std::string, int, const char*> rows[] = {
      {kTrusted, a0, 0x500000, kTooLarge},
      {kTrusted, a0, 0x4fffff, "done"},
      {kTrusted, a0, -1, "The cert file has existed!"},
      {kTrusted, delivered, -1, "The cert file has prefabricated!"},
      {kTrusted, own + a0, -1, "Install certs failed!"},
      {kOwn, own, 0x500000, kTooLarge},
      {kOwn, own, 0x4fffff, "done"},
      {kOwn, own, -1, "The cert file has existed!"},
      {kOwn, a0 + certificateFile("a0.key"), -1, "The cert file has prefabricated!"},
      {kOwn, certificateFile("leaf.pem") + certificateFile("pkcs8.key"), -1, "Install server certs error! errorid=-1"},
  };
  for (const auto& [page, text, length, expected] : rows) EXPECT_EQ(upload(page, text, length), expected) << page;
  for (const char* name : {"/tmp/certxxxx.cer/x", "/tmp/WebServer.pem/x"}) write(name, "");  // folders in the way
  EXPECT_EQ(upload(kTrusted, a0), "Upload cert file error!");
  EXPECT_EQ(
      log.back(),
      "4 TrustedCertServlet::upload() rename file failed! filename[0]=/tmp/cert_aB3xyz newPath=/tmp/certxxxx.cer");
  EXPECT_EQ(upload(kOwn, own), "Install server certs error! errorid=-1");
  for (const char* path : {"/tmp/certxxxx.cer", "/tmp/WebServer.pem"}) std::filesystem::remove_all(file(path));
  write("/tmp/certxxxx.cer", a0);
  const std::string before = everythingStored();
  EXPECT_EQ(outcome(kTrusted, run(kTrusted, "upload", "certificatefile=/config/certs/phonedev/WebServer.pem")),
            "Upload cert file error!");
  EXPECT_EQ(outcome(kOwn, run(kOwn, "upload")), "Install server certs error! errorid=-1");
  EXPECT_EQ(everythingStored(), before);
}

TEST_F(CertificatePages, DeletesTheNamesBeforeCommas) {
  for (const char* name : {"a.pem", "b.pem", "c.pem", "server/WebServer.pem"}) {
    write(std::string("/config/certs/") + name, certificateFile("a0.pem"));
  }
  const auto stays = [&](const std::string& name) { return std::filesystem::exists(file("/config/certs/" + name)); };
  EXPECT_TRUE(run(kTrusted, "delete").untouched());
  EXPECT_EQ(outcome(kTrusted, run(kTrusted, "delete", "z=a.pem,b.pem")), "done");
  EXPECT_TRUE(!stays("a.pem") && stays("b.pem"));
  const std::vector<std::string> refused = {
      "",        "../data/htpasswd", "server/WebServer.pem", "/config/certs/b.pem", ".",
      "phoneca", "none.pem",         std::string(300, 'x')};
  std::string names, before = content("/config/data/htpasswd");
  for (const std::string& name : refused) names += name + ",";
  log.clear();
  run(kTrusted, "delete", "z=" + names + "b.pem,c.pem,");
  EXPECT_TRUE(!stays("b.pem") && !stays("c.pem") && stays("server/WebServer.pem"));
  EXPECT_EQ(content("/config/data/htpasswd"), before);
  ASSERT_EQ(log.size(), refused.size());
  EXPECT_EQ(log[1], "4 delete cert ../data/htpasswd failed!");
  run(kTrusted, "delete", "z=" + std::string(5000, ','));
  EXPECT_EQ(log.size(), refused.size() + 1025);
  EXPECT_EQ(outcome(kOwn, run(kOwn, "delete")), "done");
  EXPECT_EQ(outcome(kOwn, run(kOwn, "delete")), "Delete server certs error!");
}

TEST_F(CertificatePages, SavesTellTheLibrary) {
  const simulator::CertificateOptions& options = simulator::phone().certificateOptions;
  EXPECT_EQ(options.trustedInUse + "|" + options.serverInUse + "|" + std::to_string(options.commonNameCheck),
            "/config/certs/phoneca|/config/certs/phonedev/WebServer.pem|1");
  const std::pair<std::string, std::string> sets[] = {
      {"1", "/config/certs/"}, {"2", "/config/certs/ca"}, {"3", "/config/certs/ca"}, {"0", "/config/certs/phoneca"}};
  for (const auto& [choice, folder] : sets) {
    expectSaves({{kTrusted, "HTTPSTrustCertificates=0&HttpsCNValidation=7&HttpsCaCert=" + choice, "",
                  "HTTPSTrustCertificates=0&HttpsCNValidation=7&HttpsCaCert=" + choice}});
    EXPECT_EQ(options.trustedInUse, folder) << choice;
  }
  EXPECT_EQ(options.commonNameCheck, 7);
  for (const std::string choice : {"1", "2"}) {
    expectSaves({{kOwn, "HttpsDevCert=" + choice, "", "HttpsDevCert=" + choice}});
    EXPECT_EQ(options.serverInUse, "/config/certs/server/WebServer.pem");
  }
  for (const std::string page : {kTrusted, kOwn}) {
    EXPECT_EQ(outcome(page, save(page, "reboot=true")), "setInterval$" + page + "$Rebooting , please wait ...");
    EXPECT_EQ(announced(), "post app_hostapp 0x10101 5 0; system reboot app_hostapp 0x10101");
  }
}

TEST_F(CertificatePages, NothingHappensDuringACall) {
  write("/config/certs/a.pem", certificateFile("a0.pem"));
  setState(R"({"talking":true})");
  const std::string before = everythingStored();
  for (const std::string page : {kTrusted, kOwn}) {
    for (const std::string action : {"write", "delete"}) {
      EXPECT_EQ(outcome(page, run(page, action, "z=a.pem,&HttpsCaCert=2&HttpsDevCert=1")),
                "setTimeout$notice$Talking, Please wait...");
    }
    EXPECT_EQ(upload(page, certificateFile("a1.pem")), "setTimeout$notice$Talking, Please wait...");
    for (const std::string action : {"", "Load", "show"}) EXPECT_EQ(run(page, action).status, 404);
  }
  EXPECT_EQ(everythingStored(), before);
}

TEST_F(CertificatePages, DetailsAndWhatRunsOut) {
  EXPECT_EQ(load(kOwn).variable("count HttpsDevCert"), "0|0");
  EXPECT_EQ(upload(kOwn, certificateFile("leaf.pem") + certificateFile("leaf.key")), "done");
  EXPECT_EQ(upload(kTrusted, certificateFile("a0.pem")), "done");
  write("/config/certs/phonedev/WebServer.pem", certificateFile("root.pem") + certificateFile("mid.pem"));
  const RecordingResponse page = load(kOwn);
  EXPECT_EQ(columns(page, "BuiltInLoop", "IssuedTo IssuedBy State"), "Root, Root, Expires soon");
  EXPECT_EQ(page.variable("count"), "(absent)");
  EXPECT_EQ(columns(page, "TRLoop", "IssuedTo IssuedBy Subject Names Serial"),
            "phone.example, Middle, O = Example, CN = phone.example, DNS:phone.example, IP Address:192.0.2.1, 1234");
  for (const auto& [name, value] : page.loops.at("TRLoop")[0])
    EXPECT_EQ(value.find("PRIVATE"), std::string::npos) << name;
  constexpr int kDay = 24 * 60 * 60;
  const std::pair<int, const char*> rows[] = {{-kDay, "Not valid yet"},
                                              {0, "Valid"},
                                              {9 * kDay, "Valid"},
                                              {10 * kDay + 60, "Expires soon"},
                                              {40 * kDay - 60, "Expires soon"},
                                              {40 * kDay + 60, "Expired"}};
  for (const auto& [offset, state] : rows) {
    setState("{\"clockOffset\":" + std::to_string(offset) + "}");
    EXPECT_EQ(listed("State").substr(0, listed("State").find('|')), state) << offset;
  }
}

}  // namespace
