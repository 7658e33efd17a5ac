#include "tests/host/host_test.h"

#include <netinet/in.h>
#include <signal.h>

#include <algorithm>
#include <sstream>

namespace host_test {

void LogCapture::add(std::string_view line) {
  const std::lock_guard lock(mutex_);
  text_.append(line).append("\n");
}

std::string LogCapture::text() const {
  const std::lock_guard lock(mutex_);
  return text_;
}

std::shared_ptr<void> lowLimit(__rlimit_resource resource, rlim_t limit) {
  ::signal(SIGXFSZ, SIG_IGN);
  rlimit before;
  ::getrlimit(resource, &before);
  const rlimit low{limit, before.rlim_max};
  ::setrlimit(resource, &low);
  return {nullptr, [resource, before](void*) { ::setrlimit(resource, &before); }};
}

Client::Client(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{AF_INET, htons(port), {htonl(INADDR_LOOPBACK)}, {}};
  const timeval patience{30, 0};
  ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  if (::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) close();
}

bool Client::send(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool Client::fill() {
  char piece[65536];
  const ssize_t count = ::recv(socket_, piece, sizeof piece, 0);
  if (count > 0) buffer_.append(piece, static_cast<std::size_t>(count));
  return count > 0;
}

Reply Client::receive(bool hasBody) {
  Reply reply;
  std::size_t end;
  while ((end = buffer_.find("\r\n\r\n")) == std::string::npos) {
    if (!fill()) return reply;
  }
  std::istringstream head(buffer_.substr(0, end));
  buffer_.erase(0, end + 4);
  std::string line;
  head >> line >> reply.status;
  std::getline(head, line);
  while (std::getline(head, line)) {
    const std::size_t colon = std::min(line.find(": "), line.size());
    std::transform(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(colon), line.begin(), ::tolower);
    reply.headers.emplace(line.substr(0, colon), line.substr(colon + 2, line.find('\r') - colon - 2));
  }
  if (reply.status == 100) return receive(hasBody);
  const std::size_t length = hasBody ? std::strtoul(reply.header("content-length").c_str(), nullptr, 10) : 0;
  while (buffer_.size() < length && fill()) continue;
  reply.body = buffer_.substr(0, length);
  buffer_.erase(0, length);
  return reply;
}

std::string part(const std::string& parameters, std::string_view value) {
  return "--B\r\nContent-Disposition: form-data; " + parameters + "\r\n\r\n" + std::string(value) + "\r\n";
}

namespace {
class TestFilter final : public HttpListener {
  int onRequest(HttpRequest* request, HttpResponse* response) override {
    return behaviour.filter ? behaviour.filter(request, response) : 1;
  }
};

class TestPage final : public HttpServlet {
  int onRequest(HttpRequest* request, HttpResponse* response) override {
    if (behaviour.page) behaviour.page(request, response);
    return 1;
  }
  int destory() override { return ++behaviour.destroyed; }
};

void* findFactory(const std::string& name) {
  static TestFilter filter;
  static TestPage page;
  if (name == "createLoginListener") return reinterpret_cast<void*>(+[]() -> HttpListener* { return &filter; });
  return name == "createAnyServlet" ? reinterpret_cast<void*>(+[]() -> HttpServlet* { return &page; }) : nullptr;
}
}  // namespace

ServerTest::ServerTest() {
  behaviour = {};
  root_.write("pages.conf", "# pages\nany = createAnyServlet\ngone = createGoneServlet\n");
  root_.write("phone/www/htdocs/js/app.js", "let a = 1;\n");
  root_.write("tmp/keep", "");
}

void ServerTest::start() {
  pages_ = std::make_unique<host::PageTable>(root_.path() / "pages.conf", findFactory);
  settings_.root = root_.path();
  server_ = std::make_unique<host::Server>(*pages_, settings_);
}

std::string ServerTest::head(const std::string& method, const std::string& target, const std::string& headers) {
  if (!server_) start();
  return method + " " + target + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port()) + "\r\n" + headers + "\r\n";
}

Reply ServerTest::post(const std::string& target, const std::string& headers, std::string_view body) {
  const std::string length = "Content-Length: " + std::to_string(body.size()) + "\r\n";
  return ask(head("POST", target, headers + length).append(body));
}

}  // namespace host_test
