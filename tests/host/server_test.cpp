// The server over real connections: hostile clients first.
#include <string.h>

#include <chrono>
#include <fstream>
#include <future>
#include <thread>

#include "tests/host/host_test.h"

namespace host_test {
namespace {
using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kMultipart = "Content-Type: multipart/form-data; boundary=B\r\n";
constexpr const char* kChunked = "Transfer-Encoding: chunked\r\n";

std::string orNull(const char* text) {
  return text ? text : "null";
}

// As one chunk of a body.
std::string chunk(std::string_view bytes) {
  std::ostringstream text;
  text << std::hex << bytes.size() << "\r\n" << bytes << "\r\n";
  return text.str();
}

// Bytes that tell when some are lost or change places.
std::string counted(std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; bytes.size() < size; ++i) bytes += std::to_string(i) + ",";
  bytes.resize(size);
  return bytes;
}

std::string cookieOf(const Reply& reply) {
  return "Cookie: x=\"; " + reply.header("set-cookie").substr(0, 45) + "\r\n";
}

// A page that shows what it got: its fields, then the raw body.
void showPage(HttpRequest* request, HttpResponse* response) {
  response->setContentType("text/plain");
  response->print("%s %s %s %d", request->getRequestURI(), request->getRemoteAddr(),
                  orNull(request->getContentType()).c_str(), request->getContentLength());
  for (const char* name : {"a", "b"}) response->print(" %s=%s", name, orNull(request->getParameter(name)).c_str());
  response->print(" ");
  char piece[1000];
  while (const int count = request->read(piece, sizeof piece)) response->write(piece, 1, count);
}

Page printing(const char* text) {
  return [text](HttpRequest*, HttpResponse* response) { response->print("%s", text); };
}

// Clients that send the same and wait.
using Clients = std::vector<std::unique_ptr<Client>>;
void addClients(Clients& clients, std::uint16_t port, int count, std::string_view bytes) {
  for (; count > 0; --count) clients.emplace_back(std::make_unique<Client>(port))->send(bytes);
}

long residentPages() {
  std::ifstream memory("/proc/self/statm");
  long all = 0, resident = 0;
  memory >> all >> resident;
  return resident;
}

TEST_F(ServerTest, RoutesRequests) {
  behaviour.page = printing("page");
  const std::pair<std::string, std::string> kCases[] = {
      {"/", "302 /servlet?p=status&q=load "},
      {"/servlet?p=any&q=load", "200  page"},
      {"/servlet?p=gone&q=load", "404  "},
      {"/servlet?p=", "404  "},
      {"/servlet", "302 /servlet?p=status&q=load "},
      {"/servlet?", "302 /servlet?p=status&q=load "},
      {"/servlet?key=OK", "200  "},  // a command, which the filter carried out
      {"/servlet?push&p=any", "200  "},
      {"/js/app.js", "200  let a = 1;\n"},
      {"/nothing", "404  "},
      {"/servlet?p=any&x=%00", "400  "},
  };
  for (const auto& [target, expected] : kCases) {
    const Reply reply = get(target);
    const std::string status = std::to_string(reply.status), text = reply.status < 400 ? reply.body : "";
    EXPECT_EQ(status + " " + reply.header("location") + " " + text, expected) << target;
    EXPECT_EQ(reply.body.find("Error " + status) != std::string::npos, reply.status >= 400) << target;
    EXPECT_EQ(reply.header("x-content-type-options") + reply.header("x-frame-options"), "nosniffDENY");
    EXPECT_EQ(reply.header("referrer-policy"), "no-referrer");
    EXPECT_EQ(reply.header("content-security-policy"),
              "default-src 'self'; base-uri 'none'; form-action 'self'; frame-ancestors 'none'; object-src 'none'");
    EXPECT_EQ(reply.header("cache-control"), target == "/js/app.js" ? "no-cache" : "no-store");
  }
  const Reply json = get("/servlet?p=gone", "Accept: application/json\r\n");
  EXPECT_EQ(json.body, "{\"error\":404,\"message\":\"Not Found\"}");
  EXPECT_EQ(json.header("content-type"), "application/json");
  EXPECT_EQ(post("/servlet?push", kForm, "p=any").body, "");
  EXPECT_THAT(log_.text(), HasSubstr("the module has no createGoneServlet\npage gone is not served\n"));
  Client client(port());
  client.send(head("HEAD", "/js/app.js"));
  const Reply file = client.receive(false);
  EXPECT_EQ(file.header("content-length"), "11");
  EXPECT_EQ(client.ask(head("GET", "/js/app.js", "If-None-Match: " + file.header("etag") + "\r\n")).status, 304);
  EXPECT_EQ(client.ask(head("PUT", "/servlet?p=any")).header("allow"), "GET, HEAD, POST");
}

TEST_F(ServerTest, GivesFieldsAndBody) {
  behaviour.page = showPage;
  EXPECT_EQ(get("/servlet?p=any&a=1%202").body, "/servlet?p=any&a=1%202 127.0.0.1 null 0 a=1 2 b=null ");
  EXPECT_EQ(post("/servlet?p=any&a=q", kForm, "a=f&b=x+y").body,
            "/servlet?p=any&a=q 127.0.0.1 application/x-www-form-urlencoded 9 a=q b=x y a=f&b=x+y");
  EXPECT_THAT(post("/servlet?p=any", kMultipart, part("name=\"b\"", "v") + "--B--").body, HasSubstr("a=null b=v --B"));
  EXPECT_EQ(post("/servlet", kForm, "p=any&a=1").body,
            "/servlet 127.0.0.1 application/x-www-form-urlencoded 9 a=1 b=null p=any&a=1");
  const std::string form = head("POST", "/servlet?p=any", std::string(kForm) + kChunked);
  EXPECT_THAT(ask(form + chunk("a=1") + chunk("&b=2") + "0\r\n\r\n").body, HasSubstr("7 a=1 b=2 a=1&b=2"));
  // A form is posted: by an address alone nobody sends one.
  const std::string read = head("GET", "/servlet?p=any", std::string(kForm) + "Content-Length: 3\r\n");
  EXPECT_THAT(ask(read + "a=1").body, HasSubstr("3 a=null b=null a=1"));
}

TEST_F(ServerTest, RefusesFormsThatAreTooBigOrHoldANul) {
  int runs = 0;
  behaviour.page = [&](HttpRequest* request, HttpResponse* response) { ++runs, showPage(request, response); };
  const std::string nul("x\0y", 3), mebibyte(1 << 20, 'x');
  const std::tuple<const char*, std::string, int, bool> kCases[] = {
      {kForm, "a=" + mebibyte.substr(2), 200, true},
      {kForm, "a=" + mebibyte.substr(1), 413, false},
      {kForm, "a=1&b=x%00y", 400, false},
      {kForm, "a=1&b=" + nul, 400, false},
      {"Content-Type: Application/X-WWW-Form-Urlencoded; charset=utf-8\r\n", "a%00=1", 400, false},
      {kMultipart, part("name=\"a\"", "1") + part("name=\"b\"", nul) + "--B--", 400, false},
      {kMultipart, part("name=\"a\"", "1") + part("name=\"" + nul + "\"", "") + "--B--", 400, false},
      {kMultipart, part("name=\"a\"", mebibyte) + "--B--", 413, true},
      {kMultipart, part("name=\"a\"", "cut").substr(0, 50), 200, true},
  };
  for (const auto& [type, body, status, reachesThePage] : kCases) {
    runs = 0;
    EXPECT_EQ(post("/servlet?p=any", type, body).status, status) << body.substr(0, 99);
    EXPECT_EQ(runs, reachesThePage) << "a page must not take a refused form for an empty one";
  }
  const std::string form = head("POST", "/servlet?p=any", std::string(kForm) + kChunked);
  EXPECT_EQ(ask(form + chunk(mebibyte) + chunk("&b=1") + "0\r\n\r\n").status, 413);
  behaviour.filter = [&](HttpRequest*, HttpResponse*) { return ++runs; };
  runs = 0;
  EXPECT_EQ(post("/servlet?key=OK", kForm, "a=%00").status, 400);
  EXPECT_EQ(runs, 0) << "nor is a command carried out";
}

TEST_F(ServerTest, KeepsAHandlersHeadersInOnePiece) {
  behaviour.page = [](HttpRequest* request, HttpResponse* response) {
    response->setHeader("X-One", "1\r\nX-Evil: 1");
    response->setHeader("X Two", "2");
    response->setHeader("X\r", "2");
    response->addHeader("Content-Length", "9999");
    response->addHeader("X-Three", "\xc3\xa4");
    response->addHeader("X-Three", "4");
    response->setHeader(nullptr, nullptr);
    response->setContentType("text/html");
    if (request->getParameter("q")) response->sendRedirect("/x?a=b&c=%20#e\r\nX-Evil: 1 \xe4\x7f");
  };
  const Reply reply = get("/servlet?p=any");
  EXPECT_EQ(reply.headers.count("x-evil") + reply.headers.count("x-one") + reply.headers.count("x two"), 0U);
  EXPECT_EQ(reply.headers.count("x-three"), 2U);
  EXPECT_EQ(reply.header("content-length"), "0");
  EXPECT_EQ(reply.header("content-type"), "text/html; charset=utf-8");
  EXPECT_EQ(get("/servlet?p=any&q=1").header("location"), "/x?a=b&c=%20#e%0D%0AX-Evil:%201%20%E4%7F");
}

TEST_F(ServerTest, AnswersErrorsAndKeepsWhatWasWritten) {
  behaviour.page = [](HttpRequest* request, HttpResponse* response) {
    const std::string action = orNull(request->getParameter("q"));
    if (action == "body") response->print("%s", "form");
    if (action == "throw") throw 1;
    if (action == "template") response->renderTemplate("/phone/missing.htm", nullptr);
    if (action != "template") response->sendError(action == "odd" ? 99 : 401);
  };
  EXPECT_THAT(get("/servlet?p=any&q=bare").body, HasSubstr("<h1>Unauthorized</h1>"));
  const Reply form = get("/servlet?p=any&q=body");
  EXPECT_EQ(std::to_string(form.status) + form.body, "401form");
  for (const std::string action : {"odd", "throw", "template"})
    EXPECT_EQ(get("/servlet?p=any&q=" + action).status, 500);
  EXPECT_THAT(log_.text(), HasSubstr("missing.htm:0: cannot be read"));
}

TEST_F(ServerTest, LetsTheFilterAnswer) {
  behaviour.page = printing("secret");
  behaviour.filter = [](HttpRequest* request, HttpResponse* response) {
    if (orNull(request->getParameter("b")) == "in") return 1;
    response->sendRedirect("/login");
    return 0;
  };
  EXPECT_EQ(get("/servlet?p=any").header("location"), "/login");
  EXPECT_EQ(get("/servlet?p=any&b=in").body, "secret");
  // A long body is not looked at before the filter has let the request in.
  const std::string file(2'000'000, 'x');
  const std::string body = part("name=\"b\"", "in") + part("name=\"f\"; filename=\"f\"", file) + "--B--";
  EXPECT_EQ(post("/servlet?p=any", kMultipart, body).header("location"), "/login");
  const std::string waits = std::string(kMultipart) + "Expect: 100-continue\r\nContent-Length: 2000000\r\n";
  EXPECT_EQ(ask(head("POST", "/servlet?p=any", waits)).header("location"), "/login");  // without a byte of the body
}

TEST_F(ServerTest, GivesSessions) {
  behaviour.page = [](HttpRequest* request, HttpResponse* response) {
    HttpSession* session = request->getSession(1);
    const std::string action = orNull(request->getParameter("q"));
    if (action == "keep") session->setAttribute("x", strdup("kept"));
    if (action == "in") session->setAttribute("user", strdup("admin"));
    if (action == "out") session->invalidate();
    session = request->getSession(action != "out");
    response->print("%s", orNull(session ? session->getAttribute("user") : nullptr).c_str());
  };
  const std::string removal = "PHONESESSION=; Path=/; HttpOnly; SameSite=Strict; Max-Age=0";
  const std::string unknown = "Cookie: PHONESESSION=0123456789abcdef0123456789abcdef\r\n";
  EXPECT_EQ(get("/servlet?p=any").header("set-cookie"), "");
  EXPECT_EQ(get("/servlet?p=any", unknown).header("set-cookie"), "");
  EXPECT_EQ(get("/servlet?p=any&q=out", unknown).header("set-cookie"), removal);
  const Reply first = get("/servlet?p=any&q=keep", unknown);
  EXPECT_EQ(first.header("set-cookie").substr(45), "; Path=/; HttpOnly; SameSite=Strict");
  const std::string before = cookieOf(first);
  EXPECT_THAT(before, Not(HasSubstr("0123456789abcdef0123456789abcdef")));
  const Reply login = get("/servlet?p=any&q=in", before);
  const std::string after = cookieOf(login);
  EXPECT_NE(before, after);
  EXPECT_EQ(get("/servlet?p=any", after).body, "admin");
  EXPECT_EQ(get("/servlet?p=any", after).header("set-cookie"), "");
  EXPECT_EQ(get("/servlet?p=any", before).body, "null");
  EXPECT_EQ(get("/servlet?p=any&q=out", after).header("set-cookie"), removal);
  EXPECT_EQ(get("/servlet?p=any", after).body, "null");
  EXPECT_EQ(get("/servlet?p=any", "Cookie: PHONESESSION=../../etc\r\n").status, 200);
  EXPECT_THAT(log_.text(), Not(HasSubstr(login.header("set-cookie").substr(13, 32))));
}

TEST_F(ServerTest, WantsToBeCalledByOneOfItsNames) {
  settings_.names = {"phone.example.com"};
  start();
  for (const auto& [rest, status] : {std::pair{"0", 200},
                                     {"1", 400},
                                     {"1\r\nHost: phone.example.com", 200},
                                     {"1\r\nHost: evil.com", 421},
                                     {"1\r\nHost: phone\r\nhost: evil.com", 400}}) {
    EXPECT_EQ(ask("GET /js/app.js HTTP/1." + std::string(rest) + "\r\n\r\n").status, status) << rest;
  }
}

TEST_F(ServerTest, MountsTheSimulator) {
  settings_.simulator = [](const std::string& method, const std::string& path, const auto& query,
                           const std::string& body) {
    return host::MountReply{201, "text/plain", method + path + query.at("a") + body};
  };
  const Reply reply = ask(head("PATCH", "/simulator/x?a=%31", "Content-Length: 2\r\n") + "hi");
  EXPECT_EQ(std::to_string(reply.status) + reply.body, "201PATCH/simulator/x1hi");
}

TEST_F(ServerTest, AnswersNothingWhileTheDeviceReboots) {
  std::atomic<bool> rebooting = false;
  std::atomic<std::uint64_t> count = 0;
  settings_.device = {[&] { return rebooting.load(); }, [&] { return count.load(); }};
  behaviour.page = [](HttpRequest* request, HttpResponse* response) {
    response->print("%s", orNull(request->getSession(1)->getAttribute("x")).c_str());
    request->getSession(1)->setAttribute("x", strdup("kept"));
  };
  const std::string cookie = cookieOf(get("/servlet?p=any"));
  EXPECT_EQ(get("/servlet?p=any", cookie).body, "kept");
  rebooting = true;
  ++count;
  EXPECT_EQ(get("/servlet?p=any", cookie).header("retry-after"), "2");
  rebooting = false;
  EXPECT_EQ(get("/servlet?p=any", cookie).body, "null");
}

TEST_F(ServerTest, SendsLongAnswersWholeOrNotAtAll) {
  const std::string text = counted(300 * 1024);
  behaviour.page = printing(text.c_str());
  EXPECT_EQ(get("/servlet?p=any").body, text);
  const auto disk = lowLimit(RLIMIT_FSIZE, 257 * 1024);  // room for what goes there first, but not for the rest
  EXPECT_EQ(get("/servlet?p=any").status, 500);
  EXPECT_THAT(log_.text(), HasSubstr("an answer found no room on the disk"));
  EXPECT_EQ(root_.list("tmp"), std::vector<std::string>{"keep"});
}

TEST_F(ServerTest, StreamsUploadsWithoutHoldingThem) {
  behaviour.page = [](HttpRequest* request, HttpResponse* response) {
    request->setUploadFileTemplate("/tmp/rom_XXXXXX");
    const char** file = request->getParameterValues("f");
    if (!file) return;
    const auto size = std::filesystem::file_size(orNull(request->getParameter("root")) + file[0]);
    response->print("%zu %s %s", static_cast<std::size_t>(size), file[1], orNull(request->getParameter("b")).c_str());
  };
  start();
  const std::string front = part("name=\"f\"; filename=\"big.rom\"", "");
  const std::string back = "\r\n" + part("name=\"b\"", "end") + "--B--\r\n", piece(1 << 20, 'r');
  const long before = residentPages();
  Client client(port());
  const std::size_t size = front.size() - 2 + 60 * piece.size() + back.size();
  client.send(head("POST", "/servlet?p=any&root=" + root_.path().string(),
                   kMultipart + ("Content-Length: " + std::to_string(size)) + "\r\n") +
              front.substr(0, front.size() - 2));
  for (int i = 0; i < 60; ++i) ASSERT_TRUE(client.send(piece));
  EXPECT_EQ(client.ask(back).body, "62914560 big.rom end");
  EXPECT_LT((residentPages() - before) * ::getpagesize(), 8 << 20);
  EXPECT_EQ(root_.list("tmp"), std::vector<std::string>{"keep"});
  client.send(head("POST", "/servlet?p=any", "Expect: 100-continue\r\nContent-Length: 67108865\r\n"));
  EXPECT_EQ(client.receive().status, 413);
}

TEST_F(ServerTest, RefusesAnUploadThatOutgrowsItsLimit) {
  behaviour.page = showPage;
  settings_.maxUpload = 3 << 20;
  const std::string body = counted(3 << 20), chunked = head("POST", "/servlet?p=any", kChunked);
  const std::string chunks = chunk(body.substr(0, 1 << 20)) + chunk(body.substr(1 << 20));
  const Reply fits = ask(chunked + chunks + "0\r\n\r\n");
  EXPECT_EQ(fits.status, 200);
  EXPECT_TRUE(fits.body == "/servlet?p=any 127.0.0.1 null 3145728 a=null b=null " + body);
  EXPECT_EQ(ask(chunked + chunks + chunk("x") + "0\r\n\r\n").status, 413);
  auto disk = lowLimit(RLIMIT_FSIZE, 1'000'000);
  EXPECT_EQ(ask(chunked + chunks + "0\r\n\r\n").status, 507);
  disk.reset();
  // A body that nobody wants passes by, and the connection goes on.
  behaviour.page = printing("early");
  Client client(port());
  for (int i = 0; i < 2; ++i) {
    const std::string unwanted(2'000'000, 'x');
    EXPECT_EQ(client.ask(head("POST", "/servlet?p=any", "Content-Length: 2000000\r\n") + unwanted).body, "early");
  }
}

TEST_F(ServerTest, GivesUsersFilesToThoseWhoAreLoggedIn) {
  behaviour.page = [](HttpRequest* request, HttpResponse*) {
    request->getSession(1)->setAttribute("user", strdup(orNull(request->getParameter("a")).c_str()));
  };
  std::uint64_t reboots = 0;
  settings_.device.rebootCount = [&] { return reboots; };
  settings_.userFolders = {{"/media/user/sound/", "data/sound"}};
  root_.write("data/sound/a.wav", "ring");
  root_.write("phone/www/htdocs/media/user/sound/b.wav", "none of them");
  const std::string cookie = cookieOf(get("/servlet?p=any&a=admin"));
  const Reply reply = get("/media/user/sound/a.wav", cookie);
  EXPECT_EQ(reply.body + reply.header("cache-control") + reply.header("x-content-type-options"),
            "ringprivate, no-cachenosniff");
  EXPECT_EQ(get("/media/user/sound/b.wav", cookie).status, 404);
  for (const std::string& other : {std::string(), cookieOf(get("/servlet?p=any&a="))}) {
    EXPECT_EQ(get("/media/user/sound/a.wav", other).status, 404) << other;
  }
  ++reboots;
  EXPECT_EQ(get("/media/user/sound/a.wav", cookie).status, 404);
}

TEST_F(ServerTest, DropsSlowSendersButNotThoseItHeldUp) {
  settings_.rateWindow = 300ms;
  start();
  behaviour.page = showPage;
  for (const char* length : {"Content-Length: 5000\r\n", "Content-Length: 5000000\r\n"}) {
    Client slow(port());
    slow.send(head("POST", "/servlet?p=any", length));
    bool open = true;
    for (int i = 0; open && i < 100; ++i, std::this_thread::sleep_for(50ms)) open = slow.send("x");
    EXPECT_FALSE(open) << length;
  }
  EXPECT_EQ(get("/servlet?p=any").status, 200);  // the handler is through with them
  behaviour.page = [](HttpRequest*, HttpResponse* response) {
    std::this_thread::sleep_for(500ms);
    response->print("late");
  };
  Client held(port());
  held.send(head("POST", "/servlet?p=any", "Content-Length: 2000000\r\n") + std::string(1000, 'x'));
  std::this_thread::sleep_for(550ms);
  EXPECT_EQ(held.ask(std::string(1'999'000, 'x')).body, "late");
}

TEST_F(ServerTest, IsNotHeldUpByClientsThatStallOrSendGarbage) {
  behaviour.page = [](HttpRequest* request, HttpResponse* response) {
    char byte;
    if (request->getParameter("read")) return response->print("%d", request->read(&byte, 1));
    response->print("quick");
  };
  start();
  Clients clients;
  const std::string post = "POST /servlet?p=any HTTP/1.1\r\nHost: x\r\n";
  for (const std::string& half :
       {std::string(), std::string("GET /serv"), std::string("GET / HTTP/1.1\r\nHost: x\r\n"),
        post + "Content-Length: 9\r\n\r\nx", post + "Content-Length: 9000000\r\n\r\nx",
        post + kMultipart + "Content-Length: 9000000\r\n\r\n" + part("name=\"read\"", "1"), std::string(100'000, 'A'),
        "GET / HTTP/1.1\r\n" + std::string(100'000, 'h'), head("GET", "/%%%00%zz?%=&"),
        head("GET", std::string("/servlet?p=any\0", 15)), std::string("GET  HTTP/9.9\r\n\r\n"),
        post + "Content-Length: -1\r\n\r\n", post + "Content-Length: 99999999999999999999\r\n\r\n",
        post + kChunked + "\r\nzz\r\n", post + "Content-Type: multipart/form-data\r\nContent-Length: 3\r\n\r\n--B"}) {
    addClients(clients, port(), 12, half);
  }
  const auto quick = [this] { return std::async(std::launch::async, [this] { return get("/servlet?p=any"); }); };
  auto beside = quick();
  ASSERT_EQ(beside.wait_for(5s), std::future_status::ready);
  EXPECT_EQ(beside.get().body, "quick");
  // A handler that waits for a body stops when the client goes away; until then static files are served beside it.
  Client reader(port());
  reader.send(head("POST", "/servlet?p=any&read=1", "Content-Length: 9000000\r\n"));
  auto behind = quick();
  EXPECT_EQ(behind.wait_for(200ms), std::future_status::timeout);
  EXPECT_EQ(get("/js/app.js").status, 200);
  reader.close();
  EXPECT_EQ(behind.wait_for(5s), std::future_status::ready);
}

TEST_F(ServerTest, ServesOthersWhileAHandlerTakesItsTime) {
  std::atomic<bool> slow = false, asleep = false;
  behaviour.page = [&](HttpRequest*, HttpResponse* response) {
    if (slow.exchange(false)) {
      asleep = true;
      std::this_thread::sleep_for(500ms);
      asleep = false;
    }
    response->print("page");
  };
  const std::string page = head("GET", "/servlet?p=any"), file = head("GET", "/js/app.js");
  Clients others;
  addClients(others, port(), 50, page);
  for (const auto& client : others) EXPECT_EQ(client->receive().body, "page");
  for (int round = 0; round < 2; ++round) {
    slow = true;
    Client sleeper(port()), behind(port());
    sleeper.send(page);
    while (!asleep) std::this_thread::yield();
    behind.send(page);
    for (const auto& client : others) EXPECT_EQ(client->ask(file).body, "let a = 1;\n");
    EXPECT_TRUE(asleep) << "they were to be served meanwhile";
    EXPECT_EQ(sleeper.receive().body, "page");
    EXPECT_EQ(behind.receive().body, "page");
  }
  slow = true;
  others[0]->send(page);
  others[1]->send(page);
  while (!asleep) std::this_thread::yield();
  EXPECT_FALSE(server_->stop(10ms));
  EXPECT_TRUE(server_->stop(1s));
}

TEST_F(ServerTest, AnswersEveryoneWhateverTimeHandlersTake) {
  std::atomic<int> inTurn = 0, runs = 0;
  behaviour.page = [&](HttpRequest* request, HttpResponse* response) {
    EXPECT_EQ(++inTurn, 1) << "one handler at a time";
    if (++runs % 5 == 0) std::this_thread::sleep_for(runs % 4 * 800us);
    char piece[1000];
    int size = 0;
    while (const int count = request->read(piece, sizeof piece)) size += count;
    response->print("%s %d", orNull(request->getParameter("a")).c_str(), size);
    --inTurn;
  };
  start();
  const auto visit = [this](int id) {
    Client client(port());
    for (int i = id; i < id + 60; ++i) {
      const std::string page = "/servlet?p=any&a=" + std::to_string(i), shown = std::to_string(i);
      if (i % 20 == 7) Client(port()).send(head("GET", page));  // leaves without its answer
      if (i % 3 == 1) client.ask(head("GET", "/js/app.js"));
      EXPECT_EQ(client.ask(head("GET", page)).body, shown + " 0");
      if (i % 30 != 2) continue;
      EXPECT_EQ(post(page, "", std::string(1'500'000, 'x')).body, shown + " 1500000");
    }
  };
  std::vector<std::future<void>> clients;
  for (int id = 0; id < 8; ++id) clients.push_back(std::async(std::launch::async, visit, id * 1000));
}

TEST_F(ServerTest, AsksForAsManyFilesAsItsConnectionsNeed) {
  const auto files = lowLimit(RLIMIT_NOFILE, 300);
  start();
  rlimit now;
  ::getrlimit(RLIMIT_NOFILE, &now);
  EXPECT_GE(now.rlim_cur, std::min<rlim_t>(now.rlim_max, 2048));
}

TEST_F(ServerTest, EndsQuicklyWhateverItIsDoing) {
  behaviour.page = [](HttpRequest* request, HttpResponse*) {
    char byte;
    request->read(&byte, 1);
  };
  const std::string unfinished = head("POST", "/servlet?p=any", "Content-Length: 9000000\r\n");
  Clients clients;
  for (const std::size_t sent : {0U, 200'000U}) addClients(clients, port(), 2, unfinished + std::string(sent, 'x'));
  std::this_thread::sleep_for(100ms);
  const auto began = std::chrono::steady_clock::now();
  EXPECT_TRUE(server_->stop());
  EXPECT_LT(std::chrono::steady_clock::now() - began, 900ms);
  pages_->destroy();
  pages_->destroy();
  EXPECT_EQ(behaviour.destroyed, 1);
}

}  // namespace
}  // namespace host_test
