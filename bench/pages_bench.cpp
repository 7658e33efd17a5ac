// What a load and a save cost inside the module, and filling and rendering a template apart from it.
#include <benchmark/benchmark.h>

#include <memory>

#include "host/spool_buffer.h"
#include "host/template_renderer.h"
#include "servlet/account/account_adv_servlet.h"
#include "servlet/account/account_basic_servlet.h"
#include "servlet/account/account_codec_servlet.h"
#include "servlet/account/account_register_servlet.h"
#include "servlet/contacts/contacts_multicast_ip_servlet.h"
#include "servlet/features/features_acd_servlet.h"
#include "servlet/features/features_actionurl_servlet.h"
#include "servlet/features/features_audio_servlet.h"
#include "servlet/features/features_bluetooth_servlet.h"
#include "servlet/features/features_callpickup_servlet.h"
#include "servlet/features/features_forward_servlet.h"
#include "servlet/features/features_general_servlet.h"
#include "servlet/features/features_intercom_servlet.h"
#include "servlet/features/features_phonelock_servlet.h"
#include "servlet/features/features_remote_contrl_servlet.h"
#include "servlet/features/features_transfer_servlet.h"
#include "servlet/network/network_pcport_servlet.h"
#include "servlet/network/network_servlet.h"
#include "servlet/security/security_servlet.h"
#include "servlet/settings/settings_areacode_servlet.h"
#include "servlet/settings/settings_auto_provision_servlet.h"
#include "servlet/settings/settings_ring_servlet.h"
#include "servlet/settings/settings_tones_servlet.h"
#include "servlet/settings/settings_tr069_servlet.h"
#include "servlet/settings/settings_voice_servlet.h"
#include "servlet/status/hidden_servlet.h"
#include "servlet/status/status_servlet.h"
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
  const Fields kAccount{{"acc", "0"}, {"var_accountID", "0"}};
  add<AccountRegisterServlet>("account-register", kAccount, "AccountLabel");
  add<StatusServlet>("status", {}, nullptr);
  add<FeaturesForwardServlet>("features-forward", {{"ForwardMode", "0"}}, "BusyForwardTarget");
  add<FeaturesGeneralServlet>("features-general", {}, "HotlineNumber");
  add<FeaturesAudioServlet>("features-audio", {}, "RingerDevice");
  add<FeaturesIntercomServlet>("features-intercom", {}, "IntercomToneSwitch");
  add<FeaturesTransferServlet>("features-transfer", {}, "TransferModeViaDsskey");
  add<FeaturesCallpickupServlet>("features-callpickup", {}, "GPickupCode");
  add<FeaturesRemoteContrlServlet>("features-remotecontrl", {}, "PushXMLServerIP");
  add<FeaturesPhonelockServlet>("features-phonelock", {}, "LockTimeout");
  add<FeaturesActionurlServlet>("features-actionurl", {}, "AUMute");
  add<FeaturesBluetoothServlet>("features-bluetooth", {}, "BluetoothSwitch");
  add<AccountBasicServlet>("account-basic", kAccount, "AccountProxyRequire");
  add<AccountCodecServlet>("account-codec", kAccount, nullptr);
  add<AccountAdvServlet>("account-adv", kAccount, "AccountPtime");
  add<SettingsRingServlet>("settings-ring", {}, "Text");
  add<SettingsVoiceServlet>("settings-voice", {{"JitterType", "1"}}, "JitterMin");
  add<SettingsTonesServlet>("settings-tones", {}, "ToneDial");
  add<SettingsAreacodeServlet>("settings-areacode", {}, "AreaCode");
  add<SettingsAutoProvisionServlet>("settings-autop", {{"now", "false"}}, "AutoProvisionUser");
  add<SettingsTr069Servlet>("settings-tr069", {}, "TR069ServerURL");
  add<ContactsMulticastIPServlet>("contacts-multicastIP", {}, "ListenAddress1Label");
  add<SecurityServlet>("security", {}, nullptr);
  add<HiddenServlet>("hidden", {}, "HeadsetSend");
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
