// Sessions, files, the page list and the command line.
#include <string.h>
#include <sys/stat.h>

#include "host/options.h"
#include "host/page_table.h"
#include "host/session_store.h"
#include "host/static_files.h"
#include "tests/host/host_test.h"

namespace host {
namespace {
using namespace std::chrono_literals;

constexpr SessionTime kStart{};

TEST(SessionStore, KeepsTextsThatAHandlerMayHold) {
  SessionStore store;
  const auto session = store.create(kStart);
  EXPECT_EQ(session->id().size(), 32U);
  const char* first = (session->setAttribute("x", strdup("1")), session->getAttribute("x"));
  session->setAttribute("x", strdup("2"));
  EXPECT_STREQ(first, "1");
  EXPECT_STREQ(session->getAttribute("x"), "2");
  session->invalidate();
  session->setAttribute("user", strdup("late"));
  EXPECT_EQ(session->getAttribute("user"), nullptr);
  EXPECT_EQ(store.size(), 0U);
}

TEST(SessionStore, DropsIdleSessions) {
  SessionStore store;
  const auto session = store.create(kStart);
  EXPECT_NE(store.find(session->id(), kStart + 14min), nullptr);
  EXPECT_NE(store.find(session->id(), kStart + 28min), nullptr);  // the look before kept it alive
  session->setMaxInactiveInterval(60);
  EXPECT_NE(store.find(session->id(), kStart + 28min + 59s), nullptr);
  session->setMaxInactiveInterval(0);
  EXPECT_NE(store.find(session->id(), kStart + 43min), nullptr);
  EXPECT_EQ(store.find(session->id(), kStart + 58min), nullptr);
  EXPECT_FALSE(session->valid());
}

TEST(SessionStore, LetsAnonymousSessionsGiveWayFirst) {
  SessionStore store;
  std::vector<std::shared_ptr<Session>> all;
  for (int i = 0; i < 64; ++i) {
    all.push_back(store.create(kStart + i * 1s));
    if (i != 5 && i != 9) all.back()->setAttribute("user", strdup("admin"));
  }
  store.find(all[5]->id(), kStart + 70s);  // now 9 is the longest idle of the two
  const auto next = store.create(kStart + 71s);
  EXPECT_FALSE(all[9]->valid());
  EXPECT_TRUE(all[0]->valid());
  next->setAttribute("user", strdup("var"));
  all[5]->setAttribute("user", strdup("var"));
  store.create(kStart + 72s);
  EXPECT_FALSE(all[0]->valid());  // all are logged in: the longest idle
  EXPECT_EQ(store.size(), 64U);
}

TEST(StaticFiles, StayInTheirFolder) {
  const host_test::TempFolder folder;
  for (const auto& [name, content] : {std::pair{"js/app.js", "plain"},
                                      {"js/app.js.gz", "zipped"},
                                      {"old.css", "new"},
                                      {"old.css.gz", "stale"},
                                      {".hidden", "x"},
                                      {"../secret", "x"}}) {
    folder.write(std::string("docs/").append(name), content);
  }
  const auto docs = folder.path() / "docs";
  std::filesystem::last_write_time(docs / "old.css.gz", std::filesystem::file_time_type::clock::now() - 1h);
  std::filesystem::create_symlink("../secret", docs / "link");
  std::filesystem::create_symlink("js/app.js", docs / "inside.js");
  ASSERT_EQ(::mkfifo((docs / "pipe").c_str(), 0600), 0);
  const StaticFiles files(docs);
  for (const char* path :
       {"/link", "/.hidden", "/js", "/js/", "/", "/../secret", "/js/../../secret", "/%2e%2e/secret",
        "/js%2f..%2f..%2fsecret", "/js/app.js%00", "//js/app.js", "/pipe", "/missing", "js/app.js", ""}) {
    EXPECT_FALSE(files.answer({path, "", ""})) << path;
  }
  for (const char* path : {"/js/app.js", "/js/app.js?v=1", "/js/%61pp.js", "/inside.js"}) {
    const auto answer = files.answer({path, "br", ""});
    ASSERT_TRUE(answer) << path;
    EXPECT_EQ(answer->fileSize, 5U);
    EXPECT_EQ(*answer->header("Content-Type"), "text/javascript; charset=utf-8");
    EXPECT_EQ(answer->header("Content-Encoding"), nullptr);
  }
  const auto zipped = files.answer({"/js/app.js", "gzip", ""});
  EXPECT_EQ(zipped->fileSize, 6U);
  EXPECT_EQ(*zipped->header("Content-Encoding"), "gzip");
  EXPECT_EQ(*zipped->header("Vary"), "Accept-Encoding");
  EXPECT_EQ(files.answer({"/js/app.js", "gzip", *zipped->header("ETag")})->status, 304);
  EXPECT_EQ(files.answer({"/js/app.js", "", *zipped->header("ETag")})->status, 200);
  EXPECT_EQ(files.answer({"/old.css", "gzip", ""})->fileSize, 3U);  // edited after it was compressed
}

TEST(PageTable, LeavesOutWhatTheModuleLacks) {
  const host_test::LogCapture log;
  EXPECT_EQ(parsePageList("a=A\n  b-c = B # note\r\n\n# x\n= C\nd\ne =\n"),
            (std::vector<std::pair<std::string, std::string>>{{"a", "A"}, {"b-c", "B"}}));
  EXPECT_EQ(log.text(),
            "page list, line 5: no \"page = factory\"\npage list, line 6: no \"page = factory\"\n"
            "page list, line 7: no \"page = factory\"\n");
  const host_test::TempFolder folder;
  folder.write("pages.conf", "a = A\n");
  const auto none = [](const std::string&) -> void* { return nullptr; };
  EXPECT_THROW(PageTable(folder.path() / "pages.conf", none), std::runtime_error);
  EXPECT_THROW(PageTable(folder.path() / "missing", none), std::runtime_error);
}

TEST(Options, AreRead) {
  Options options;
  std::string error;
  ASSERT_TRUE(parseOptions({"--root", "/r", "--listen", "[::1]:8080", "--max-upload", "2", "--quiet"}, "/opt/bin",
                           options, error));
  EXPECT_EQ(options.address, "::1");
  EXPECT_EQ(options.port, 8080);
  EXPECT_EQ(options.maxUpload, 2U * 1024 * 1024);
  EXPECT_EQ(options.pages, "/r/phone/www/WEB-INFO/pages.conf");
  EXPECT_TRUE(options.quiet);
  const std::vector<std::vector<std::string>> kWrong = {
      {},
      {"--root", "/r"},
      {"--root", "/r", "--listen", "127.0.0.1:99999"},
      {"--root", "/r", "--listen", ":1"},
      {"--root", "/r", "--listen", "127.0.0.1:1", "--max-upload", "0"},
      {"--root", "/r", "--listen", "127.0.0.1:1", "--tls-key", "k"},
      {"--root", "/r", "--listen"},
      {"--what"},
  };
  for (const auto& arguments : kWrong) {
    Options wrong;
    EXPECT_FALSE(parseOptions(arguments, "/opt/bin", wrong, error)) << error;
  }
}

}  // namespace
}  // namespace host
