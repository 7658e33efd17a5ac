#include "tests/support/phone_test.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "simulator/simulator.h"

using nlohmann::json;

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (fs::temp_directory_path() / "phone_web_XXXXXX").string();
  path_ = fs::canonical(mkdtemp(pattern.data()));
}

std::string TemporaryFolder::content(const std::string& file) const {
  std::ifstream stream(path_ / file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void TemporaryFolder::write(const std::string& file, std::string_view content) const {
  fs::create_directories((path_ / file).parent_path());
  std::ofstream(path_ / file, std::ios::binary) << content;
}

std::vector<std::string> TemporaryFolder::list(const std::string& folder) const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(path_ / folder)) names.push_back(entry.path().filename());
  return names;
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

json control(const std::string& method, const std::string& path, const Values& query, const std::string& body) {
  const simulator::ControlReply reply = simulator::control(method, path, query, body);
  EXPECT_EQ(reply.status, 200) << method << ' ' << path << ": " << reply.body;
  return json::parse(reply.body, nullptr, false);
}

std::pair<std::string, std::string> keyAndAccount(const std::string& name) {
  const std::size_t at = std::min(name.find('@'), name.size());
  return {name.substr(0, at), name.substr(std::min(at + 1, name.size()))};
}

std::string line(const json& entry) {
  const std::string kind = entry.at("kind");
  if (kind == "system")
    return "system " + entry.at("call").get<std::string>() + " " + entry.at("text").get<std::string>();
  std::ostringstream text;
  const std::string thread = entry.at("thread"), data = entry.at("data");
  text << kind << (thread.empty() ? "" : " ") << thread << " 0x" << std::hex << entry.at("message").get<unsigned>()
       << " " << entry.at("wParam") << " " << entry.at("lParam") << (data.empty() ? "" : " [" + data + "]");
  return text.str();
}

}  // namespace

void PhoneTest::setConfig(const std::string& name, const std::string& value) {
  const auto [key, account] = keyAndAccount(name);
  json body;
  (account.empty() ? body["global"] : body["accounts"][account])[key] = value;
  control("PUT", "/simulator/config", {}, body.dump());
}

void PhoneTest::setConfig(const std::string& values) {
  for (const auto& [name, value] : fieldsOf(values)) setConfig(name, value);
}

std::string PhoneTest::config(const std::string& keys) {
  return joinedValues(keys, [](const std::string& name) {
    const auto [key, account] = keyAndAccount(name);
    Values query{{"key", key}};
    if (!account.empty()) query["account"] = account;
    return control("GET", "/simulator/config", query, "").at("value").get<std::string>();
  });
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

std::string PhoneTest::everythingStored() const {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(file("/"))) {
    const std::string path = "/" + entry.path().lexically_relative(file("/")).string();
    files[path] = entry.is_regular_file() ? content(path) : "";
  }
  std::string all;
  for (const auto& [path, bytes] : files) all += path + "\n" + bytes + "\n";
  return all;
}
