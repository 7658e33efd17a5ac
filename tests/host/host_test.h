// A server in this process with pages of the tests' own, and a client that sends what it is told, byte for byte.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "host/log.h"
#include "host/page_table.h"
#include "host/server.h"
#include "tests/support/phone_test.h"

namespace host_test {

// Collects log lines while it lives.
class LogCapture {
 public:
  LogCapture() {
    host::setLogSink([this](std::string_view line) { add(line); });
  }
  ~LogCapture() { host::setLogSink(nullptr); }
  std::string text() const;

 private:
  void add(std::string_view line);
  mutable std::mutex mutex_;
  std::string text_;
};

// A lower limit of the system while the result lives (RLIMIT_FSIZE: the disk is full at that size).
[[nodiscard]] std::shared_ptr<void> lowLimit(__rlimit_resource resource, rlim_t limit);

struct Reply {
  int status = 0;                                   // 0: the connection was closed without an answer
  std::multimap<std::string, std::string> headers;  // names in lower case
  std::string body;

  // The first of the name, or empty.
  std::string header(const std::string& name) const { return headers.count(name) ? headers.find(name)->second : ""; }
};

// One connection.
class Client {
 public:
  explicit Client(std::uint16_t port);
  ~Client() { close(); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  bool send(std::string_view bytes);
  Reply receive(bool hasBody = true);
  Reply ask(std::string_view bytes) { return send(bytes) ? receive() : Reply(); }
  void close() { ::close(std::exchange(socket_, -1)); }

 private:
  bool fill();
  int socket_;
  std::string buffer_;
};

constexpr const char* kForm = "Content-Type: application/x-www-form-urlencoded\r\n";

// A part of a multipart form whose boundary is "B"; "--B--" ends the form.
std::string part(const std::string& parameters, std::string_view value);

using Page = std::function<void(HttpRequest*, HttpResponse*)>;

// What the page "any" and the filter do; the filter lets everything in unless told otherwise.
struct Behaviour {
  Page page;
  std::function<int(HttpRequest*, HttpResponse*)> filter;
  int destroyed = 0;
};
inline Behaviour behaviour;

class ServerTest : public ::testing::Test {
 protected:
  ServerTest();
  // The server is there from the first request on, unless a test starts it itself.
  void start();
  // GET, or POST with a body, on a connection of its own; `headers` are whole lines with their line ends.
  Reply get(const std::string& target, const std::string& headers = "") { return ask(head("GET", target, headers)); }
  Reply post(const std::string& target, const std::string& headers, std::string_view body);
  std::string head(const std::string& method, const std::string& target, const std::string& headers = "");
  // Sends the bytes on a connection of their own.
  Reply ask(std::string_view bytes) { return Client(port()).ask(bytes); }
  std::uint16_t port() const { return server_->listening()[0].port; }

  LogCapture log_;
  TemporaryFolder root_;
  host::ServerSettings settings_;
  std::unique_ptr<host::PageTable> pages_;
  std::unique_ptr<host::Server> server_;
};

}  // namespace host_test
