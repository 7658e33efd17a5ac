// What a load and a save cost inside the module, and filling and rendering a template apart from it.
#include <benchmark/benchmark.h>

#include <memory>

#include "host/spool_buffer.h"
#include "host/template_renderer.h"
#include "servlet/account_register_servlet.h"
#include "servlet/features_acd_servlet.h"
#include "servlet/network_pcport_servlet.h"
#include "servlet/network_servlet.h"
#include "servlet/status_servlet.h"
#include "simulator/simulator.h"
#include "tests/support/phone_test.h"

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

FakeRequest requestFor(const char* action, std::multimap<std::string, std::string> fields) {
  FakeRequest request;
  request.fields = std::move(fields);
  request.fields.emplace("q", action);
  request.ownSession.attributes["user"] = "admin";
  return request;
}

using Fields = std::multimap<std::string, std::string>;

// The handler alone: reading the settings and building the template's list.
template <class Page>
void load(benchmark::State& state, const Fields& fields) {
  phoneRoot();
  Page page;
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
template <class Page>
void save(benchmark::State& state, Fields fields, const char* changing) {
  phoneRoot();
  Page page;
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
template <class Page>
void render(benchmark::State& state, const Fields& fields) {
  const std::filesystem::path root = phoneRoot();
  Page page;
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
template <class Page>
void add(const std::string& name, const Fields& fields, const char* changing) {
  benchmark::RegisterBenchmark(("load/" + name).c_str(), load<Page>, fields);
  benchmark::RegisterBenchmark(("render/" + name).c_str(), render<Page>, fields);
  if (changing) benchmark::RegisterBenchmark(("save/" + name).c_str(), save<Page>, fields, changing);
}

}  // namespace

int main(int argc, char** argv) {
  add<FeaturesACDServlet>("features-acd", {}, "ACDAutoAvailableTime");
  add<NetworkServlet>("network", {}, "NetworkPppoeUser");
  add<NetworkPCPortServlet>("network-pcport", {}, "NetworkLanRouterIP");
  add<AccountRegisterServlet>("account-register", {{"acc", "0"}, {"var_accountID", "0"}}, "AccountLabel");
  add<StatusServlet>("status", {}, nullptr);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
