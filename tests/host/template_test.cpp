// Templates and lists.
#include <unistd.h>

#include "host/template_renderer.h"
#include "host/template_scope.h"
#include "tests/host/host_test.h"

namespace host {
namespace {

const std::string kPragma = "{{%AUTOESCAPE context=\"HTML\"}}\n";

class Templates : public ::testing::Test {
 protected:
  std::string render(const std::string& text, TMPL_varlist* list) {
    root_.write("t/page.htm", kPragma + text);
    TemplateRenderer renderer(root_.path());
    return renderWith(renderer, list);
  }
  std::string renderWith(TemplateRenderer& renderer, TMPL_varlist* list) {
    SpoolBuffer out(1 << 20, "/tmp");
    if (!renderer.render("/t/page.htm", list, context_, out)) return "failed";
    return out.takeMemory();
  }

  host_test::LogCapture log_;
  TemporaryFolder root_;
  TemplateArena arena_;
  PageContext context_{"German", "46", "status", nullptr};
};

TEST_F(Templates, EscapeEveryValueOnceForItsPlace) {
  for (const auto& [value, expected] : {std::pair{"<b>\"&'", "&lt;b&gt;&quot;&amp;&#39;"},
                                        {"&lt;b&gt;&quot;&amp;'", "&lt;b&gt;&quot;&amp;&#39;"},  // given escaped
                                        {"&amp;lt;", "&amp;lt;"},                                // one level only
                                        {"&#39;&auml;&", "&amp;#39;&amp;auml;&amp;"}}) {
    const auto list = TMPL_add_var(nullptr, "v", value, nullptr);
    EXPECT_EQ(render("<p>{{v}}</p><i title=\"{{v}}\">", list),
              std::string("<p>") + expected + "</p><i title=\"" + expected + "\">");
  }
  const auto evil = TMPL_add_var(nullptr, "v", "javascript:alert(1)", nullptr);
  EXPECT_EQ(render("<a href=\"{{v}}\">", evil), "<a href=\"#\">");
}

TEST_F(Templates, ShowSectionsByValuesAndLoops) {
  TMPL_varlist* list = TMPL_add_var(nullptr, "full", "x", "zero", "0", "no", "false", "empty", "", nullptr);
  TMPL_loop* rows = TMPL_add_varlist(nullptr, TMPL_add_var(nullptr, "n", "1", "full", "0", nullptr));
  rows = TMPL_add_varlist(rows, TMPL_add_var(nullptr, "n", "2", nullptr));
  list = TMPL_add_loop(TMPL_add_loop(list, "rows", rows), "none", nullptr);
  std::string text;
  for (const std::string name : {"full", "zero", "no", "empty", "none", "unknown"})
    text += "{{#" + name + "}}" + name + " {{/" + name + "}}{{#" + name + "_off}}-" + name + " {{/" + name + "_off}}";
  EXPECT_EQ(render(text, list), "full -zero -no -empty -none ");
  EXPECT_EQ(
      render("{{#rows_any}}[{{/rows_any}}{{#rows}}{{n}}{{#full}}!{{/full}}{{zero}};{{/rows}}{{#rows_off}}x{{/rows_off}}"
             "{{#none_any}}y{{/none_any}}",
             list),
      "[10;2!0;");
}

TEST_F(Templates, ShowTheLaterValueAndWhatTheHostGives) {
  TMPL_varlist* list = TMPL_add_var(nullptr, "a", "old", "b", "1", nullptr);
  list = TMPL_add_var(TMPL_add_loop(list, "b", nullptr), "a", "new", nullptr);
  EXPECT_EQ(
      render("{{a}}{{b}}{{#b}}loop{{/b}}|{{Language}} {{PhoneType}} {{Page}} {{User}}{{#User_off}}nobody{{/User_off}}",
             list),
      "new|German 46 status nobody");
  for (int i = 0; i < 100; ++i)
    list = TMPL_add_var(list, std::string("v").append(std::to_string(i)).c_str(), "x", nullptr);
  EXPECT_EQ(render("{{a}}{{v99}}{{Page}}", TMPL_add_var(list, "a", "newest", nullptr)), "newestxstatus");
}

TEST_F(Templates, PullInSharedPieces) {
  root_.write("t/include/page_top.htm", kPragma + "<i title=\"{{>INNER}}\">");
  root_.write("t/include/inner.htm", "{{v}}");
  const auto list = TMPL_add_var(nullptr, "v", "a\"b", nullptr);
  EXPECT_EQ(render("{{>PAGE_TOP}}.", list), "<i title=\"a&quot;b\">.");
}

TEST_F(Templates, NameFileAndLineOfAFault) {
  root_.write("t/include/loop.htm", "{{>LOOP}}");
  root_.write("t/include/open.htm", "a\n{{#x}}");
  const std::pair<std::string, std::string> kCases[] = {
      {"a\n{{b", "page.htm:3: a marker is not closed"},
      {"{{#x}}\n{{#y}}\n{{/x}}", "page.htm:4: section x is not the one to close here"},
      {"a\n\n{{#x}}\n{{v}}", "page.htm:4: section x is not closed"},
      {"{{>MISSING}}", "page.htm:2: include MISSING is missing"},
      {"{{>../page}}", "page.htm:2: include ../page has no valid name"},
      {"\n{{>LOOP}}", "loop.htm:1: includes nest too deeply"},
      {"{{>OPEN}}{{/x}}", "open.htm:2: section x is not closed"},
      {"{{a}}\n\n{{a b}}", "page.htm:4: refused here or shortly before"},
      {"{{#s}}\n{{a:nosuchmodifier}}\n{{/s}}{{b}}", "page.htm:3: refused here or shortly before"},
  };
  for (const auto& [text, fault] : kCases) {
    host_test::LogCapture log;
    EXPECT_EQ(render(text, nullptr), "failed") << text;
    EXPECT_THAT(log.text(), ::testing::HasSubstr(fault));
  }
  host_test::LogCapture log;
  TemplateRenderer renderer(root_.path());
  SpoolBuffer out(100, "/tmp");
  root_.write("t/bare.htm", "{{v}}");
  for (const char* path : {"/t/bare.htm", "/t/none.htm", "/t/../../x", "t/page.htm", "/t"}) {
    EXPECT_FALSE(renderer.render(path, nullptr, context_, out)) << path;
  }
  EXPECT_THAT(log.text(), ::testing::HasSubstr("bare.htm:1: does not begin with the AUTOESCAPE pragma"));
  EXPECT_THAT(log.text(), ::testing::HasSubstr("none.htm:0: cannot be read"));
}

TEST_F(Templates, AreReadAgainWhenAPieceChanges) {
  root_.write("t/include/piece.htm", "one");
  root_.write("t/page.htm", kPragma + "{{>PIECE}}");
  TemplateRenderer renderer(root_.path());
  EXPECT_EQ(renderWith(renderer, nullptr), "one");
  root_.write("t/include/piece.htm", "two!");
  for (int tries = 0; tries < 30 && renderWith(renderer, nullptr) != "two!"; ++tries) ::usleep(100'000);
  EXPECT_EQ(renderWith(renderer, nullptr), "two!");
}

TEST_F(Templates, AreAlsoJson) {
  TMPL_loop* rows = TMPL_add_varlist(nullptr, TMPL_add_var(nullptr, "row", "1", nullptr));
  TMPL_varlist* list = TMPL_add_var(nullptr, "a", "&lt;\xff\"", "b", "1", "a", "2&lt;", nullptr);
  list = TMPL_add_loop(TMPL_add_loop(TMPL_add_var(list, "bad", "\xff", nullptr), "L", rows), "E", nullptr);
  EXPECT_EQ(templateJson("/phone/www/WEB-INFO/template/status.htm", list, context_),
            "{\"template\":\"status\",\"language\":\"German\",\"phoneType\":\"46\",\"variables\":"
            "{\"a\":\"2&lt;\",\"b\":\"1\",\"bad\":\"\xef\xbf\xbd\",\"L\":[{\"row\":\"1\"}],\"E\":[]}}");
  EXPECT_EQ(templateJson("x", nullptr, {}),
            "{\"template\":\"x\",\"language\":\"\",\"phoneType\":\"\",\"variables\":{}}");
}

}  // namespace
}  // namespace host
