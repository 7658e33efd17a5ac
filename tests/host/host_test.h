// A server in this process with pages of the tests' own, and a client that sends what it is told, byte for byte.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "host/server.h"

namespace host_test {

// Collects log lines while it lives.
class LogCapture {
 public:
  LogCapture();
  ~LogCapture();
  std::string text() const;

 private:
  mutable std::mutex mutex_;
  std::string text_;
};

// A folder that is gone with it.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  const std::filesystem::path& path() const { return path_; }
  void write(const std::string& file, std::string_view content) const;
  std::string read(const std::string& file) const;
  // Names of the files in a folder.
  std::vector<std::string> list(const std::string& folder) const;

 private:
  std::filesystem::path path_;
};

struct Reply {
  int status = 0;                                   // 0: the connection was closed without an answer
  std::multimap<std::string, std::string> headers;  // names in lower case
  std::string body;

  std::string header(const std::string& name) const;  // the first, or empty
};

// One connection.
class Client {
 public:
  explicit Client(std::uint16_t port);
  ~Client();
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  bool send(std::string_view bytes);
  Reply receive(bool hasBody = true);
  Reply ask(std::string_view bytes) { return send(bytes) ? receive() : Reply(); }
  void finish();  // nothing more will be sent
  void close();

 private:
  bool fill();
  int socket_;
  std::string buffer_;
};

using Page = std::function<int(HttpRequest*, HttpResponse*)>;

// What the page "any" and the filter do; the filter lets everything in unless told otherwise.
struct Behaviour {
  Page page, filter;
  int destroyed = 0;
};
Behaviour& behaviour();

class ServerTest : public ::testing::Test {
 protected:
  ServerTest();
  void start(host::ServerSettings settings = {});
  // GET, or POST when there is a body, on a connection of its own; `headers` are whole lines with their line ends.
  Reply get(const std::string& target, const std::string& headers = "");
  Reply post(const std::string& target, const std::string& headers, std::string_view body);
  std::string head(const std::string& method, const std::string& target, const std::string& headers = "");

  LogCapture log_;
  TempFolder root_;
  std::unique_ptr<host::PageTable> pages_;
  std::unique_ptr<host::Server> server_;
};

}  // namespace host_test
