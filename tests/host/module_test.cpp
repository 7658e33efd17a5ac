// The real page handlers in the real server: what each alone cannot show.
#include "host/module.h"

#include "platform/named_lock.h"
#include "simulator/simulator.h"
#include "tests/host/host_test.h"

namespace host_test {
namespace {
using namespace std::string_literals;

class ModuleTest : public ServerTest {
 protected:
  ModuleTest() : phone_(root_.path() / "phone-root") {
    simulator::prepareRoot(phone_, PHONE_WEB_ROOTFS);
    simulator::start(phone_);
    simulator::setLogSink([](int, int, std::string_view) {});
    settings_.root = phone_;
    server_ = std::make_unique<host::Server>(pages(), settings_);
  }
  ~ModuleTest() override { simulator::setLogSink(nullptr); }

  // Handlers are made once and never deleted.
  static host::PageTable& pages() {
    static const host::Module module(PHONE_WEB_BUILD "/libphonepages.so");
    static auto& table = *new host::PageTable(PHONE_WEB_ROOTFS "/phone/www/WEB-INFO/pages.conf",
                                              [](const std::string& name) { return module.function(name); });
    return table;
  }
  void configure(const std::string& key, const std::string& value) {
    simulator::control("PUT", "/simulator/config", {}, R"({"global":{")" + key + R"(":")" + value + R"("}})");
  }
  std::string pushed() { return root_.content("phone-root/tmp/XmlBrowserFile.xml"); }

  const std::filesystem::path phone_;
};

TEST_F(ModuleTest, StoresPushedDocumentsAsTheyCome) {
  EXPECT_EQ(post("/servlet?push", "", "xml=<stranger/>").status, 200);
  EXPECT_EQ(pushed(), "");
  configure("PushXMLServerIP", "127.0.0.1");
  int number = 0;
  for (const std::string type :
       {"application/x-www-form-urlencoded", "multipart/form-data; boundary=B", "text/xml", ""}) {
    for (const char* target : {"/servlet?push", "/servlet?pushXML&p=status"}) {
      const std::string document = std::to_string(++number) + "<a>%00&p=login&q=login\0+\r\n--B--\r\n"s;
      const std::string header = type.empty() ? "" : "Content-Type: " + type + "\r\n";
      const Reply reply = post(target, header, "xml=" + document);
      EXPECT_EQ(std::to_string(reply.status) + reply.body, "200") << type;
      EXPECT_EQ(pushed(), document) << type;
    }
  }
  const std::string longest(1024 * 1024 - 4, 'x');
  EXPECT_EQ(post("/servlet?push", kForm, "xml=" + longest).status, 200);
  EXPECT_TRUE(pushed() == longest);
  EXPECT_EQ(post("/servlet?push", "", "xml=y" + longest).status, 413);
  const std::string chunked = head("POST", "/servlet?push", "Transfer-Encoding: chunked\r\n");
  EXPECT_EQ(ask(chunked + "100001\r\nxml=y" + longest + "\r\n0\r\n\r\n").status, 413);
  EXPECT_TRUE(pushed() == longest);
}

TEST_F(ModuleTest, KeepsAPersonsSessionWhoeverElseComes) {
  const Reply login = post("/servlet?p=login&q=login", kForm, "username=admin&pwd=admin&jumpto=status");
  EXPECT_EQ(login.header("location"), "/servlet?p=status&q=load");
  const std::string cookie = "Cookie: " + login.header("set-cookie").substr(0, 45) + "\r\n";
  configure("AURILimitIP", "any");
  const std::string link = "Sec-Fetch-Site: cross-site\r\nSec-Fetch-Mode: navigate\r\nSec-Fetch-Dest: document\r\n";
  for (int i = 0; i < 70; ++i) {
    EXPECT_EQ(get("/servlet?p=status&q=load", link).header("set-cookie"), "");
    EXPECT_EQ(get("/servlet?key=OK&@admin:admin").status, 200);
    EXPECT_EQ(get("/servlet?key=OK&@var:var").status, 200);
  }
  EXPECT_EQ(get("/servlet?p=status&q=load", cookie).status, 200);
  EXPECT_EQ(get("/servlet?", cookie).header("location"), "/servlet?p=status&q=load");
  EXPECT_EQ(get("/servlet?").header("location"), "/servlet?p=login&q=loginForm&jumpto=URI&");
}

TEST_F(ModuleTest, ServesOthersWhileAnExportWaitsForItsLock) {
  const Reply login = post("/servlet?p=login&q=login", kForm, "username=admin&pwd=admin&jumpto=status");
  const std::string cookie = "Cookie: " + login.header("set-cookie").substr(0, 45) + "\r\n";
  ETL_BaseHelper::chMutex lock;
  ASSERT_TRUE(lock.OpenMutex("WRLockiniFileName") && lock.Lock(0));
  Client waiting(port());
  waiting.send(head("GET", "/servlet?p=settings-config&q=export", cookie));
  for (int i = 0; i < 20; ++i) EXPECT_EQ(get("/css/style.css").status, 200);
  EXPECT_FALSE(server_->stop(std::chrono::milliseconds(20))) << "the export waits, and who ends the program is told";
  lock.Unlock();
  EXPECT_TRUE(server_->stop());
}

}  // namespace
}  // namespace host_test
