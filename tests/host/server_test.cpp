// The server over real connections: hostile clients first.
#include <gmock/gmock.h>
#include <string.h>
#include <unistd.h>

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

constexpr const char* kForm = "Content-Type: application/x-www-form-urlencoded\r\n";
constexpr const char* kMultipart = "Content-Type: multipart/form-data; boundary=B\r\n";

std::string orNull(const char* text) {
  return text ? text : "null";
}

// A page that shows what it got: the fields named in "show", then the raw body.
int showPage(HttpRequest* request, HttpResponse* response) {
  response->setContentType("text/plain");
  response->print("%s %s %s %d", request->getRequestURI(), request->getRemoteAddr(),
                  orNull(request->getContentType()).c_str(), request->getContentLength());
  for (const char* name : {"a", "b"}) response->print(" %s=%s", name, orNull(request->getParameter(name)).c_str());
  char piece[10];
  response->print(" ");
  while (const int count = request->read(piece, sizeof piece)) response->write(piece, 1, count);
  return 1;
}

long residentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::strtol(line.c_str() + 6, nullptr, 10);
  }
  return 0;
}

TEST_F(ServerTest, RoutesRequests) {
  behaviour().page = [](HttpRequest*, HttpResponse* response) { return response->print("page"), 1; };
  const struct {
    const char* target;
    int status;
    const char *body, *location;
  } kCases[] = {
      {"/", 302, "", "/servlet?p=status&q=load"},
      {"/servlet?p=any&q=load", 200, "page", ""},
      {"/servlet?p=gone&q=load", 404, "Error 404", ""},
      {"/servlet?p=", 404, "Error 404", ""},
      {"/servlet", 404, "Error 404", ""},
      {"/servlet?", 404, "Error 404", ""},
      {"/servlet?key=OK", 200, "", ""},  // a command, which the filter carried out
      {"/servlet/", 404, "Error 404", ""},
      {"/js/app.js", 200, "let a = 1;\n", ""},
      {"/nothing", 404, "Error 404", ""},
      {"/simulator/", 404, "Error 404", ""},
      {"http://127.0.0.1/servlet?p=any", 200, "page", ""},
      {"*", 400, "Error 400", ""},
      {"/servlet?p=any&x=%00", 400, "Error 400", ""},
  };
  for (const auto& row : kCases) {
    const Reply reply = get(row.target);
    EXPECT_EQ(reply.status, row.status) << row.target;
    EXPECT_THAT(reply.body, HasSubstr(row.body)) << row.target;
    EXPECT_EQ(reply.header("location"), row.location);
  }
  const Reply json = get("/servlet?p=gone", "Accept: application/json\r\n");
  EXPECT_EQ(json.body, "{\"error\":404,\"message\":\"Not Found\"}");
  EXPECT_EQ(json.header("content-type"), "application/json");
  EXPECT_THAT(log_.text(), HasSubstr("the module has no createGoneServlet\npage gone is not served\n"));
  EXPECT_EQ(get("/servlet?p=any&x=" + std::string(9000, 'x')).status, 414);
}

TEST_F(ServerTest, CarriesItsHeadersEverywhere) {
  behaviour().page = [](HttpRequest*, HttpResponse* response) { return response->setContentType("text/html"), 1; };
  for (const char* target : {"/", "/servlet?p=any", "/nothing", "/js/app.js"}) {
    const Reply reply = get(target);
    EXPECT_EQ(reply.header("x-content-type-options"), "nosniff");
    EXPECT_EQ(reply.header("x-frame-options"), "DENY");
    EXPECT_EQ(reply.header("referrer-policy"), "no-referrer");
    EXPECT_EQ(reply.header("content-security-policy"),
              "default-src 'self'; base-uri 'none'; form-action 'self'; frame-ancestors 'none'; object-src 'none'");
    EXPECT_EQ(reply.header("cache-control"), std::string_view(target) == "/js/app.js" ? "no-cache" : "no-store");
  }
  EXPECT_EQ(get("/servlet?p=any").header("content-type"), "text/html; charset=utf-8");
}

TEST_F(ServerTest, KnowsItsMethods) {
  start();
  Client client(server_->port());
  client.send(head("HEAD", "/js/app.js"));
  const Reply file = client.receive(false);
  EXPECT_EQ(file.status, 200);
  EXPECT_EQ(file.header("content-length"), "11");
  EXPECT_EQ(client.ask(head("GET", "/js/app.js", "If-None-Match: " + file.header("etag") + "\r\n")).status, 304);
  EXPECT_EQ(client.ask(head("PUT", "/servlet?p=any")).header("allow"), "GET, HEAD, POST");
  EXPECT_EQ(client.ask(head("DELETE", "/servlet?p=any")).status, 405);
  EXPECT_EQ(client.ask(head("POST", "/js/app.js", "Content-Length: 0\r\n")).header("allow"), "GET, HEAD");
}

TEST_F(ServerTest, GivesFieldsAndBody) {
  behaviour().page = showPage;
  EXPECT_EQ(get("/servlet?p=any&a=1%202").body, "/servlet?p=any&a=1%202 127.0.0.1 null 0 a=1 2 b=null ");
  EXPECT_EQ(post("/servlet?p=any&a=q", kForm, "a=f&b=x+y").body,
            "/servlet?p=any&a=q 127.0.0.1 application/x-www-form-urlencoded 9 a=q b=x y a=f&b=x+y");
  EXPECT_THAT(
      post("/servlet?p=any", kMultipart, "--B\r\nContent-Disposition: form-data; name=\"b\"\r\n\r\nv\r\n--B--").body,
      HasSubstr("a=null b=v --B"));
  EXPECT_EQ(post("/servlet", kForm, "p=any&a=1").body,
            "/servlet 127.0.0.1 application/x-www-form-urlencoded 9 a=1 b=null p=any&a=1");
  Client client(server_->port());
  EXPECT_THAT(client
                  .ask(head("POST", "/servlet?p=any", std::string(kForm) + "Transfer-Encoding: chunked\r\n") +
                       "3\r\na=1\r\n4\r\n&b=2\r\n0\r\n\r\n")
                  .body,
              HasSubstr("7 a=1 b=2 a=1&b=2"));
}

TEST_F(ServerTest, RefusesFormsThatAreTooBigOrHoldANul) {
  behaviour().page = showPage;
  const struct {
    const char* type;
    std::string body;
    int status;
  } kCases[] = {
      {kForm, "a=" + std::string(1024 * 1024 - 2, 'x'), 200},
      {kForm, "a=" + std::string(1024 * 1024 - 1, 'x'), 413},
      {kForm, "a=1&b=x%00y", 400},
      {kMultipart,
       "--B\r\nContent-Disposition: form-data; name=a\r\n\r\n" + std::string(1024 * 1024 + 1, 'x') + "\r\n--B--", 413},
      {kMultipart,
       "--B\r\nContent-Disposition: form-data; name=a\r\n\r\n" + std::string(1024 * 1024, 'x') + "\r\n--B--", 413},
      {kMultipart, "--B\r\nContent-Disposition: form-data; name=a\r\n\r\ncut", 200},
  };
  for (const auto& row : kCases)
    EXPECT_EQ(post("/servlet?p=any", row.type, row.body).status, row.status) << row.body.size();
  const std::string chunk = "100000\r\n" + std::string(0x100000, 'x') + "\r\n";
  const std::string chunked = std::string(kForm) + "Transfer-Encoding: chunked\r\n";
  EXPECT_EQ(Client(server_->port()).ask(head("POST", "/servlet?p=any", chunked) + chunk + chunk + "0\r\n\r\n").status,
            413);
}

TEST_F(ServerTest, KeepsAHandlersHeadersInOnePiece) {
  behaviour().page = [](HttpRequest* request, HttpResponse* response) {
    response->setHeader("X-One", "1\r\nX-Evil: 1");
    response->setHeader("X Two", "2");
    response->addHeader("Content-Length", "9999");
    response->addHeader("X-Three", "3");
    response->addHeader("X-Three", "4");
    response->setHeader(nullptr, nullptr);
    if (request->getParameter("q")) response->sendRedirect("/x\r\nX-Evil: 1 \xe4");
    return 1;
  };
  const Reply reply = get("/servlet?p=any");
  EXPECT_EQ(reply.headers.count("x-evil") + reply.headers.count("x-one") + reply.headers.count("x two"), 0U);
  EXPECT_EQ(reply.headers.count("x-three"), 2U);
  EXPECT_EQ(reply.header("content-length"), "0");
  EXPECT_EQ(get("/servlet?p=any&q=1").header("location"), "/x%0D%0AX-Evil:%201%20%E4");
}

TEST_F(ServerTest, AnswersErrorsAndKeepsWhatWasWritten) {
  behaviour().page = [](HttpRequest* request, HttpResponse* response) {
    const std::string action = orNull(request->getParameter("q"));
    if (action == "body") response->print("%s", "form");
    if (action == "throw") throw 1;
    if (action == "template") response->renderTemplate("/phone/missing.htm", nullptr);
    if (action != "template") response->sendError(action == "odd" ? 99 : 401);
    return 1;
  };
  EXPECT_THAT(get("/servlet?p=any&q=bare").body, HasSubstr("<h1>Unauthorized</h1>"));
  const Reply form = get("/servlet?p=any&q=body");
  EXPECT_EQ(form.status, 401);
  EXPECT_EQ(form.body, "form");
  for (const char* action : {"odd", "throw", "template"})
    EXPECT_EQ(get(std::string("/servlet?p=any&q=") + action).status, 500);
  EXPECT_THAT(log_.text(), HasSubstr("missing.htm:0: cannot be read"));
}

TEST_F(ServerTest, LetsTheFilterAnswer) {
  behaviour().page = [](HttpRequest*, HttpResponse* response) { return response->print("secret"), 1; };
  behaviour().filter = [](HttpRequest* request, HttpResponse* response) {
    if (orNull(request->getParameter("b")) == "in") return 1;
    response->sendRedirect("/login");
    return 0;
  };
  EXPECT_EQ(get("/servlet?p=any").header("location"), "/login");
  EXPECT_EQ(get("/servlet?p=any&b=in").body, "secret");
  // A long body is not looked at before the filter has let the request in.
  const std::string body =
      "--B\r\nContent-Disposition: form-data; name=\"b\"\r\n\r\nin\r\n--B\r\nContent-Disposition: "
      "form-data; name=\"f\"; filename=\"f\"\r\n\r\n" +
      std::string(2'000'000, 'x') + "\r\n--B--";
  EXPECT_EQ(post("/servlet?p=any", kMultipart, body).header("location"), "/login");
  Client waits(server_->port());
  waits.send(
      head("POST", "/servlet?p=any", std::string(kMultipart) + "Expect: 100-continue\r\nContent-Length: 2000000\r\n"));
  EXPECT_EQ(waits.receive().header("location"), "/login");  // without a byte of the body
}

TEST_F(ServerTest, GivesSessions) {
  behaviour().page = [](HttpRequest* request, HttpResponse* response) {
    HttpSession* session = request->getSession(1);
    const std::string action = orNull(request->getParameter("q"));
    if (action == "in") session->setAttribute("user", strdup("admin"));
    if (action == "out") session->invalidate();
    response->print(
        "%s",
        orNull(request->getSession(action != "out") ? request->getSession(1)->getAttribute("user") : nullptr).c_str());
    return 1;
  };
  const auto cookieOf = [](const Reply& reply) { return reply.header("set-cookie").substr(0, 45); };
  const Reply first = get("/servlet?p=any");
  EXPECT_EQ(first.header("set-cookie").substr(45), "; Path=/; HttpOnly; SameSite=Strict");
  const std::string before = "Cookie: " + cookieOf(first) + "\r\n";
  const Reply login = get("/servlet?p=any&q=in", before);
  const std::string after = "Cookie: x=y; " + cookieOf(login) + "\r\n";
  EXPECT_NE(cookieOf(first), cookieOf(login));
  EXPECT_EQ(get("/servlet?p=any", after).body, "admin");
  EXPECT_EQ(get("/servlet?p=any", after).header("set-cookie"), "");
  EXPECT_EQ(get("/servlet?p=any", before).body, "null");
  EXPECT_EQ(get("/servlet?p=any&q=out", after).header("set-cookie"),
            "PHONESESSION=; Path=/; HttpOnly; SameSite=Strict; Max-Age=0");
  EXPECT_EQ(get("/servlet?p=any", after).body, "null");
  EXPECT_EQ(get("/servlet?p=any", "Cookie: PHONESESSION=../../etc\r\n").status, 200);
  EXPECT_THAT(log_.text(), Not(HasSubstr(cookieOf(login).substr(13))));
}

TEST_F(ServerTest, RefusesWhatOtherSitesStart) {
  bool ran = false;
  behaviour().filter = [&](HttpRequest*, HttpResponse*) { return ran = true, 1; };
  for (const char* headers : {"Sec-Fetch-Site: cross-site\r\nSec-Fetch-Mode: no-cors\r\n",
                              "Sec-Fetch-Site: same-site\r\n", "Origin: http://evil\r\n", "Origin: null\r\n"}) {
    EXPECT_EQ(get("/servlet?p=any&q=load", headers).status, 403) << headers;
    EXPECT_EQ(post("/servlet?p=any&q=write", headers, "").status, 403) << headers;
    EXPECT_EQ(get("/js/app.js", headers).status, 200) << headers;
  }
  EXPECT_FALSE(ran);
  const char* link = "Sec-Fetch-Site: cross-site\r\nSec-Fetch-Mode: navigate\r\nSec-Fetch-Dest: document\r\n";
  EXPECT_EQ(get("/servlet?p=any&q=load", link).status, 200);
  EXPECT_EQ(get("/servlet?p=any&q=write", link).status, 403);
  EXPECT_EQ(post("/servlet?p=any&q=load", link, "").status, 403);
}

TEST_F(ServerTest, MountsTheSimulatorForLocalPeopleOnly) {
  host::ServerSettings settings;
  settings.simulator = [](const std::string& method, const std::string& path, const auto& query,
                          const std::string& body) {
    return host::MountReply{201, "text/plain", method + path + query.at("a") + body};
  };
  start(settings);
  const std::string host = "Host: localhost\r\nContent-Length: 2\r\n";
  for (const char* method : {"POST", "PUT", "PATCH", "DELETE"}) {
    const Reply reply =
        Client(server_->port()).ask(std::string(method) + " /simulator/x?a=%31 HTTP/1.1\r\n" + host + "\r\nhi");
    EXPECT_EQ(reply.status, 201);
    EXPECT_EQ(reply.body, std::string(method) + "/simulator/x1hi");
  }
  EXPECT_EQ(Client(server_->port()).ask("GET /simulator/x?a=1 HTTP/1.1\r\nHost: rebound.evil\r\n\r\n").status, 403);
  EXPECT_EQ(post("/simulator/x?a=1", "Origin: http://evil\r\n", "").status, 403);
  EXPECT_EQ(get("/simulator/x?a=1", "Sec-Fetch-Site: cross-site\r\nSec-Fetch-Mode: cors\r\n").status, 403);
  EXPECT_EQ(get("/simulator/x?a=1", "Sec-Fetch-Site: cross-site\r\nSec-Fetch-Mode: navigate\r\n").status, 201);
}

TEST_F(ServerTest, AnswersNothingWhileTheDeviceReboots) {
  std::atomic<bool> rebooting = false;
  std::atomic<std::uint64_t> count = 0;
  host::ServerSettings settings;
  settings.device = {[&] { return rebooting.load(); }, [&] { return count.load(); }};
  start(settings);
  behaviour().page = [](HttpRequest* request, HttpResponse* response) {
    return response->print("%s", orNull(request->getSession(1)->getAttribute("x")).c_str()),
           request->getSession(1)->setAttribute("x", strdup("kept")), 1;
  };
  const std::string cookie = "Cookie: " + get("/servlet?p=any").header("set-cookie").substr(0, 45) + "\r\n";
  EXPECT_EQ(get("/servlet?p=any", cookie).body, "kept");
  rebooting = true;
  ++count;
  EXPECT_EQ(get("/servlet?p=any", cookie).status, 503);
  EXPECT_EQ(get("/servlet?p=any", cookie).header("retry-after"), "2");
  rebooting = false;
  EXPECT_EQ(get("/servlet?p=any", cookie).body, "null");
}

TEST_F(ServerTest, SendsLongAnswersWhole) {
  behaviour().page = [](HttpRequest*, HttpResponse* response) {
    for (int i = 0; i < 200'000; ++i) response->print("%06d\n", i);
    return 1;
  };
  const Reply reply = get("/servlet?p=any");
  EXPECT_EQ(reply.body.size(), 1'400'000U);
  EXPECT_EQ(reply.body.substr(7 * 123'456, 7), "123456\n");
}

TEST_F(ServerTest, StreamsUploadsWithoutHoldingThem) {
  behaviour().page = [](HttpRequest* request, HttpResponse* response) {
    request->setUploadFileTemplate("/tmp/rom_XXXXXX");
    const char** file = request->getParameterValues("f");
    if (!file) return response->print("nothing"), 1;
    const auto size = std::filesystem::file_size(orNull(request->getParameter("root")) + file[0]);
    return response->print("%zu %s %s", static_cast<std::size_t>(size), file[1],
                           orNull(request->getParameter("b")).c_str()),
           1;
  };
  start();
  const std::string front = "--B\r\nContent-Disposition: form-data; name=\"f\"; filename=\"big.rom\"\r\n\r\n";
  const std::string back = "\r\n--B\r\nContent-Disposition: form-data; name=\"b\"\r\n\r\nend\r\n--B--\r\n";
  const std::string piece(1 << 20, 'r');
  const long before = residentKilobytes();
  Client client(server_->port());
  const std::size_t size = front.size() + 60 * piece.size() + back.size();
  client.send(head("POST", "/servlet?p=any&root=" + root_.path().string(),
                   kMultipart + ("Content-Length: " + std::to_string(size)) + "\r\n") +
              front);
  for (int i = 0; i < 60; ++i) ASSERT_TRUE(client.send(piece));
  EXPECT_EQ(client.ask(back).body, "62914560 big.rom end");
  EXPECT_LT(residentKilobytes() - before, 8 * 1024);
  EXPECT_EQ(root_.list("tmp"), std::vector<std::string>{"keep"});
  client.send(head("POST", "/servlet?p=any", "Expect: 100-continue\r\nContent-Length: 67108865\r\n"));
  EXPECT_EQ(client.receive().status, 413);
}

TEST_F(ServerTest, RefusesAnUploadThatOutgrowsItsLimit) {
  behaviour().page = showPage;
  host::ServerSettings settings;
  settings.maxUpload = 3 << 20;
  start(settings);
  const std::string chunk = "100000\r\n" + std::string(0x100000, 'x') + "\r\n";
  const std::string head3 = head("POST", "/servlet?p=any", "Transfer-Encoding: chunked\r\n");
  const Reply fits = Client(server_->port()).ask(head3 + chunk + chunk + chunk + "0\r\n\r\n");
  EXPECT_EQ(fits.status, 200);
  EXPECT_EQ(fits.body.size(), (3U << 20) + std::string("/servlet?p=any 127.0.0.1 null 3145728 a=null b=null ").size());
  EXPECT_EQ(Client(server_->port()).ask(head3 + chunk + chunk + chunk + chunk + "0\r\n\r\n").status, 413);
  // A body that nobody wants passes by, and the connection goes on.
  behaviour().page = [](HttpRequest*, HttpResponse* response) { return response->print("early"), 1; };
  Client client(server_->port());
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(
        client.ask(head("POST", "/servlet?p=any", "Content-Length: 2000000\r\n") + std::string(2'000'000, 'x')).body,
        "early");
  }
}

TEST_F(ServerTest, IsNotHeldUpByClientsThatStall) {
  behaviour().page = [](HttpRequest* request, HttpResponse* response) {
    char byte;
    if (request->getParameter("read")) return response->print("%d", request->read(&byte, 1)), 1;
    return response->print("quick"), 1;
  };
  start();
  std::vector<std::unique_ptr<Client>> stalled;
  for (const char* half : {"", "GET /serv", "GET / HTTP/1.1\r\nHost: x\r\n",
                           "POST /servlet?p=any HTTP/1.1\r\nHost: x\r\nContent-Length: 9\r\n\r\nx",
                           "POST /servlet?p=any HTTP/1.1\r\nHost: x\r\nContent-Length: 9000000\r\n\r\nx"}) {
    for (int i = 0; i < 30; ++i) {
      stalled.push_back(std::make_unique<Client>(server_->port()));
      stalled.back()->send(half);
    }
  }
  EXPECT_EQ(get("/servlet?p=any").body, "quick");
  // A handler that waits for a body stops when the client goes away; until then static files are served beside it.
  Client reader(server_->port());
  reader.send(head("POST", "/servlet?p=any&read=1", "Content-Length: 9000000\r\n"));
  auto behind = std::async(std::launch::async, [&] { return get("/servlet?p=any"); });
  EXPECT_EQ(behind.wait_for(200ms), std::future_status::timeout);
  EXPECT_EQ(get("/js/app.js").status, 200);
  reader.close();
  EXPECT_EQ(behind.wait_for(5s), std::future_status::ready);
}

TEST_F(ServerTest, EndsQuicklyWhateverItIsDoing) {
  behaviour().page = [](HttpRequest* request, HttpResponse*) {
    char byte;
    return request->read(&byte, 1);
  };
  start();
  std::vector<std::unique_ptr<Client>> clients;
  for (const std::size_t sent : {0U, 200'000U, 0U, 200'000U}) {
    clients.push_back(std::make_unique<Client>(server_->port()));
    clients.back()->send(head("POST", "/servlet?p=any", "Content-Length: 9000000\r\n") + std::string(sent, 'x'));
  }
  std::this_thread::sleep_for(100ms);
  const auto began = std::chrono::steady_clock::now();
  EXPECT_TRUE(server_->stop());
  EXPECT_LT(std::chrono::steady_clock::now() - began, 900ms);
  pages_->destroy();
  pages_->destroy();
  EXPECT_EQ(behaviour().destroyed, 1);
}

TEST_F(ServerTest, SurvivesGarbage) {
  behaviour().page = showPage;
  start();
  const std::string nul("GET /servlet?p=any\0 HTTP/1.1\r\nHost: x\r\n\r\n", 41);
  for (const std::string& bytes :
       {std::string(100'000, 'A'), "GET / HTTP/1.1\r\n" + std::string(100'000, 'h'),
        std::string("GET /%%%00%zz?%=& HTTP/1.1\r\nHost: x\r\n\r\n"), nul, std::string("GET  HTTP/9.9\r\n\r\n"),
        std::string("POST /servlet?p=any HTTP/1.1\r\nHost: x\r\nContent-Length: -1\r\n\r\n"),
        std::string("POST /servlet?p=any HTTP/1.1\r\nHost: x\r\nContent-Length: 99999999999999999999\r\n\r\n"),
        std::string("POST /servlet?p=any HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n"),
        std::string("POST /servlet?p=any HTTP/1.1\r\nHost: x\r\nContent-Type: multipart/form-data\r\nContent-Length: "
                    "3\r\n\r\n--B")}) {
    Client client(server_->port());
    client.send(bytes);
    client.finish();
    const int status = client.receive().status;
    EXPECT_TRUE(status == 0 || status == 200 || status >= 400) << bytes.substr(0, 60);
  }
  EXPECT_EQ(get("/servlet?p=any").status, 200);
}

}  // namespace
}  // namespace host_test
