// What a load and a save cost inside the module, and filling and rendering a template apart from it.
#include <benchmark/benchmark.h>

#include <memory>

#include "host/spool_buffer.h"
#include "host/template_renderer.h"
#include "simulator/simulator.h"
#include "tests/support/page_test.h"

namespace {

// Takes everything and keeps nothing.
class NullResponse : public HttpResponse {
 public:
  void setContentType(const char*) override {}
  void setHeader(const char*, const char*) override {}
  void addHeader(const char*, const char*) override {}
  void sendRedirect(const char*) override {}
  void sendError(int) override {}
  void print(const char*, ...) override __attribute__((format(printf, 2, 3))) {}
  void write(const void*, int, int) override {}
  void putChar(int) override {}
  void renderTemplate(const char* templatePath, TMPL_varlist* templateList) override {
    path = templatePath;
    list = templateList;
  }
  void setPhoneType(const char*) override {}

  const char* path = nullptr;
  TMPL_varlist* list = nullptr;
};

std::filesystem::path phoneRoot() {
  static const TemporaryFolder folder;
  static const bool started = [] {
    simulator::setLogSink([](int, int, std::string_view) {});
    simulator::prepareRoot(folder.path() / "phone", PHONE_WEB_ROOTFS);
    simulator::start(folder.path() / "phone");
    return true;
  }();
  benchmark::DoNotOptimize(started);
  return folder.path() / "phone";
}

FakeRequest requestFor(const char* action, Fields fields) {
  FakeRequest request;
  request.fields = std::move(fields);
  request.fields.emplace("q", action);
  request.ownSession.attributes["user"] = "admin";
  return request;
}

// The handler alone: reading the settings and building the template's list.
void load(benchmark::State& state, const std::string& name, const Fields& fields) {
  phoneRoot();
  HttpServlet& page = pageHandler(name);
  FakeRequest request = requestFor("load", fields);
  request.session = &request.ownSession;
  for (auto _ : state) {
    const TemplateArena arena;
    NullResponse response;
    page.onRequest(&request, &response);
    benchmark::DoNotOptimize(response.list);
  }
}

// Storing one changed field, down to the file.
void save(benchmark::State& state, const std::string& name, Fields fields, const char* changing) {
  phoneRoot();
  HttpServlet& page = pageHandler(name);
  int value = 0;
  for (auto _ : state) {
    const TemplateArena arena;
    fields.erase(changing);
    fields.emplace(changing, std::to_string(++value % 100));
    FakeRequest request = requestFor("write", fields);
    request.session = &request.ownSession;
    NullResponse response;
    page.onRequest(&request, &response);
  }
}

// The template alone: filling it from a list that stands, and rendering.
void render(benchmark::State& state, const std::string& name, const Fields& fields) {
  const std::filesystem::path root = phoneRoot();
  HttpServlet& page = pageHandler(name);
  const TemplateArena arena;
  FakeRequest request = requestFor("load", fields);
  request.session = &request.ownSession;
  NullResponse response;
  page.onRequest(&request, &response);
  host::TemplateRenderer renderer(root);
  const host::PageContext context{"English", "46", "page", nullptr};
  std::size_t bytes = 0;
  for (auto _ : state) {
    host::SpoolBuffer html(1 << 20, "/tmp");
    renderer.render(response.path, response.list, context, html);
    bytes = html.size();
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}

// One page in all three ways; `changing` is the field that each save changes.
void add(const std::string& name, const Fields& fields, const char* changing) {
  benchmark::RegisterBenchmark(("load/" + name).c_str(), load, name, fields);
  benchmark::RegisterBenchmark(("render/" + name).c_str(), render, name, fields);
  if (changing) benchmark::RegisterBenchmark(("save/" + name).c_str(), save, name, fields, changing);
}

}  // namespace

int main(int argc, char** argv) {
  add("features-acd", {}, "ACDAutoAvailableTime");
  add("network", {}, "NetworkPppoeUser");
  add("network-pcport", {}, "NetworkLanRouterIP");
  const Fields kAccount{{"acc", "0"}, {"var_accountID", "0"}};
  add("account-register", kAccount, "AccountLabel");
  add("status", {}, nullptr);
  add("features-forward", {{"ForwardMode", "0"}}, "BusyForwardTarget");
  add("features-general", {}, "HotlineNumber");
  add("features-audio", {}, "RingerDevice");
  add("features-intercom", {}, "IntercomToneSwitch");
  add("features-transfer", {}, "TransferModeViaDsskey");
  add("features-callpickup", {}, "GPickupCode");
  add("features-remotecontrl", {}, "PushXMLServerIP");
  add("features-phonelock", {}, "LockTimeout");
  add("features-actionurl", {}, "AUMute");
  add("features-bluetooth", {}, "BluetoothSwitch");
  add("account-basic", kAccount, "AccountProxyRequire");
  add("account-codec", kAccount, nullptr);
  add("account-adv", kAccount, "AccountPtime");
  add("settings-ring", {}, "Text");
  add("settings-voice", {{"JitterType", "1"}}, "JitterMin");
  add("settings-tones", {}, "ToneDial");
  add("settings-areacode", {}, "AreaCode");
  add("settings-autop", {{"now", "false"}}, "AutoProvisionUser");
  add("settings-tr069", {}, "TR069ServerURL");
  add("contacts-multicastIP", {}, "ListenAddress1Label");
  add("security", {}, nullptr);
  add("hidden", {}, "HeadsetSend");
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
