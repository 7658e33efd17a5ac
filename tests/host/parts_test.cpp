// Sessions, buffers, files and the page list.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string.h>
#include <sys/stat.h>

#include <thread>

#include "host/body_stream.h"
#include "host/handler_thread.h"
#include "host/page_table.h"
#include "host/session_store.h"
#include "host/spool_buffer.h"
#include "host/static_files.h"
#include "tests/host/host_test.h"

namespace host {
namespace {
using namespace std::chrono_literals;

constexpr SessionTime kStart{};

TEST(SessionStore, GivesANewIdWithTheLogin) {
  SessionStore store;
  const auto session = store.create(kStart);
  const std::string before = session->id();
  EXPECT_EQ(before.size(), 32U);
  const char* first = (session->setAttribute("x", strdup("1")), session->getAttribute("x"));
  session->setAttribute("x", strdup("2"));
  EXPECT_STREQ(first, "1");  // a handler may hold it to the end of the request
  session->setAttribute("user", strdup("admin"));
  EXPECT_NE(session->id(), before);
  EXPECT_EQ(store.find(before, kStart), nullptr);
  EXPECT_EQ(store.find(session->id(), kStart), session);
  EXPECT_STREQ(session->getAttribute("x"), "2");
  EXPECT_EQ(session->getAttribute("y"), nullptr);
  session->invalidate();
  EXPECT_EQ(store.size(), 0U);
  EXPECT_EQ(session->getAttribute("user"), nullptr);
  session->setAttribute("user", strdup("late"));
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

TEST(SpoolBuffer, ReadsTheSameFromMemoryAndFile) {
  for (std::size_t limit : {10U, 100'000U}) {
    SpoolBuffer buffer(limit, "/tmp");
    std::string expected;
    for (int i = 0; i < 100; ++i) {
      expected += std::to_string(i) + ",";
      ASSERT_TRUE(buffer.append(std::to_string(i) + ","));
    }
    ASSERT_EQ(buffer.size(), expected.size());
    std::string read;
    char piece[7];
    while (const std::size_t count = buffer.read(read.size(), piece, sizeof piece)) read.append(piece, count);
    EXPECT_EQ(read, expected);
    EXPECT_EQ(bool(buffer.takeFile()), limit == 10);
  }
  SpoolBuffer nowhere(4, "/missing/folder");
  EXPECT_TRUE(nowhere.append("1234"));
  EXPECT_FALSE(nowhere.append("5"));
  EXPECT_TRUE(nowhere.failed());
}

class Connection final : public Pausable {
 public:
  void pause() override { ++pauses; }
  void resume() override { ++resumes; }
  std::atomic<int> pauses = 0, resumes = 0;
};

TEST(BodyStream, IsBoundedAndLosesNothing) {
  Connection connection;
  BodyStream stream(connection);
  std::string sent(300'000, '\0'), got;
  for (std::size_t i = 0; i < sent.size(); ++i) sent[i] = static_cast<char>(i % 251);
  EXPECT_EQ(stream.offer(sent), 64U * 1024);
  EXPECT_EQ(connection.pauses, 1);  // for the part that was not taken
  std::thread reader([&] {
    char piece[1000];
    while (const std::size_t count = stream.read(piece, sizeof piece)) got.append(piece, count);
  });
  for (std::size_t at = 64 * 1024; at < sent.size();) {
    while (connection.resumes < connection.pauses) std::this_thread::yield();
    at += stream.offer(std::string_view(sent).substr(at, 5000));
  }
  stream.end();
  reader.join();
  EXPECT_EQ(got, sent);
}

TEST(BodyStream, EndsWaitsAndLetsTheRestPass) {
  Connection connection;
  BodyStream stream(connection);
  stream.holdUntilRead();
  std::thread reader([&] {
    char byte;
    EXPECT_EQ(stream.read(&byte, 1), 0U);
  });
  while (connection.resumes == 0) std::this_thread::yield();  // the first look lets the body in
  stream.abort();
  reader.join();
  EXPECT_TRUE(stream.pauseUntilAnswered());
  stream.answered();
  EXPECT_EQ(connection.resumes, 2);
  EXPECT_FALSE(stream.pauseUntilAnswered());
  EXPECT_EQ(stream.offer(std::string(1'000'000, 'x')), 1'000'000U);
}

class Recorded final : public Job {
 public:
  Recorded(std::string& out, char name) : out_(out), name_(name) {}
  void run() override { out_ += name_; }
  void cancel() override { out_ += '!'; }

 private:
  std::string& out_;
  char name_;
};

TEST(HandlerThread, RunsInOrderAndTakesNothingAfterItsEnd) {
  std::string out;
  HandlerThread thread;
  for (char name : {'a', 'b', 'c'}) EXPECT_TRUE(thread.push(std::make_shared<Recorded>(out, name)));
  EXPECT_TRUE(thread.stop(5s));
  std::erase(out, '!');
  EXPECT_EQ(out, "abc");
  EXPECT_FALSE(thread.push(std::make_shared<Recorded>(out, 'd')));
}

TEST(StaticFiles, StayInTheirFolder) {
  const host_test::TempFolder folder;
  folder.write("docs/js/app.js", "plain");
  folder.write("docs/js/app.js.gz", "zipped");
  folder.write("docs/old.css", "new");
  folder.write("docs/old.css.gz", "stale");
  folder.write("docs/.hidden", "x");
  folder.write("secret", "x");
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

}  // namespace
}  // namespace host
