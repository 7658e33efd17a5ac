// Action URIs. Input: the trust list, the client's address and, behind a "!" the rewriting of key commands is on with,
// the query, a line each.
#include <nlohmann/json.hpp>

#include "fuzz/phone.h"
#include "fuzz/require.h"
#include "host/fields.h"
#include "platform/config_parser.h"
#include "servlet/action_uri.h"
#include "servlet/trusted_clients.h"
#include "simulator/simulator.h"
#include "tests/support/fake_http.h"

namespace {

std::string word(std::string_view& input) {
  const std::string text(takeUpTo(input, '\n'));
  return text.substr(0, text.find('\0'));
}

nlohmann::json takeJournal() {
  const auto reply = simulator::control("GET", "/simulator/journal", {}, "");
  simulator::control("DELETE", "/simulator/journal", {}, "");
  return nlohmann::json::parse(reply.body).at("entries");
}

void checkMessages(const nlohmann::json& entries, bool trusted) {
  for (const auto& entry : entries) {
    if (entry.at("kind") == "system") continue;
    require(trusted, "nobody but a trusted client commands the phone");
    require(entry.at("thread") == "app_hostapp", "commands go to the phone application");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzzedPhone();
  std::string_view input = inputText(data, size);
  const std::string trustList = word(input), address = word(input);
  const bool rewritten = input.starts_with('!');
  if (rewritten) input.remove_prefix(1);
  const std::string query = word(input);
  configParser_SetConfigString("AURILimitIP", trustList.c_str());
  configParser_SetConfigString("ISUME", rewritten ? "1" : "0");
  takeJournal();

  FakeRequest request;
  request.address = address;
  request.uri = "/servlet?" + query;
  host::Fields fields;
  parseUrlEncoded(query, fields);
  for (const auto& field : fields.all()) request.fields.emplace(field.name, field.values[0]);
  RecordingResponse response;
  const std::string_view type = getURIType(query);
  const bool trusted = IsTrustIP(address.c_str());
  const int result = proccessActionURI(&request, &response, type, query);
  const int refusal = type.empty() ? 404 : 401;
  require((!type.empty() && trusted) == (response.status == 200), "only a trusted client's command is taken");
  require(response.status == 200 || (response.status == refusal && result == 0), "the refusal says why");
  checkMessages(takeJournal(), trusted && !type.empty());
  return 0;
}
