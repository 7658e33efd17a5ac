// Who may see, post and run what: the templates say so.
#include "host/rights.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/host/host_test.h"

namespace host_test {
namespace {
using ::testing::HasSubstr;
using ::testing::Not;

TEST(Levels, AreTheBrowsersOwn) {
  std::ifstream file(PHONE_WEB_SOURCE "/tests/support/level_cases.json");
  const auto cases = nlohmann::json::parse(file);
  EXPECT_GT(cases.size(), 20u);
  for (const auto& row : cases) {
    const std::string identity = row[0], code = row[1];
    EXPECT_EQ(host::maySee(identity, code), row[2].get<bool>()) << identity << " " << code;
  }
}

constexpr char kTemplate[] = R"({{%AUTOESCAPE context="HTML"}}
<a data-page="any" data-tab="tab" href="/servlet?p=any&amp;q=load">Any</a>
<body data-show-level="{{ShowLevel}}">
<form method="post" action="/servlet?p=any&amp;q=write" title="{{everywhere}}">
<input name="open" value="{{open}}">
<div data-level="outer">
<input type="checkbox" name="one" value="1" {{#one}}checked{{/one}}><input type="hidden" name="one" value="0">
<table><tr>{{#rows}}<td><input name="row_{{n}}" value="{{cell}}"></td>{{/rows}}</tr></table>
<p data-level="inner"><textarea name="both">{{both}}{{everywhere}}</textarea></p>
</div>
<button>Save</button> <button name="now" value="1" data-level="inner">Now</button>
</form>
<form method="post" id="ca" action="/servlet?p=any&amp;q=upload"><input type="hidden" name="type" value="ca"></form>
<div data-level="outer"><input type="file" name="file" form="ca"><button form="ca">Upload</button></div>
<form method="post" action="/servlet?p=any&amp;q=upload"><input type="hidden" name="type" value="free"><input name="file"></form>
<a data-level="inner" href="/servlet?p=any&amp;q=export&amp;kind=1">Export</a>
<i data-level="outer" data-action="/servlet?p=any&amp;q=ask&amp;key= /servlet?p=any&amp;q=tell"></i>
</body>)";

class RightsTest : public ServerTest {
 protected:
  RightsTest() {
    root_.write("phone/www/WEB-INFO/template/any.htm", kTemplate);
    root_.write("phone/www/WEB-INFO/template/forbidden.htm",
                "{{%AUTOESCAPE context=\"HTML\"}}\n<b>No access: {{ShowLevel}} {{Identity}} {{isAction}}</b>");
    settings_.device.level = [this](const std::string& key) { return levels_[key]; };
    settings_.device.identity = [](const std::string& user) { return user == "boss" ? "admin" : user; };
    behaviour.page = [this](HttpRequest* request, HttpResponse* response) { serve(request, response); };
  }

  void serve(HttpRequest* request, HttpResponse* response) {
    if (const char* who = request->getParameter("who")) {
      request->getSession(1)->setAttribute("user", strdup(who));
      return;
    }
    ++runs_;
    std::string read;
    for (const char* name : {"open", "one", "both", "row_7", "now", "file", "kind", "key", "other", "OPEN"}) {
      const char* value = request->getParameter(name);
      const char** values = request->getParameterValues(name);
      EXPECT_EQ(value == nullptr, values == nullptr) << name;
      if (value) read += std::string(read.empty() ? "" : " ") + name + "=" + value;
    }
    TMPL_loop* rows = TMPL_add_varlist(nullptr, TMPL_add_var(nullptr, "n", "7", "cell", "CELL", nullptr));
    TMPL_varlist* list = TMPL_add_var(nullptr, "open", "OPEN", "one", "ONE", "both", "BOTH", "everywhere", "EVERY",
                                      "unknown", "UNKNOWN", "ShowLevel", read.c_str(), nullptr);
    response->renderTemplate("/phone/www/WEB-INFO/template/any.htm", TMPL_add_loop(list, "rows", rows));
  }

  // The headers of somebody who is logged in.
  std::string as(const std::string& user) {
    const Reply reply = get("/servlet?p=any&q=load&who=" + user);
    return "Cookie: " + reply.header("set-cookie").substr(0, 45) + "\r\n";
  }
  // What the page could read, or the status.
  std::string read(const Reply& reply) {
    if (reply.status != 200) return std::to_string(reply.status);
    return nlohmann::json::parse(reply.body)["variables"]["ShowLevel"];
  }

  std::map<std::string, std::string> levels_{{"tab", "2"}, {"outer", "1"}, {"inner", "0"}};
  int runs_ = 0;
};

constexpr char kAll[] = "open=o&one=1&both=b&row_7=r&now=1&other=x&OPEN=O";
constexpr char kJson[] = "Accept: application/json\r\n";

TEST_F(RightsTest, FieldsThatAreHiddenAreNotReadWhereverTheyStand) {
  const std::vector<std::array<std::string, 2>> rows{
      {"admin", "open=o one=1 both=b row_7=r now=1 other=x OPEN=O"},
      {"boss", "open=o one=1 both=b row_7=r now=1 other=x OPEN=O"},
      {"var", "open=o one=1 row_7=r"},
      {"user", "open=o"},
      {"nobody", "open=o"},
      {"", "open=o"},
  };
  for (const auto& [user, expected] : rows) {
    const std::string headers = as(user) + kJson;
    EXPECT_EQ(read(post("/servlet?p=any&q=write", headers + kForm, kAll)), expected) << user;
    EXPECT_EQ(read(get("/servlet?p=any&q=write&" + std::string(kAll), headers)), expected) << user;
    EXPECT_EQ(read(post("/servlet?p=any&q=write&" + std::string(kAll), headers + kForm, "one=2&%6fne=3&both=4")),
              expected);
  }
  const std::string user = as("user") + kJson;
  const std::string parts = part("name=\"one\"", "1") + part("name=\"both\"; filename=\"f\"", "file") +
                            part("name=\"open\"", "o") + part("name=\"%6fne\"", "1") + "--B--";
  EXPECT_EQ(read(post("/servlet?p=any&q=write", user + "Content-Type: multipart/form-data; boundary=B\r\n", parts)),
            "open=o");
  EXPECT_EQ(read(post("/servlet", user + kForm, "p=any&q=write&one=1&open=o")), "open=o");
  EXPECT_THAT(log_.text(), HasSubstr("field both of page any is not for var\n"));
  EXPECT_THAT(log_.text(), HasSubstr("field one of page any is not for (nobody)\n"));
  // What a page is opened with is harmless; of the fields it knows, only those that are seen count.
  EXPECT_EQ(read(get("/servlet?p=any&q=load&" + std::string(kAll), user)), "open=o other=x OPEN=O");
  levels_["outer"] = "2";
  EXPECT_EQ(read(post("/servlet?p=any&q=write", user + kForm, kAll)), "open=o one=1 row_7=r");
  levels_["outer"] = "3";
  EXPECT_EQ(read(post("/servlet?p=any&q=write", as("admin") + kJson + kForm, kAll)), "open=o now=1 other=x OPEN=O");
}

TEST_F(RightsTest, ActionsWhoseButtonIsHiddenAreRefused) {
  const std::vector<std::array<std::string, 4>> rows{
      {"q=write", "200", "200", "200"},
      {"q=upload&type=ca", "200", "200", "403"},
      {"q=upload&type=free", "200", "200", "200"},
      {"q=upload&type=CA", "200", "200", "403"},
      {"q=upload", "200", "200", "403"},
      {"q=export", "200", "403", "403"},
      {"q=ask", "200", "200", "403"},
      {"q=tell", "200", "200", "403"},
      {"q=delete", "200", "403", "403"},
      {"q=Write", "200", "403", "403"},
      {"q=load", "200", "200", "200"},
      {"q=", "200", "200", "200"},
  };
  const std::array<std::string, 3> sessions{as("admin"), as("var"), as("user")};
  for (const auto& row : rows) {
    for (std::size_t i = 0; i < sessions.size(); ++i) {
      const int before = runs_;
      const std::string query = "p=any&" + row[0];
      EXPECT_EQ(std::to_string(get("/servlet?" + query, sessions[i]).status), row[i + 1]) << row[0] << i;
      EXPECT_EQ(std::to_string(post("/servlet", sessions[i] + kForm, query).status), row[i + 1]) << row[0] << i;
      EXPECT_EQ(runs_ - before, row[i + 1] == "200" ? 2 : 0);
    }
  }
  const std::string long_form = "q=export&x=" + std::string(1'100'000, 'x');
  EXPECT_EQ(post("/servlet?p=any", sessions[2] + kForm, long_form).status, 413);
  EXPECT_EQ(post("/servlet?p=any&q=export", sessions[2], long_form).status, 403);
}

TEST_F(RightsTest, PagesThatAreHiddenAnswerNothing) {
  levels_["tab"] = "1";
  const std::string user = as("user"), var = as("var");
  const int before = runs_;
  const Reply page = get("/servlet?p=any&q=load", user);
  EXPECT_EQ(page.status, 403);
  EXPECT_THAT(page.body, HasSubstr("<b>No access: tab=3$ user 0</b>"));
  EXPECT_EQ(get("/servlet?p=any&q=load", user + kJson).body, R"({"error":403,"message":"Forbidden"})");
  EXPECT_EQ(post("/servlet?p=any&q=write", user + kForm, "open=1").status, 403);
  EXPECT_EQ(runs_, before);
  EXPECT_EQ(get("/servlet?p=any&q=load", var).status, 200);
  for (const char* code : {"0", "", "7", "3"}) {
    levels_["tab"] = code;
    EXPECT_EQ(get("/servlet?p=any&q=load", var).status, 403) << code;
  }
  EXPECT_EQ(get("/servlet?p=any&q=load", as("admin")).status, 403);
  levels_["tab"] = "2";
  EXPECT_EQ(get("/servlet?p=any&q=load", user).status, 200);
  EXPECT_EQ(get("/servlet?p=any&q=delete").status, 200);  // somebody whom the filter lets in without a login
}

TEST_F(RightsTest, VariablesOfHiddenFieldsAreNotShown) {
  const std::vector<std::array<std::string, 2>> rows{
      {"admin",
       R"({"ShowLevel":"","both":"BOTH","everywhere":"EVERY","one":"ONE","open":"OPEN","rows":[{"cell":"CELL","n":"7"}],"unknown":"UNKNOWN"})"},
      {"var", R"({"ShowLevel":"","everywhere":"EVERY","one":"ONE","open":"OPEN","rows":[{"cell":"CELL","n":"7"}]})"},
      {"user", R"({"ShowLevel":"","everywhere":"EVERY","open":"OPEN"})"},
  };
  for (const auto& [user, expected] : rows) {
    const std::string headers = as(user);
    const auto json = nlohmann::json::parse(get("/servlet?p=any&q=load", headers + kJson).body);
    EXPECT_EQ(json["variables"].dump(), expected);
    const std::string html = get("/servlet?p=any&q=load", headers).body;
    EXPECT_THAT(html, HasSubstr("value=\"OPEN\""));
    EXPECT_EQ(html.find("BOTH") != std::string::npos, user == "admin");
    EXPECT_EQ(html.find("checked") != std::string::npos, user != "user");
    EXPECT_EQ(html.find("CELL") != std::string::npos, user != "user");
  }
}

TEST_F(RightsTest, TemplatesThatCannotBeReadAreTheAdministratorsAndChangesHold) {
  const std::string user = as("user") + kJson;
  EXPECT_EQ(read(post("/servlet?p=any&q=write", user + kForm, kAll)), "open=o");
  std::string nested;
  for (int i = 0; i < 30'000; ++i) nested += "<b>";
  for (const std::string& text : {nested, std::string(1'100'000, 'x'), std::string("{{#open}}")}) {
    root_.write("phone/www/WEB-INFO/template/any.htm", "{{%AUTOESCAPE context=\"HTML\"}}\n" + text);
    ::sleep(1);
    ::usleep(100'000);
    EXPECT_EQ(post("/servlet?p=any&q=write", user + kForm, kAll).status, 403);
    EXPECT_EQ(get("/servlet?p=any&q=load", user).body.find("OPEN"), std::string::npos);
  }
  EXPECT_THAT(log_.text(), HasSubstr("rights of template any.htm: unknown"));
  root_.write(
      "phone/www/WEB-INFO/template/any.htm",
      "{{%AUTOESCAPE context=\"HTML\"}}\n<form action='/servlet?p=any&q=write'><div data-level=inner><div><input "
      "name=open></form></div></p></section><input name=one>{{one}}");
  ::sleep(1);
  ::usleep(100'000);
  EXPECT_EQ(read(post("/servlet?p=any&q=write", user + kForm, kAll)), "");
}

TEST_F(RightsTest, CanBeSwitchedOff) {
  settings_.rights = false;
  levels_["tab"] = "0";
  EXPECT_EQ(read(post("/servlet?p=any&q=write", as("user") + kJson + kForm, kAll)),
            "open=o one=1 both=b row_7=r now=1 other=x OPEN=O");
}

}  // namespace
}  // namespace host_test
