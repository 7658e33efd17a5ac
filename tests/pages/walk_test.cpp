// Every page of the page list, from its handler in the module to its HTML and its JSON.
#include <dlfcn.h>

#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>

#include "host/spool_buffer.h"
#include "host/template_renderer.h"
#include "host/template_source.h"
#include "tests/support/phone_test.h"

namespace {

using Names = std::set<std::string>;

// What one request to a page gave.
struct Rendered {
  std::string templatePath, html;
  nlohmann::json variables;
};

// Renders as the host does, and keeps the result.
class RenderingResponse : public RecordingResponse {
 public:
  explicit RenderingResponse(const std::filesystem::path& root) : renderer_(root) {}

  void renderTemplate(const char* path, TMPL_varlist* list) override {
    RecordingResponse::renderTemplate(path, list);
    host::PageContext context{"English", "46", "page", nullptr};
    host::SpoolBuffer html(1 << 20, "/tmp");
    EXPECT_TRUE(renderer_.render(path, list, context, html)) << path;
    const auto json = nlohmann::json::parse(host::templateJson(path, list, context));
    EXPECT_EQ(json.at("template").get<std::string>() + ".htm", std::filesystem::path(path).filename());
    rendered = {path, html.takeMemory(), json.at("variables")};
  }

  Rendered rendered;

 private:
  host::TemplateRenderer renderer_;
};

std::map<std::string, std::string> pageList() {
  std::ifstream file(std::string(PHONE_WEB_ROOTFS) + "/phone/www/WEB-INFO/pages.conf");
  std::map<std::string, std::string> pages;
  const std::regex entry(R"(^\s*([\w-]+)\s*=\s*(\w+)\s*$)");
  std::smatch match;
  for (std::string line; std::getline(file, line);) {
    if (std::regex_match(line, match, entry)) pages[match[1]] = match[2];
  }
  return pages;
}

// Variables that a page gives without its template using them: "page variable reason" a line.
Names unusedOnPurpose(const std::string& page) {
  std::ifstream file(std::string(PHONE_WEB_SOURCE) + "/tests/pages/unused_variables.txt");
  Names names;
  for (std::string line, first, name; std::getline(file, line);) {
    if (std::istringstream(line) >> first >> name && (first == page || first == "*")) names.insert(name);
  }
  return names;
}

// The names in a template's markers, without the endings that only conditions have.
Names usedBy(const std::string& text) {
  Names names;
  const std::regex marker(R"(\{\{[#/]?(\w+?)(_off|_any)?(:[^}]*)?\}\})");
  for (std::sregex_iterator match(text.begin(), text.end(), marker), end; match != end; ++match)
    names.insert((*match)[1]);
  return names;
}

// The names whose values the page shows, not only asks for.
Names shownBy(const std::string& text) {
  Names names;
  const std::regex marker(R"(\{\{(\w+)\}\})");
  for (std::sregex_iterator match(text.begin(), text.end(), marker), end; match != end; ++match)
    names.insert((*match)[1]);
  return names;
}

void collect(const nlohmann::json& variables, Names& names) {
  for (const auto& [name, value] : variables.items()) {
    names.insert(name);
    if (!value.is_array()) continue;
    for (const auto& row : value) collect(row, names);
  }
}

std::string escapeOnce(std::string text) {
  const std::pair<const char*, const char*> off[] = {{"&quot;", "\""}, {"&gt;", ">"}, {"&lt;", "<"}, {"&amp;", "&"}};
  const std::pair<const char*, const char*> on[] = {
      {"&", "&amp;"}, {"\"", "&quot;"}, {"'", "&#39;"}, {"<", "&lt;"}, {">", "&gt;"}};
  const auto replace = [&](const char* from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
      text.replace(at, std::string_view(from).size(), to);
    }
  };
  for (const auto& [from, to] : off) replace(from, to);
  for (const auto& [from, to] : on) replace(from, to);
  return text;
}

class WalkTest : public PhoneTest {
 protected:
  WalkTest() : module_(dlopen(PHONE_WEB_BUILD "/libphonepages.so", RTLD_NOW)) {}

  // Asks a page for its form as its visitors do; each scenario brings out what another one does not.
  Rendered open(const std::string& page, const std::string& factory, const FakeRequest& asked = {}) {
    HttpServlet*& handler = handlers_[factory];
    if (!handler) {
      const auto create = reinterpret_cast<HttpServlet* (*)()>(dlsym(module_, factory.c_str()));
      if (!create) throw std::runtime_error("no factory " + factory);
      handler = create();
    }
    handler->init();
    FakeRequest request = asked;
    request.session = &request.ownSession;
    request.ownSession.attributes["user"] = "admin";
    if (request.fields.empty()) request.fields = {{"q", page == "login" ? "loginForm" : "load"}, {"acc", "0"}};
    RenderingResponse response(file("/"));
    handler->onRequest(&request, &response);
    return response.rendered;
  }

  std::vector<Rendered> scenarios(const std::string& page, const std::string& factory) {
    std::vector<Rendered> all{open(page, factory)};
    for (const auto& [key, value] : std::map<const char*, const char*>{
             {"NetworkIPAddressMode", "2"}, {"ISUME", "1"}, {"ForwardMode", "1"}, {"DndMode", "1"}}) {
      setConfig(key, value);
    }
    setConfig("AccountEnable", 0, "1");
    write("/config/Pics/logo.dob", "xx");
    setState(R"({"phoneType":28,"expansionModules":[{"type":1,"hardware":"1","firmware":"2"}]})");
    all.push_back(open(page, factory));
    setConfig("AccountEnable", 0, "0");
    all.push_back(open(page, factory));
    setState(R"({"phoneType":46})");
    if (page == "login") {
      all.push_back(
          open(page, factory,
               FakeRequest{{"q", "login"}, {"username", "x"}, {"pwd", "y"}, {"jumpto", "account-adv"}, {"acc", "1"}}));
    }
    return all;
  }

  // The template with the files that it pulls in.
  std::string templateText(const std::string& path) {
    host::TemplateSource source;
    host::TemplateFault fault;
    EXPECT_TRUE(host::TemplateSource::load(file(path).string(), source, fault)) << fault.file << ": " << fault.text;
    return source.text();
  }

  void* module_;
  // As in a host, handlers live as long as the process.
  static inline auto& handlers_ = *new std::map<std::string, HttpServlet*>;
};

// A page without a form of its own: it answers the browser's questions only.
bool hasForm(const std::string& page) {
  return page != "account-register-lync";
}

TEST_F(WalkTest, TemplatesAndHandlersAgree) {
  ASSERT_TRUE(module_) << dlerror();
  ASSERT_GE(pageList().size(), 7u);
  for (const auto& [page, factory] : pageList()) {
    if (!hasForm(page)) continue;
    Names given{"Language", "PhoneType", "Page", "User"};
    for (const Rendered& rendered : scenarios(page, factory)) collect(rendered.variables, given);
    const Rendered shown = open(page, factory);
    ASSERT_FALSE(shown.html.empty()) << page;
    const Names used = usedBy(templateText(shown.templatePath));
    for (const std::string& name : used) EXPECT_TRUE(given.contains(name)) << page << " uses " << name;
    const Names unused = unusedOnPurpose(page);
    for (const std::string& name : given) {
      if (name == "Language" || name == "PhoneType" || name == "Page" || name == "User") continue;
      EXPECT_NE(used.contains(name), unused.contains(name)) << page << " and the use of " << name;
    }
  }
}

// Each text of the JSON that the template shows stands in the HTML, escaped exactly once.
void expectShown(const nlohmann::json& variables, const Names& shown, const std::string& html,
                 const std::string& page) {
  for (const auto& [name, value] : variables.items()) {
    if (value.is_array()) {
      for (const auto& row : value) expectShown(row, shown, html, page);
    } else if (shown.contains(name)) {
      EXPECT_NE(html.find(escapeOnce(value.get<std::string>())), std::string::npos)
          << page << ": " << name << " = " << value;
    }
  }
}

TEST_F(WalkTest, HostileTextStaysTextAndJsonAgreesWithHtml) {
  const std::string hostile = "'\"><script>alert(1)</script><!-- {{User}} %s";
  for (const auto& [page, factory] : pageList()) {
    if (!hasForm(page)) continue;
    const Rendered first = open(page, factory);
    for (const auto& [name, value] : first.variables.items()) {
      setConfig(name.c_str(), hostile + name);
      setConfig(name.c_str(), 0, hostile + name);
    }
    const std::string levels = open(page, factory).variables.value("ShowLevel", "");
    const std::regex key(R"(([\w-]+)=)");
    for (std::sregex_iterator match(levels.begin(), levels.end(), key), end; match != end; ++match) {
      setConfig((*match)[1].str().c_str(), "\"><script>");
    }
    setConfig("DevtypeLoginNote", hostile);
    setConfig("PhoneFirmware", hostile);
    write("/config/user/voip/sipAccount0.cfg", "[sipserver1]\nserver=" + hostile + "\nport=" + hostile + "\n");
    setState(nlohmann::json{{"hardwareVersion", hostile},
                            {"network", {{"localIPv4", hostile}, {"lanIP", hostile}}},
                            {"expansionModules", {{{"type", 1}, {"hardware", hostile}, {"firmware", hostile}}}}}
                 .dump());
    const Names shown = shownBy(templateText(first.templatePath));
    for (const Rendered& rendered : scenarios(page, factory)) {
      EXPECT_EQ(rendered.html.find("<script>"), std::string::npos) << page;
      EXPECT_EQ(rendered.html.find("&amp;lt;"), std::string::npos) << page;
      expectShown(rendered.variables, shown, rendered.html, page);
    }
  }
}

TEST_F(WalkTest, NoTemplateSwitchesEscapingOff) {
  int templates = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(file("/phone/www/WEB-INFO/template"))) {
    if (entry.path().extension() != ".htm") continue;
    ++templates;
    std::ifstream stream(entry.path());
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_TRUE(text.starts_with("{{%AUTOESCAPE context=\"HTML\"}}")) << entry.path();
    EXPECT_EQ(text.find("{{%AUTOESCAPE", 1), std::string::npos) << entry.path();
    EXPECT_FALSE(std::regex_search(text, std::regex(R"(\{\{\w+:)"))) << entry.path() << " modifies a value";
  }
  EXPECT_GE(templates, 7);
}

}  // namespace
