// The words of all settings that somebody sees, as the search of the pages asks for them.
#include <array>

#include "tests/host/host_test.h"

namespace host_test {
namespace {
using ::testing::HasSubstr;

constexpr char kAny[] = R"({{%AUTOESCAPE context="HTML"}}
<title> First
 page</title>
<a data-page="any" data-tab="first" href="/servlet?p=any&amp;q=load&amp;acc=0">First</a>
<a data-page="keys" data-form="model=1" data-tab="keys" href="/servlet?p=keys&amp;q=load&amp;model=1">One</a>
<a data-page="keys" data-form="model=2" data-tab="" href="/servlet?p=keys&amp;q=load&amp;model=2">Two</a>
<h1>The first</h1><p class="lead">What &lt;it&gt; is for.</p>
<form method="get"><div class="field"><label>Account</label><select id="acc"></select></div></form>
<form method="post" action="/servlet?p=any&amp;q=write">
<section class="card" data-level="card"><h2>Card</h2>
<div class="field"><label for="a">A <b>label</b>{{x}}</label><input type="hidden" name="z"><input id="a" name="b" {{#x}}checked{{/x}}><p class="help">Help "me"</p></div>
<div class="wide field" role="radiogroup" data-level="inner"><span class="label">Radios</span><label><input type="radio" name="r" value="1">One</label></div>
<div class="group" role="group" aria-labelledby="l"><h3>No</h3><div class="field"><label id="l">Grouped</label><input id="id{{n}}"></div>
<div class="field" id="own"><label>Below</label><input name="{{n}}"></div></div>
<div><h3>Rows</h3><div class="field"><label>Row</label></div><div class="field"><label>Row</label></div></div>
<div class="field"><label>{{x}}</label></div>
</section>
<div class="card"><h2>Values</h2><dl><div><dt>Value</dt><dd data-var="v">{{v}}</dd></div><div><dt>$v</dt><dd>Means v.</dd></div></dl></div>
<div class="card" id="list"><h2>List</h2>{{#x_off}}<p class="help">None.</p>{{/x_off}}<ol></ol></div>
{{#x_off}}<div class="card"><h2>There is nothing</h2></div>{{/x_off}}
</form><dialog><div class="field"><label>Asked</label><input></div></dialog>
<p data-level="inner"><a href="/servlet?p=linked&amp;q=load&amp;z=0">Linked</a> <a href="/servlet?p=secret&amp;q=write">No</a></p>)";

constexpr char kKeys[] =
    "{{%AUTOESCAPE context=\"HTML\"}}\n<title>Keys</title><form method=post action='/servlet?p=keys&q=write'>"
    "<input type=hidden name=model value=1><div class=field><label>Key</label></div><div "
    "class=field><label>1</label></div>";

class SettingsTest : public ServerTest {
 protected:
  SettingsTest() {
    write("any", kAny);
    write("keys-one", kKeys);
    std::string second = kKeys;
    second.replace(second.find("value=1"), 7, "value=2").replace(second.rfind('1'), 1, "2");
    write("keys-two", second);
    write("linked", "{{%AUTOESCAPE context=\"HTML\"}}\n<title>Linked</title>");
    write("secret", "{{%AUTOESCAPE context=\"HTML\"}}\n<title>Secret</title>");
    settings_.device.level = [this](const std::string& key) { return levels_[key]; };
    settings_.device.identity = [](const std::string& user) { return user; };
    behaviour.page = [](HttpRequest* request, HttpResponse*) {
      request->getSession(1)->setAttribute(request->getParameter("attribute"), strdup(request->getParameter("who")));
    };
  }

  void write(const std::string& page, const std::string& text) {
    root_.write("phone/www/WEB-INFO/template/" + page + ".htm", text);
  }

  std::string as(const std::string& user, const std::string& attribute = "user") {
    const Reply reply = get("/servlet?p=any&q=load&attribute=" + attribute + "&who=" + user);
    return "Cookie: " + reply.header("set-cookie").substr(0, 45) + "\r\n";
  }
  std::string indexFor(const std::string& user) { return get("/settings.json", as(user)).body; }

  std::map<std::string, std::string> levels_{{"first", "2"}, {"card", "2"}, {"inner", "0"}, {"keys", "1"}};
};

constexpr char kFirst[] =
    R"({"title":"First page","heading":"The first","lead":"What <it> is for.","address":"/servlet?p=any&q=load&acc=0","settings":[["a","A label","Help \"me\"","Card"],)";
constexpr char kRest[] =
    R"(["","Grouped","","Card"],["own","Below","","Card","Grouped"],["","Row","","Card","Rows"],["v","Value","","Values"],["","$v","Means v.","Values"],["list","List"]]})";
constexpr char kLinked[] =
    R"(,{"title":"Linked","heading":"","lead":"","address":"/servlet?p=linked&q=load&z=0","settings":[]})";
constexpr char kOne[] =
    R"({"title":"Keys","heading":"","lead":"","address":"/servlet?p=keys&q=load&model=1","settings":[["","Key"],["","1"]]})";
constexpr char kTwo[] =
    R"({"title":"Keys","heading":"","lead":"","address":"/servlet?p=keys&q=load&model=2","settings":[)";

std::string pages(const std::string& all) {
  return R"({"pages":[)" + all + "]}";
}

TEST_F(SettingsTest, AreThoseThatTheReaderSees) {
  const std::string all =
      std::string(kFirst) + R"(["r","Radios","","Card"],)" + kRest + kLinked + "," + kOne + "," + kTwo;
  EXPECT_EQ(indexFor("admin"), pages(all + R"(["","2"]]})"));
  EXPECT_EQ(indexFor("var"), pages(std::string(kFirst) + kRest + "," + kOne + "," + kTwo + R"(["","2"]]})"));
  EXPECT_EQ(indexFor("user"), pages(std::string(kFirst) + kRest + "," + kTwo + R"(["","Key"],["","2"]]})"));
  levels_["first"] = "0";
  EXPECT_EQ(indexFor("stranger"), pages(std::string(kTwo) + R"(["","Key"],["","2"]]})"));
  write("keys-two",
        "{{%AUTOESCAPE context=\"HTML\"}}\n<title>\xff</title><form method=post action='/servlet?p=keys&q=write'>"
        "<input type=hidden name=model value=2><div class=field data-level=inner><label>Key</label></div>");
  ::sleep(1);
  ::usleep(100'000);
  EXPECT_EQ(indexFor("user"), pages(""));  // nothing is left of the page
  EXPECT_THAT(indexFor("admin"), HasSubstr("\xef\xbf\xbd"));
}

TEST_F(SettingsTest, AreAllWithoutRights) {
  settings_.rights = false;
  levels_.clear();
  EXPECT_EQ(indexFor("user"), pages(std::string(kFirst) + R"(["r","Radios","","Card"],)" + kRest + kLinked + "," +
                                    kOne + "," + kTwo + R"(["","2"]]})"));
}

TEST_F(SettingsTest, AreForThoseWhoAreLoggedInAndKeptByTheirBrowsers) {
  const std::string admin = as("admin"), gzip = "Accept-Encoding: gzip\r\n";
  for (const std::string& headers :
       {std::string(), as("x", "other"), std::string("Cookie: PHONESESSION=0123456789abcdef0123456789abcdef\r\n")}) {
    const Reply refused = get("/settings.json", headers);
    EXPECT_EQ(std::to_string(refused.status) + refused.body, R"(403{"error":403,"message":"Forbidden"})");
  }
  const Reply plain = get("/settings.json?x", admin), packed = get("/settings.json", admin + gzip);
  EXPECT_EQ(plain.header("cache-control") + plain.header("content-type"), "private, no-cacheapplication/json");
  EXPECT_EQ(plain.header("content-encoding") + packed.header("content-encoding"), "gzip");
  EXPECT_EQ(packed.body.substr(0, 2), "\x1f\x8b");
  EXPECT_LT(packed.body.size(), plain.body.size());
  EXPECT_NE(plain.header("etag"), packed.header("etag"));
  EXPECT_NE(plain.header("etag"), get("/settings.json", as("user")).header("etag"));
  const Reply kept = get("/settings.json", admin + gzip + "If-None-Match: " + packed.header("etag") + "\r\n");
  EXPECT_EQ(std::to_string(kept.status) + kept.body, "304");
  Client client(port());
  client.send(head("HEAD", "/settings.json", admin));
  EXPECT_EQ(client.receive(false).header("content-length"), std::to_string(plain.body.size()));
  EXPECT_EQ(get("/settings.json", admin + "Sec-Fetch-Site: cross-site\r\n").status, 403);
  EXPECT_EQ(post("/settings.json", admin + kForm, "a=b").status, 405);
}

}  // namespace
}  // namespace host_test
