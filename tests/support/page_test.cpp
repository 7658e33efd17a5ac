#include "tests/support/page_test.h"

#include <dlfcn.h>

#include <fstream>
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
  if (!handler) handler = make<HttpServlet>(pageList().at(page));
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

void PageTest::expectStored(const std::string& values) {
  for (const auto& [key, value] : fieldsOf(values)) EXPECT_EQ(config(key), value) << key;
}
