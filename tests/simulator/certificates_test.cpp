// The certificate library: what it installs and refuses, and what it says of it.
#include "platform/certificates.h"

#include "tests/simulator/simulator_test.h"
#include "tests/support/certificates.h"

namespace {

constexpr char kServer[] = "/config/certs/server/WebServer.pem";

class CertificatesTest : public PhoneTest {
 protected:
  int trust(const std::string& text) { return write("/tmp/x", text), dl_install_ca("/tmp/x"); }
  int serve(const std::string& text) { return write("/tmp/x", text), dl_install_ser_ca("/tmp/x"); }
  static std::string trusted() {
    TrustedCertificates found;
    EXPECT_EQ(dl_get_trust_ca_info(&found), 0);
    std::string names;
    for (int i = 0; i < found.count; ++i) names += std::string(found.records[i].issuedTo) + "|";
    return names;
  }
};

std::string repeated(const std::string& text, std::size_t size) {
  std::string all;
  while (all.size() + text.size() <= size) all += text;
  return all;
}

TEST_F(CertificatesTest, TrustsOneCertificateAFile) {
  const std::string a0 = certificateFile("a0.pem"), der = certificateFile("a0.der"), key = certificateFile("a0.key");
  const std::string half = a0.substr(0, a0.size() / 2);
  constexpr std::size_t kLargest = 5 << 20;
  for (const std::string& wrong :
       {std::string(), std::string("text"), key, half, half + a0, a0 + a0, a0 + certificateFile("a1.pem"), der + "x",
        der.substr(0, der.size() - 1), repeated(a0, kLargest), repeated("-----BEGIN CERTIFICATE-----\n", kLargest),
        repeated("text\n", kLargest) + a0, std::string(kLargest, '0'),
        std::string("-----BEGIN CERTIFICATE-----\nMAA=\n-----END CERTIFICATE-----\n")})
    EXPECT_EQ(trust(wrong), -1) << wrong.substr(0, 80);
  EXPECT_EQ(trusted(), "");
  EXPECT_EQ(trust("Authority 0:\n" + a0 + key + certificateFile("pkcs8.key")), 0);
  EXPECT_EQ(trust(der), -2);
  EXPECT_EQ(trust(content("/config/certs/phoneca/phone-root-ca.pem")), -3);
  TrustedCertificates found;
  ASSERT_EQ(dl_get_trust_ca_info(&found), 0);
  EXPECT_THAT(found.records[0].path, ::testing::MatchesRegex("/config/certs/[0-9a-f]{16}\\.pem"));
  EXPECT_EQ(content(found.records[0].path), a0);  // without the key
  fs::create_symlink(file("/tmp/x"), file("/tmp/link"));
  for (const char* path : {"/tmp/none", "/tmp", "/tmp/link", "/../x"}) EXPECT_EQ(dl_install_ca(path), -10) << path;
}

TEST_F(CertificatesTest, TenAreListedInTheOrderOfInstallation) {
  for (const int i : {7, 3, 9, 0, 2, 1, 8, 5, 4})
    EXPECT_EQ(trust(certificateFile("a" + std::to_string(i) + ".pem")), 0);
  write("/config/certs/text.pem", "none");
  write("/config/certs/chain.pem", certificateFile("root.pem") + certificateFile("mid.pem"));
  write("/config/certs/half.pem.new", certificateFile("mid.pem"));
  write("/tmp/linked", certificateFile("root.pem"));
  fs::create_symlink(file("/tmp/linked"), file("/config/certs/linked.pem"));
  EXPECT_EQ(trust(certificateFile("a6.pem")), 0);
  EXPECT_EQ(trust(certificateFile("a10.pem")), -1);
  TrustedCertificates found;
  ASSERT_EQ(dl_get_trust_ca_info(&found), 0);
  EXPECT_EQ(dl_del_ca(found.records[1].path), 0);
  EXPECT_EQ(trust(certificateFile("a3.pem")), 0);
  EXPECT_EQ(trusted(),
            "Authority 7|Authority 9|Authority 0|Authority 2|Authority 1|Authority 8|Authority 5|Authority 4|"
            "Authority 6|Authority 3|");
  fs::remove_all(file("/config/certs"));
  EXPECT_NE(dl_get_trust_ca_info(&found), 0);
}

TEST_F(CertificatesTest, DeletesWhatWasInstalledOnly) {
  EXPECT_EQ(serve(certificateFile("leaf.pem") + certificateFile("leaf.key")), 0);
  write("/config/certs/phonedev/WebServer.pem", "x");
  write("/config/certs/own.pem", "x");
  fs::create_symlink(file("/config/data/htpasswd"), file("/config/certs/link.pem"));
  const std::string before = everythingStored();
  for (const char* path : {"/config/certs/phoneca/phone-root-ca.pem", "/config/certs/phonedev/WebServer.pem",
                           "/config/certs/", "/config/certs/server", "/config/certs/link.pem", "/config/certs/none.pem",
                           "/config/data/htpasswd", "/config/certs/../data/htpasswd", "/config/certs/..", ""})
    EXPECT_EQ(dl_del_ca(path), -1) << path;
  EXPECT_EQ(everythingStored(), before);
  EXPECT_EQ(dl_del_ca("/config/certs/own.pem") + dl_del_ca(kServer), 0);
  EXPECT_EQ(dl_del_ca(kServer), -1);
}

TEST_F(CertificatesTest, AServerHasItsKeyAndItsChain) {
  const std::string leaf = certificateFile("leaf.pem"), key = certificateFile("leaf.key"),
                    mid = certificateFile("mid.pem");
  const std::string root = certificateFile("root.pem"), a0 = certificateFile("a0.pem"),
                    locked = certificateFile("pkcs8.key");
  std::string disguised = locked;
  for (std::size_t at; (at = disguised.find("ENCRYPTED ")) != std::string::npos;) disguised.erase(at, 10);
  for (const std::string& wrong :
       {std::string(), leaf, key, leaf + certificateFile("a0.key"), a0 + key, leaf + key + key, leaf + locked,
        leaf + certificateFile("old.key"), leaf + disguised, leaf + key.substr(0, 100), certificateFile("a0.der"),
        repeated(mid, 5 << 20) + leaf + key})
    EXPECT_EQ(serve(wrong), -1) << wrong;
  EXPECT_FALSE(fs::exists(file(kServer)));
  write("/config/certs/phonedev/WebServer.pem", a0 + certificateFile("a0.key"));
  EXPECT_EQ(serve(a0 + certificateFile("a0.key")), -8);
  EXPECT_EQ(serve("Phone:\n" + leaf + certificateFile("ec.key")), 0);
  EXPECT_EQ(content(kServer), leaf + key);
  EXPECT_EQ(serve(key + a0 + leaf), -7);
  EXPECT_EQ(serve(root + key + a0 + mid + leaf), 0);
  EXPECT_EQ(content(kServer), leaf + mid + root + key);
  EXPECT_EQ(fs::status(file(kServer)).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  for (const std::string& line : log) EXPECT_THAT(line, Not(HasSubstr("PRIVATE")));
  EXPECT_THAT(control("GET", "journal").body, Not(HasSubstr("PRIVATE")));
}

TEST_F(CertificatesTest, SaysWhatACertificateHolds) {
  ServerCertificateInfo info;
  CertificateDetails details;
  EXPECT_NE(dl_get_ser_ca_info(&info), 0);
  EXPECT_EQ(dl_get_ca_details(kServer, &details), -1);
  serve(certificateFile("leaf.pem") + certificateFile("mid.pem") + certificateFile("leaf.key"));
  ASSERT_EQ(dl_get_ser_ca_info(&info), 0);
  ASSERT_EQ(dl_get_ca_details(kServer, &details), 0);
  EXPECT_EQ(std::string(info.issuedTo) + "|" + info.issuedBy, "phone.example|Middle");
  EXPECT_EQ(details.subject + "|" + details.issuer + "|" + details.alternativeNames + "|" + details.serial,
            "O = Example, CN = phone.example|CN = Middle|DNS:phone.example, IP Address:192.0.2.1|1234");
  EXPECT_THAT(details.fingerprint, ::testing::MatchesRegex("([0-9A-F]{2}:){31}[0-9A-F]{2}"));
  EXPECT_THAT(details.expiration, ::testing::MatchesRegex("[A-Z][a-z]{2} [ 123][0-9] [0-9:]{8} 20[0-9]{2} GMT"));
  EXPECT_EQ(details.expiration, info.expiration);
  EXPECT_EQ(details.validTo - details.validFrom, 30 * 24 * 60 * 60);
  trust(certificateFile("odd.pem"));
  EXPECT_EQ(trusted(), "A\\01\\0Aä &amp; B|");
  write("/config/certs/named.der", certificateFile("a0.der"));
  EXPECT_EQ(dl_get_ca_details("/config/certs/named.der", &details), 0);
  EXPECT_EQ(dl_get_ca_details("/config/certs/phoneca/phone-root-ca.pem", &details), -1);
}

}  // namespace
