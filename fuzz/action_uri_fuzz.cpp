// Action URIs. Input: the trust list, the client's address and, behind a "!" the rewriting of key commands is on with,
// the query, a line each.
#include <nlohmann/json.hpp>

#include "fuzz/phone.h"
#include "host/fields.h"
#include "platform/config_parser.h"
#include "servlet/access/action_uri.h"
#include "servlet/access/trusted_clients.h"
#include "simulator/simulator.h"
#include "tests/support/fake_http.h"

namespace {

void checkMessages(bool trusted) {
  const auto journal = nlohmann::json::parse(simulator::control("GET", "/simulator/journal", {}, "").body);
  for (const auto& entry : journal.at("entries")) {
    if (entry.at("kind") == "system") continue;
    require(trusted, "nobody but a trusted client commands the phone");
    require(entry.at("thread") == "app_hostapp", "commands go to the phone application");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzzedPhone();
  std::string_view input = inputText(data, size);
  const std::string trustList = takeLine(input), address = takeLine(input);
  const bool rewritten = input.starts_with('!');
  if (rewritten) input.remove_prefix(1);
  const std::string query = takeLine(input);
  configParser_SetConfigString("AURILimitIP", trustList.c_str());
  configParser_SetConfigString("ISUME", rewritten ? "1" : "0");
  simulator::control("DELETE", "/simulator/journal", {}, "");

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
  checkMessages(trusted && !type.empty());
  return 0;
}
