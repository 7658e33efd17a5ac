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

const Visitor kPerson{"10.0.0.1", true}, kCommander{"10.0.0.9", false};

using SessionPointer = std::shared_ptr<Session>;

// A session in which `attribute` was set at once.
SessionPointer makeSession(SessionStore& store, const Visitor& visitor, SessionTime now, const char* attribute = "user",
                           const char* value = "admin") {
  SessionPointer session = store.create(visitor, now);
  session->setAttribute(attribute, strdup(value));
  return session;
}

TEST(SessionStore, KeepsTextsThatAHandlerMayHold) {
  SessionStore store;
  const auto session = store.create(kPerson, kStart);
  const char* first = (session->setAttribute("x", strdup("1")), session->getAttribute("x"));
  session->setAttribute("x", strdup("2"));
  EXPECT_EQ(std::string(first) + session->getAttribute("x"), "12");
  for (const SessionPointer& ended : {session, store.create(kPerson, kStart)}) {
    ended->invalidate();
    ended->setAttribute("user", strdup("late"));
    EXPECT_EQ(ended->getAttribute("user"), nullptr);
    EXPECT_EQ(store.size(), 0U);
  }
}

TEST(SessionStore, GivesAPlaceToWhatHoldsSomething) {
  SessionStore store;
  const auto session = store.create(kPerson, kStart);
  session->setMaxInactiveInterval(60);
  session->setAttribute("x", nullptr);
  EXPECT_EQ(session->id(), "");
  EXPECT_EQ(store.size(), 0U);
  EXPECT_EQ(store.find("", kPerson, kStart), nullptr);
  session->setAttribute("x", strdup("1"));
  const std::string anonymous = session->id();
  EXPECT_EQ(anonymous.size(), 32U);
  session->setAttribute("user", strdup("admin"));
  EXPECT_EQ(session->id().size(), 32U);
  EXPECT_EQ(store.find(anonymous, kPerson, kStart), nullptr);
  EXPECT_EQ(store.find(session->id(), kPerson, kStart + 59s), session);
  EXPECT_FALSE(store.find(session->id(), kPerson, kStart + 119s)->valid());  // by the time set before it had a place
}

TEST(SessionStore, DropsIdleSessions) {
  SessionStore store;
  const auto session = makeSession(store, kPerson, kStart);
  const auto lives = [&](SessionTime now) { return store.find(session->id(), kPerson, now)->valid(); };
  EXPECT_TRUE(lives(kStart + 14min));
  EXPECT_TRUE(lives(kStart + 28min));  // the look before kept it alive
  session->setMaxInactiveInterval(60);
  EXPECT_TRUE(lives(kStart + 28min + 59s));
  session->setMaxInactiveInterval(0);
  EXPECT_TRUE(lives(kStart + 43min));
  EXPECT_FALSE(lives(kStart + 58min));
  EXPECT_EQ(store.find(session->id(), kPerson, kStart + 58min), nullptr);
}

TEST(SessionStore, TellsWhoIsLoggedIn) {
  SessionStore store;
  const auto session = makeSession(store, kPerson, kStart, "x");
  const auto isIn = [&](SessionTime now) { return store.isLoggedIn(session->id(), false, now); };
  EXPECT_FALSE(isIn(kStart) || store.isLoggedIn("", false, kStart));
  for (const auto& [user, known] : {std::pair{"", false}, {"admin", true}}) {
    session->setAttribute("user", strdup(user));
    EXPECT_EQ(isIn(kStart + 14min), known);
  }
  EXPECT_FALSE(isIn(kStart + 15min));  // nor did the question before keep it alive
  store.find(session->id(), kPerson, kStart + 14min);
  EXPECT_TRUE(isIn(kStart + 15min));
  session->invalidate();
  EXPECT_FALSE(isIn(kStart + 15min));
}

TEST(SessionStore, LetsThoseGiveWayWhoMatterLess) {
  SessionStore store;
  std::vector<SessionPointer> all;
  for (int i = 0; i < 64; ++i)
    all.push_back(makeSession(store, kPerson, kStart + i * 1s, i == 5 || i == 9 ? "x" : "user"));
  store.find(all[5]->id(), kPerson, kStart + 70s);  // now 9 is the longest idle of the two that nobody is logged in to
  const auto commander = makeSession(store, kCommander, kStart + 71s);
  EXPECT_FALSE(all[9]->valid());
  makeSession(store, kPerson, kStart + 72s);
  EXPECT_FALSE(all[5]->valid());
  makeSession(store, kPerson, kStart + 73s);
  EXPECT_FALSE(commander->valid());
  // Only persons are left: nobody who is less than they are takes a place.
  EXPECT_EQ(makeSession(store, kCommander, kStart + 74s)->id(), "");
  const auto anonymous = makeSession(store, kPerson, kStart + 75s, "x");
  EXPECT_EQ(anonymous->id(), "");
  EXPECT_STREQ(anonymous->getAttribute("x"), "admin");
  EXPECT_TRUE(all[0]->valid());
  anonymous->setAttribute("user", strdup("admin"));  // a person now
  EXPECT_EQ(anonymous->id().size(), 32U);
  EXPECT_FALSE(all[0]->valid());
  EXPECT_TRUE(all[1]->valid());
  EXPECT_EQ(store.size(), 64U);
}

TEST(SessionStore, KeepsOneSessionForAClientThatLogsInWithEachCommand) {
  SessionStore store;
  const auto person = makeSession(store, {kCommander.address, true}, kStart);
  const auto other = makeSession(store, {"10.0.0.2", false}, kStart),
             var = makeSession(store, kCommander, kStart, "user", "var");
  const auto first = makeSession(store, kCommander, kStart), second = store.create(kCommander, kStart);
  second->setAttribute("x", strdup("1"));
  EXPECT_TRUE(first->valid());
  second->setAttribute("user", strdup("admin"));
  EXPECT_FALSE(first->valid());
  EXPECT_TRUE(second->valid() && person->valid() && other->valid() && var->valid());
  EXPECT_EQ(store.size(), 4U);
  // A client that keeps its cookie and then logs in by the form has become a person.
  store.find(second->id(), {kCommander.address, true}, kStart)->setAttribute("user", strdup("admin"));
  const auto third = makeSession(store, kCommander, kStart);
  EXPECT_TRUE(second->valid());
  // And by a command in a session of his, a person stays one.
  store.find(person->id(), kCommander, kStart)->setAttribute("user", strdup("admin"));
  makeSession(store, kCommander, kStart);
  EXPECT_TRUE(person->valid());
  EXPECT_FALSE(third->valid());
}

TEST(StaticFiles, StayInTheirFolder) {
  const TemporaryFolder folder;
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
  EXPECT_EQ(*zipped->header("Content-Encoding") + *zipped->header("Vary"), "gzipAccept-Encoding");
  EXPECT_EQ(files.answer({"/js/app.js", "gzip", *zipped->header("ETag")})->status, 304);
  EXPECT_EQ(files.answer({"/js/app.js", "", *zipped->header("ETag")})->status, 200);
  EXPECT_EQ(files.answer({"/old.css", "gzip", ""})->fileSize, 3U);  // edited after it was compressed
}

TEST(UserFile, IsAPictureOrSoundOfTheFolderItself) {
  const TemporaryFolder folder;
  for (const char* name :
       {"in/a b.wav", "in/x.PNG", "in/x.png.gz", "in/x.svg", "in/x.html", "in/.x.png", "in/d.png/x.png", "x.png"})
    folder.write(name, "12345");
  const auto in = folder.path() / "in";
  std::filesystem::create_symlink("x.PNG", in / "link.png");
  for (const char* name :
       {"", ".", "..", "%2e%2e", "/x.PNG", "../x.png", "..%2fx.png", "d.png", "d.png/x.png", "d.png%2Fx.png", "x.svg",
        "x.html", ".x.png", "%2ex.png", "link.png", "x.PNG%00", "x.PNG/", "missing.png"}) {
    EXPECT_FALSE(userFile(in, {name, "", ""})) << name;
  }
  for (const auto& [name, type] : {std::pair{"a%20b.wav", "audio/wav"}, {"x.PNG", "image/png"}}) {
    const auto answer = userFile(in, {name, "gzip", ""});
    ASSERT_TRUE(answer) << name;
    EXPECT_EQ(*answer->header("Content-Type") + " " + *answer->header("Cache-Control"),
              std::string(type) + " private, no-cache");
    EXPECT_EQ(answer->fileSize, 5U);
    EXPECT_EQ(userFile(in, {name, "", *answer->header("ETag")})->status, 304);
  }
}

TEST(PageTable, LeavesOutWhatTheModuleLacks) {
  const host_test::LogCapture log;
  EXPECT_EQ(parsePageList("a=A\n  b-c = B # note\r\n\n# x\n= C\nd\ne =\n"),
            (std::vector<std::pair<std::string, std::string>>{{"a", "A"}, {"b-c", "B"}}));
  for (const char* line : {"5", "6", "7"})
    EXPECT_THAT(log.text(), ::testing::HasSubstr(std::string("page list, line ") + line + ": no \"page = factory\"\n"));
  const TemporaryFolder folder;
  folder.write("pages.conf", "a = A\n");
  const auto none = [](const std::string&) -> void* { return nullptr; };
  EXPECT_THROW(PageTable(folder.path() / "pages.conf", none), std::runtime_error);
  EXPECT_THROW(PageTable(folder.path() / "missing", none), std::runtime_error);
}

std::vector<std::string> words(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

TEST(Options, AreRead) {
  Options options;
  std::string error;
  ASSERT_TRUE(parseOptions(words("--root /r --listen [::1]:8080 --max-upload 2 --quiet --name Phone.Example.com. "
                                 "--state {} --name b"),
                           "/opt/bin", options, error));
  EXPECT_EQ(options.address + options.pages.string() + options.state, "::1/r/phone/www/WEB-INFO/pages.conf{}");
  EXPECT_EQ(options.port, 8080);
  EXPECT_EQ(options.maxUpload, 2U * 1024 * 1024);
  EXPECT_TRUE(options.quiet);
  EXPECT_EQ(options.names, words("phone.example.com b"));
  ASSERT_TRUE(parseOptions(words("--root /r --listen-tls 0.0.0.0:443"), "/opt/bin", options = {}, error));
  EXPECT_EQ(options.address + options.tlsAddress + std::to_string(options.tlsPort), "0.0.0.0443");
  for (const char* wrong :
       {"", "--root /r", "--root /r --listen 127.0.0.1:99999", "--root /r --listen :1",
        "--root /r --listen 127.0.0.1:1 --max-upload 0", "--root /r --listen 127.0.0.1:1 --tls-key k",
        "--root /r --listen-tls 127.0.0.1:1 --tls-cert c --tls-key k", "--root /r --listen-tls 127.0.0.1",
        "--root /r --listen", "--root /r --listen 127.0.0.1:1 --name phone:80",
        "--root /r --listen 127.0.0.1:1 --name http://phone", "--root /r --listen 127.0.0.1:1 --what"}) {
    EXPECT_FALSE(parseOptions(words(wrong), "/opt/bin", options = {}, error)) << wrong;
  }
}

}  // namespace
}  // namespace host
