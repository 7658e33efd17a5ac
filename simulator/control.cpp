#include <nlohmann/json.hpp>
#include <optional>

#include "simulator/applications/network_directories.h"
#include "simulator/number.h"
#include "simulator/phone.h"
#include "simulator/simulator.h"
#include "simulator/web_files.h"

namespace simulator {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

struct Request {
  const std::string& method;
  const std::map<std::string, std::string>& query;
  const std::string& body;
};

ControlReply jsonReply(const ordered_json& value, int status = 200) {
  return {status, "application/json", value.dump(-1, ' ', false, ordered_json::error_handler_t::replace)};
}

ControlReply errorReply(int status, const std::string& text) {
  return jsonReply({{"error", text}}, status);
}

ControlReply wrongMethod(const Request& request) {
  return errorReply(405, "no method " + request.method + " here");
}

std::optional<std::string> queryField(const Request& request, const std::string& name) {
  const auto found = request.query.find(name);
  return found != request.query.end() ? std::optional(found->second) : std::nullopt;
}

ControlReply journal(const Request& request) {
  if (request.method == "DELETE") {
    const std::lock_guard lock(phone().mutex);
    phone().journal.clear();
    return jsonReply(ordered_json::object());
  }
  if (request.method != "GET") return wrongMethod(request);
  const auto since = decimalNumber<std::uint64_t>(queryField(request, "since").value_or("0"));
  if (!since) return errorReply(400, "\"since\" is to be a sequence number");
  std::unique_lock lock(phone().mutex);
  const std::vector<JournalEntry> entries = phone().journal.entriesAfter(*since);
  lock.unlock();
  return jsonReply(journalJson(entries));
}

ControlReply state(const Request& request) {
  if (request.method != "GET" && request.method != "PATCH") return wrongMethod(request);
  if (request.method == "PATCH") {
    if (const auto error = setState(request.body)) return errorReply(400, *error);
  }
  const std::lock_guard lock(phone().mutex);
  return jsonReply(phone().state.json());
}

ControlReply readConfig(const Request& request) {
  const auto key = queryField(request, "key");
  if (!key) return errorReply(400, "\"key\" is missing");
  const auto accountText = queryField(request, "account");
  const auto account = accountText ? decimalNumber(*accountText) : std::nullopt;
  if (accountText && !account) return errorReply(400, "\"account\" is to be the number of an account");
  const std::lock_guard lock(phone().mutex);
  takeNetworkDirectories(phone());
  phone().config.reloadIfChanged();
  return jsonReply({{"value", phone().config.get(account ? accountConfigName(*key, *account) : *key)}});
}

// Gathers the values of one object {"KEY":"value"}; the text of an error names the key.
std::optional<std::string> gather(const json& values, const std::string& path, std::optional<int> account,
                                  ConfigStore::Values& result) {
  if (!values.is_object()) return "\"" + path + "\" is to be an object";
  for (const auto& [key, value] : values.items()) {
    const bool isText = value.is_string() && value.get_ref<const std::string&>().find('\0') == std::string::npos;
    if (!isText || key.find('\0') != std::string::npos) {
      return "\"" + path + "." + key + "\" is to be a text without NUL";
    }
    result.emplace_back(account ? accountConfigName(key, *account) : key, value.get<std::string>());
  }
  return {};
}

std::optional<std::string> gatherAccounts(const json& accounts, ConfigStore::Values& result) {
  if (!accounts.is_object()) return "\"accounts\" is to be an object";
  for (const auto& [number, values] : accounts.items()) {
    const auto account = decimalNumber(number);
    if (!account) return "\"accounts." + number + "\" is not the number of an account";
    if (auto error = gather(values, "accounts." + number, account, result)) return error;
  }
  return {};
}

std::optional<std::string> gatherAll(const json& body, ConfigStore::Values& result) {
  if (!body.is_object()) return "the body is to be an object";
  for (const auto& [name, values] : body.items()) {
    std::optional<std::string> error = "\"" + name + "\" is not known";
    if (name == "global") error = gather(values, name, std::nullopt, result);
    if (name == "accounts") error = gatherAccounts(values, result);
    if (error) return error;
  }
  return {};
}

ControlReply writeConfig(const Request& request) {
  const json body = json::parse(request.body, nullptr, false);
  if (body.is_discarded()) return errorReply(400, "the body is not JSON");
  ConfigStore::Values values;
  if (const auto error = gatherAll(body, values)) return errorReply(400, *error);
  const std::lock_guard lock(phone().mutex);
  phone().config.set(values);
  for (const auto& [name, value] : values) {
    if (phone().config.get(name) != value) return errorReply(500, "the values could not be written");
  }
  return jsonReply({{"stored", values.size()}});
}

ControlReply config(const Request& request) {
  if (request.method == "GET") return readConfig(request);
  return request.method == "PUT" ? writeConfig(request) : wrongMethod(request);
}

ControlReply reboot(const Request& request) {
  if (request.method != "POST") return wrongMethod(request);
  const std::lock_guard lock(phone().mutex);
  phone().reboot("control");
  return jsonReply({{"seconds", phone().state.rebootSeconds}});
}

template <const WebFile& kFile>
ControlReply file(const Request& request) {
  if (request.method != "GET") return wrongMethod(request);
  return {200, kFile.contentType, std::string(kFile.bytes)};
}

struct Address {
  std::string_view path;
  ControlReply (*answer)(const Request& request);
};
constexpr Address kAddresses[] = {
    {"/simulator/", file<kPageFile>},
    {"/simulator/simulator.css", file<kStyleFile>},
    {"/simulator/simulator.js", file<kScriptFile>},
    {"/simulator/journal", journal},
    {"/simulator/state", state},
    {"/simulator/config", config},
    {"/simulator/reboot", reboot},
};

ControlReply answer(const std::string& path, const Request& request) {
  for (const Address& address : kAddresses) {
    if (address.path == path) return address.answer(request);
  }
  return errorReply(404, "nothing at " + path);
}

}  // namespace

std::optional<std::string> setState(const std::string& text) {
  const std::lock_guard lock(phone().mutex);
  return phone().patchState(text);
}

ControlReply control(const std::string& method, const std::string& path,
                     const std::map<std::string, std::string>& query, const std::string& body) {
  static const std::string kGet = "GET";
  try {
    return answer(path, {method == "HEAD" ? kGet : method, query, body});
  } catch (const std::exception& error) {
    return errorReply(500, error.what());
  }
}

}  // namespace simulator
