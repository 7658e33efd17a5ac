#include "tests/support/page_test.h"

#include <dlfcn.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

const std::map<std::string, std::string>& pageList() {
  static const auto& pages = *new auto([] {
    std::map<std::string, std::string> list;
    std::ifstream file(PHONE_WEB_ROOTFS "/phone/www/WEB-INFO/pages.conf");
    for (std::string line, page, equals, factory; std::getline(file, line);) {
      if (std::istringstream(line) >> page >> equals >> factory && equals == "=") list[page] = factory;
    }
    return list;
  }());
  return pages;
}

WalkRecord walkRecord(const std::string& page) {
  static const auto& all =
      *new auto(nlohmann::json::parse(std::ifstream(PHONE_WEB_SOURCE "/tests/pages/walk_records.json")));
  WalkRecord record;
  for (const std::string& name : {std::string("*"), page}) {
    const auto found = all.find(name);
    if (found == all.end()) continue;
    record.action = found->value("q", record.action);
    record.save = found->value("save", record.save);
    record.noForm = found->value("noForm", record.noForm);
    record.storedElsewhere = found->value("storedElsewhere", record.storedElsewhere);
    const auto add = [&](const char* member, auto& values) {
      const nlohmann::json object = found->value(member, nlohmann::json::object());
      for (const auto& [key, value] : object.items()) values.emplace(key, value);
    };
    add("open", record.open);
    add("post", record.post);
    add("settings", record.settings);
    add("files", record.files);
    add("unstored", record.unstored);
    add("ungiven", record.ungiven);
    add("unused", record.unused);
  }
  return record;
}

namespace {
// What a factory of the module makes.
template <class Object>
Object* make(const std::string& factory) {
  static void* const module = dlopen(PHONE_WEB_BUILD "/libphonepages.so", RTLD_NOW);
  void* const address = module ? dlsym(module, factory.c_str()) : nullptr;
  if (!address) throw std::runtime_error(dlerror());
  return reinterpret_cast<Object* (*)()>(address)();
}
}  // namespace

HttpServlet& pageHandler(const std::string& page) {
  static auto& handlers = *new std::map<std::string, HttpServlet*>;
  HttpServlet*& handler = handlers[page];
  if (!handler) {
    handler = make<HttpServlet>(pageList().at(page));
    handler->init();
  }
  return *handler;
}

HttpListener& pageFilter() {
  static HttpListener& filter = *make<HttpListener>("createLoginListener");
  return filter;
}

RecordingResponse PageTest::run(const std::string& page, const std::string& action, const std::string& fields) {
  FakeRequest request;
  request.session = &session;
  request.fields = fieldsOf(fields);
  request.fields.emplace("q", action);
  return serve(pageHandler(page), request);
}

std::string PageTest::announced() {
  std::string all;
  for (const std::string& message : messages()) {
    if (message != "send app_hostapp 0x30007 0 1") all += (all.empty() ? "" : "; ") + message;
  }
  return all;
}

void PageTest::expectSaves(const std::vector<Save>& saves) {
  for (const auto& [page, fields, messages, stored] : saves) {
    SCOPED_TRACE(page + ": " + fields);
    const Fields posted = fieldsOf(fields);
    const auto account = posted.find("var_accountID");
    const std::string target = page + "&q=load" + (account == posted.end() ? "" : "&acc=" + account->second);
    announced();
    EXPECT_EQ(save(page, fields).redirects, Messages{"/servlet?p=" + target});
    EXPECT_EQ(announced(), messages);
    expectStored(stored);
  }
}

std::string PageTest::columns(const RecordingResponse& page, const std::string& loop, const std::string& names) {
  std::istringstream words(names);
  std::string all, separator;
  for (std::string name; words >> name; separator = ", ") all += separator + page.column(loop, name);
  return all;
}

std::string PageTest::columns(TMPL_loop* loop, const std::string& names) {
  RecordingResponse page;
  page.renderTemplate("x", TMPL_add_loop(nullptr, "rows", loop));
  return columns(page, "rows", names);
}

void PageTest::expectStored(const std::string& values) {
  for (const auto& [key, value] : fieldsOf(values)) EXPECT_EQ(config(key), value) << key;
}
