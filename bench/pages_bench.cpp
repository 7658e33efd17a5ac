// What a load and a save cost inside the module, and filling and rendering a template apart from it.
#include <benchmark/benchmark.h>

#include <fstream>
#include <memory>

#include "host/spool_buffer.h"
#include "host/template_renderer.h"
#include "platform/local_directory.h"
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

std::string numberedRows(const char* before, const char* between, const char* after, int count) {
  std::string rows;
  for (int i = 0; i < count; ++i) {
    const std::string number = std::to_string(1'000'000 + i);
    rows += before + number + between + number + after;
  }
  return rows;
}

void writePhoneFile(const char* path, const std::string& text) {
  std::ofstream(phoneRoot() / path, std::ios::binary) << text;
}

// A page of ten out of so many contacts.
void contactsPage(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  writePhoneFile("config/data/contact_list.xml",
                 "<root_contact>" +
                     numberedRows("<contact display_name=\"Contact ", "\" office_number=\"", "\"/>", count) +
                     "</root_contact>");
  NS_DIRECTORY::CContactLocalManager::GetInstance()->ReloadContactXml();
  load(state, "contactsbasic", {{"num", std::to_string(count / 20)}, {"group", "0"}});
}

// The configuration of a phone with so many contacts, as an archive.
void exportConfig(benchmark::State& state) {
  writePhoneFile("config/data/contact_list.xml",
                 "<root_contact>" +
                     numberedRows("<contact display_name=\"Contact ", "\" office_number=\"", "\"/>",
                                  static_cast<int>(state.range(0))) +
                     "</root_contact>");
  HttpServlet& page = pageHandler("settings-config");
  for (auto _ : state) {
    const TemplateArena arena;
    FakeRequest request = requestFor("export", {});
    request.session = &request.ownSession;
    NullResponse response;
    page.onRequest(&request, &response);
  }
}

// A CSV file of so many contacts: shown, then imported in place of the directory.
void importContacts(benchmark::State& state) {
  const std::string text = numberedRows("Contact ", ",", ",,,-1,Auto,Sales,Default:default_contact_image.png,\n",
                                        static_cast<int>(state.range(0)));
  HttpServlet& page = pageHandler("contacts-preview");
  FakeSession session;
  const auto run = [&](const char* action, const Fields& fields) {
    const TemplateArena arena;
    FakeRequest request = requestFor(action, fields);
    request.session = &session;
    NullResponse response;
    page.onRequest(&request, &response);
  };
  for (auto _ : state) {
    writePhoneFile("tmp/CSVFile_aaaaaa", text);
    run("uploadcvs", {{"frameUploadCVSFile", "/tmp/CSVFile_aaaaaa"}});
    run("importcsv", {{"arrcol", "1,2,3,4,5,6,7,8,9"}, {"delOld", "1"}});
  }
}

// A module of 40 keys, half of them on one of 38 groups of contacts, the others on an account.
void prepareModule() {
  std::string groups, keys;
  for (int i = 0; i < 38; ++i) groups += "<group display_name=\"Group " + std::to_string(i) + "\"/>";
  for (int i = 0; i < 40; ++i) {
    keys += "<item type=\"" + std::string(i % 2 ? "45" : "13") + "\"><itemdata value=\"" + std::to_string(100 + i) +
            "\" line=\"1\" label=\"Key\" extension=\"\"/></item>";
  }
  writePhoneFile("config/data/contact_group_list.xml", "<root_group>" + groups + "</root_group>");
  writePhoneFile("config/data/expkey0.xml", "<dsskey>" + keys + "</dsskey>");
  simulator::control("PATCH", "/simulator/state", {},
                     R"({"expansionModules":[{"type":1,"hardware":"1","firmware":"2"}]})");
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
  add("settings-config", {}, "SyslogServerName");
  add("settings-softkey", {{"selectSoftKeys", "Send,Delete"}, {"unSelectSoftKeys", "Empty,Line"}},
      "CustomSoftkeySwitch");
  add("contacts-favorite", {{"enabled", "history"}, {"searchenabled", "ldap_search"}}, "FeaturesRecentCallEnable");
  add("contacts-remote", {{"RemotePhoneBook0URL", ""}}, "RemotePhoneBook0Name");
  add("contacts-LDAP", {}, "LDAPhost");
  add("contacts-broadsoft", {}, "NetworkDirectoryGroupDisplayname");
  add("contacts-callinfo", {}, nullptr);
  add("contacts-calllog", {}, nullptr);
  add("contacts-multicastIP", {}, "ListenAddress1Label");
  add("security", {}, nullptr);
  add("hidden", {}, "HeadsetSend");
  prepareModule();
  Fields keys{{"model", "3"}, {"extno", "1"}};
  for (int i = 0; i < 40; ++i) {
    keys.emplace("selType_" + std::to_string(i), "13");
    keys.emplace("memValue_" + std::to_string(i), "100");
  }
  add("dsskey", keys, "memValue_39");
  benchmark::RegisterBenchmark("load/contactsbasic", contactsPage)->Arg(10)->Arg(10000);
  benchmark::RegisterBenchmark("export/settings-config", exportConfig)->Arg(10)->Arg(10000)->UseRealTime();
  benchmark::RegisterBenchmark("import/contacts-preview", importContacts)->Arg(1000)->Arg(10000);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
