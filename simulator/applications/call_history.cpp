#include "simulator/applications/call_history.h"

#include <algorithm>
#include <iterator>

#include "platform/log.h"
#include "platform/phone_root.h"
#include "simulator/files.h"
#include "simulator/xml_file.h"

namespace simulator {
namespace {

constexpr char kFile[] = "/config/data/call_data.xml";
constexpr char kRoot[] = "root_call";
constexpr std::ptrdiff_t kMaxCalls = 400;
constexpr int kLogModule = 2;

// What people wrote into the file beside calls is kept.
constexpr unsigned kReadOptions = pugi::parse_default | pugi::parse_comments | pugi::parse_pi;

void save(const pugi::xml_document& document) {
  if (!replaceXml(phonePath(kFile), xmlText(document)))
    log_log(kLogModule, 3, "call history: cannot write %s\n", kFile);
}

void dropOldest(pugi::xml_node& root) {
  const auto calls = root.children("item");
  for (auto count = std::distance(calls.begin(), calls.end()); count > kMaxCalls; --count) {
    root.remove_child(root.child("item"));
  }
}

}  // namespace

void writeCallHistory() {
  if (fileStamp(phonePath(kFile))) return;
  pugi::xml_document document;
  newXml(document, kRoot);
  save(document);
}

void addPlacedCall(const Phone& phone, int account, const std::string& target) {
  pugi::xml_document document;
  pugi::xml_node root = readXml(kFile, document, kReadOptions);
  if (!root) root = newXml(document, kRoot);
  const std::size_t at = std::min(target.rfind('@'), target.size());
  pugi::xml_node call = root.append_child("item");
  call.append_attribute("type") = "1";
  call.append_attribute("local_sip_name") = phone.config.get(accountConfigName("AccountUserName", account)).c_str();
  call.append_attribute("local_sip_server") = sipServer(phone.config, account).c_str();
  call.append_attribute("remote_sip_name") = target.substr(0, at).c_str();
  call.append_attribute("remote_sip_server") = target.substr(std::min(at + 1, target.size())).c_str();
  call.append_attribute("born_tick") = static_cast<long long>(phone.state.time());
  dropOldest(root);
  save(document);
}

}  // namespace simulator
