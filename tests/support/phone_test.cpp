#include "tests/support/phone_test.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "simulator/simulator.h"

using nlohmann::json;

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "phone_web_XXXXXX").string();
  path_ = mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

PhoneTest::PhoneTest() {
  simulator::setLogSink([this](int, int level, std::string_view line) {
    log.push_back(std::to_string(level) + " " + std::string(line));
  });
  simulator::prepareRoot(root_.path() / "phone", PHONE_WEB_ROOTFS);
  simulator::start(root_.path() / "phone");
}

PhoneTest::~PhoneTest() {
  simulator::setLogSink(nullptr);
}

namespace {

json control(const std::string& method, const std::string& path, const std::map<std::string, std::string>& query,
             const std::string& body) {
  const simulator::ControlReply reply = simulator::control(method, path, query, body);
  EXPECT_EQ(reply.status, 200) << method << ' ' << path << ": " << reply.body;
  return json::parse(reply.body, nullptr, false);
}

std::string line(const json& entry) {
  const std::string kind = entry.at("kind");
  if (kind == "system")
    return "system " + entry.at("call").get<std::string>() + " " + entry.at("text").get<std::string>();
  char message[16];
  std::snprintf(message, sizeof message, "0x%x", entry.at("message").get<unsigned>());
  const std::string thread = entry.at("thread");
  std::string text = kind + (thread.empty() ? "" : " " + thread) + " " + message + " " +
                     std::to_string(entry.at("wParam").get<int>()) + " " +
                     std::to_string(entry.at("lParam").get<int>());
  const std::string data = entry.at("data");
  return data.empty() ? text : text + " [" + data + "]";
}

}  // namespace

void PhoneTest::setConfig(const char* key, const std::string& value) {
  control("PUT", "/simulator/config", {}, json{{"global", {{key, value}}}}.dump());
}

void PhoneTest::setConfig(const char* key, int account, const std::string& value) {
  control("PUT", "/simulator/config", {}, json{{"accounts", {{std::to_string(account), {{key, value}}}}}}.dump());
}

std::string PhoneTest::config(const char* key) {
  return control("GET", "/simulator/config", {{"key", key}}, "").at("value");
}

std::string PhoneTest::config(const char* key, int account) {
  return control("GET", "/simulator/config", {{"key", key}, {"account", std::to_string(account)}}, "").at("value");
}

void PhoneTest::setState(std::string_view state) {
  control("PATCH", "/simulator/state", {}, std::string(state));
}

std::vector<std::string> PhoneTest::messages() {
  const json journal = control("GET", "/simulator/journal", {{"since", std::to_string(seen_)}}, "");
  std::vector<std::string> lines;
  for (const json& entry : journal.at("entries")) {
    seen_ = entry.at("seq");
    lines.push_back(line(entry));
  }
  return lines;
}

std::filesystem::path PhoneTest::file(std::string_view phonePath) const {
  return root_.path() / "phone" / phonePath.substr(1);
}

std::string PhoneTest::content(std::string_view phonePath) const {
  std::ifstream stream(file(phonePath), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void PhoneTest::write(std::string_view phonePath, std::string_view text) const {
  std::filesystem::create_directories(file(phonePath).parent_path());
  std::ofstream(file(phonePath), std::ios::binary) << text;
}
