// Every page of the page list, from its handler in the module to its HTML and its JSON.
#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>

#include "host/spool_buffer.h"
#include "host/template_renderer.h"
#include "host/template_source.h"
#include "tests/support/page_test.h"

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

// What the first group of a pattern matches in a text.
Names matches(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  return {std::sregex_token_iterator(text.begin(), text.end(), regex, 1), {}};
}
std::string contentOf(const std::filesystem::path& path) {
  std::ifstream in(path);
  return {std::istreambuf_iterator<char>(in), {}};
}
// The names in a template's markers, without the endings that only conditions have.
constexpr char kUsed[] = R"(\{\{[#/]?(\w+?)(?:_off|_any)?(?::[^}]*)?\}\})";
// The names whose values the page shows, not only asks for.
constexpr char kShown[] = R"(\{\{(\w+)\}\})";

// The keys whose levels a page brings along.
Names levelsOf(const Rendered& page) {
  return matches(page.variables.value("ShowLevel", ""), R"(([\w-]+)=)");
}

// Those of them that are for parts of the page, not for tabs.
Names itemsOf(const Rendered& page) {
  const std::string levels = page.variables.value("ShowLevel", "");
  return matches(levels.substr(levels.find('$') + 1), R"(([\w-]+)=)");
}

// The names of a page's variables, of its loops and of their rows' variables.
Names namesOf(const nlohmann::json& variables) {
  const nlohmann::json flat = variables.flatten();
  std::string paths;
  for (const auto& [path, value] : flat.items()) paths += path;
  return matches(paths, R"(/([A-Za-z_]\w*))");
}

std::string escapeOnce(std::string text) {
  const std::pair<const char*, const char*> steps[] = {{"&quot;", "\""}, {"&gt;", ">"},  {"&lt;", "<"},
                                                       {"&amp;", "&"},   {"&", "&amp;"}, {"\"", "&quot;"},
                                                       {"'", "&#39;"},   {"<", "&lt;"},  {">", "&gt;"}};
  for (const auto& [from, to] : steps) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += std::string_view(to).size()) {
      text.replace(at, std::string_view(from).size(), to);
    }
  }
  return text;
}

// Each walk is done by everybody who may log in.
class WalkTest : public PhoneTest, public ::testing::WithParamInterface<const char*> {
 protected:
  // Asks a page for its form as its visitors do.
  Rendered open(const std::string& page, const FakeRequest& asked = {}) {
    HttpServlet& handler = pageHandler(page);
    handler.init();
    FakeRequest request = asked;
    request.session = &request.ownSession;
    request.ownSession.attributes["user"] = GetParam();
    const WalkRecord record = walkRecord(page);
    for (const auto& [path, text] : record.files) write(path, text);
    if (request.fields.empty()) request.fields.emplace("q", record.action);
    request.fields.insert(record.open.begin(), record.open.end());
    RenderingResponse response(file("/"));
    handler.onRequest(&request, &response);
    return response.rendered;
  }

  // Each brings out what another one does not.
  std::vector<Rendered> scenarios(const std::string& page) {
    std::vector<Rendered> all{open(page)};
    for (const auto& [key, value] : walkRecord(page).settings) setConfig(key, value);
    setState(R"({"phoneType":28,"expansionModules":[{"type":1,"hardware":"1","firmware":"2"}]})");
    all.push_back(open(page));
    setConfig("AccountEnable@0", "0");
    all.push_back(open(page));
    setState(R"({"phoneType":46})");
    if (page == "login") all.push_back(open(page, {{"q", "login"}, {"username", "x"}, {"pwd", "y"}}));
    return all;
  }

  // The template with the files that it pulls in.
  std::string templateText(const std::string& path) {
    host::TemplateSource source;
    host::TemplateFault fault;
    EXPECT_TRUE(host::TemplateSource::load(file(path).string(), source, fault)) << fault.file << ": " << fault.text;
    return source.text();
  }
};
INSTANTIATE_TEST_SUITE_P(Everybody, WalkTest, ::testing::Values("admin", "var", "user"));

// The pages with a form of their own.
std::vector<std::string> forms() {
  std::vector<std::string> pages;
  for (const auto& [page, factory] : pageList()) {
    if (walkRecord(page).noForm.empty()) pages.push_back(page);
  }
  EXPECT_GE(pages.size(), 28u);
  return pages;
}

TEST_P(WalkTest, TemplatesAndHandlersAgree) {
  const Names ofTheHost{"Language", "PhoneType", "Page", "User"};
  for (const std::string& page : forms()) {
    Names given = ofTheHost;
    for (const Rendered& rendered : scenarios(page)) given.merge(namesOf(rendered.variables));
    const Rendered shown = open(page);
    ASSERT_FALSE(shown.html.empty()) << page;
    const std::string text = templateText(shown.templatePath);
    const Names levels = levelsOf(shown);
    const Values unused = walkRecord(page).unused, ungiven = walkRecord(page).ungiven;
    const Names guarding = matches(text, R"re(data-level="([^"]*)")re");
    for (const std::string& key : guarding) EXPECT_TRUE(levels.contains(key)) << page << ": data-level " << key;
    for (const std::string& key : itemsOf(shown)) {
      if (given.contains(key)) continue;  // a setting of the page, which is no level
      EXPECT_NE(guarding.contains(key), unused.contains(key)) << page << ": nothing is guarded by " << key;
    }
    const Names used = matches(text, kUsed);
    for (const std::string& name : used) {
      EXPECT_NE(given.contains(name), ungiven.contains(name)) << page << " uses " << name;
    }
    for (const std::string& name : given) {
      EXPECT_NE(used.contains(name) || ofTheHost.contains(name), unused.contains(name)) << page << " and " << name;
    }
  }
}

// Each text of the JSON that the template shows stands in the HTML, escaped exactly once.
void expectShown(const nlohmann::json& variables, const Names& shown, const std::string& html,
                 const std::string& page) {
  const nlohmann::json flat = variables.flatten();
  for (const auto& [path, value] : flat.items()) {
    if (!value.is_string() || !shown.contains(path.substr(path.rfind('/') + 1))) continue;
    EXPECT_NE(html.find(escapeOnce(value)), std::string::npos) << page << ": " << path << " = " << value;
  }
}

TEST_P(WalkTest, HostileTextStaysTextAndJsonAgreesWithHtml) {
  const std::string hostile = "'\"><script>alert(1)</script><!-- {{User}} %s";
  for (const std::string& page : forms()) {
    const Rendered first = open(page);
    for (const auto& [name, value] : first.variables.items()) {
      setConfig(name, hostile + name);
      setConfig(name + "@0", hostile + name);
    }
    for (const std::string& key : levelsOf(open(page))) setConfig(key, "\"><script>");
    for (const char* key : {"DevtypeLoginNote", "PhoneFirmware"}) setConfig(key, hostile);
    write("/config/user/voip/sipAccount0.cfg", "[sipserver1]\nserver=" + hostile + "\nport=" + hostile + "\n");
    setState(nlohmann::json{{"hardwareVersion", hostile},
                            {"network", {{"localIPv4", hostile}, {"lanIP", hostile}}},
                            {"expansionModules", {{{"type", 1}, {"hardware", hostile}, {"firmware", hostile}}}}}
                 .dump());
    const Names shown = matches(templateText(first.templatePath), kShown);
    for (const Rendered& rendered : scenarios(page)) {
      EXPECT_EQ(rendered.html.find("<script>"), std::string::npos) << page;
      EXPECT_EQ(rendered.html.find("&amp;lt;"), std::string::npos) << page;
      expectShown(rendered.variables, shown, rendered.html, page);
    }
  }
}

TEST_P(WalkTest, EveryFieldOfAFormIsStored) {
  for (const std::string& page : forms()) {
    const WalkRecord record = walkRecord(page);
    if (!record.storedElsewhere.empty()) continue;
    for (const auto& [key, value] : record.settings) setConfig(key, value);
    const Names names =
        matches(templateText(open(page).templatePath), R"re(<(?:input|select|textarea)[^>]* name="([^"{]+)")re");
    FakeRequest request;
    request.fields = record.post;
    request.fields.emplace("q", "write");
    request.ownSession.attributes["user"] = GetParam();
    for (const std::string& name : names) {
      if (!record.post.contains(name)) request.fields.emplace(name, "7");
    }
    serve(pageHandler(page), request);
    for (const std::string& name : names) {
      const bool stored = config(name) == "7" || config(name + "@0") == "7";
      EXPECT_NE(stored, record.unstored.contains(name)) << page << " and its field " << name;
    }
  }
}

// Which keys there are stands in the handlers' tables.
TEST(FactoryTest, EveryKeyOfATableHasADefault) {
  Names known;
  for (const char* name : {PHONE_WEB_ROOTFS "/phone/factory/global.ini", PHONE_WEB_ROOTFS "/phone/factory/account.ini"})
    known.merge(matches("\n" + contentOf(name), R"(\n([\w-]+) *=)"));
  const std::regex table(R"(constexpr const char\* k\w*(?:Keys|Items|Menu|Tabs|Switches)\[\] = \{([^}]*)\})");
  std::size_t tables = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(PHONE_WEB_SOURCE "/servlet")) {
    if (!entry.is_regular_file()) continue;
    const std::string source = contentOf(entry.path());
    for (std::sregex_iterator match(source.begin(), source.end(), table), end; match != end; ++match, ++tables) {
      for (const std::string& key : matches((*match)[1], R"re("([^"]*)")re")) {
        EXPECT_TRUE(known.contains(key)) << entry.path() << ": no default for " << key;
      }
    }
  }
  EXPECT_GE(tables, 70u);
}

}  // namespace
