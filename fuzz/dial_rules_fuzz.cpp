// Files of dial rules that hold anything: an action on one either does what was asked for or leaves the file as it is.
// Input: a rule's text, the number of the rule to be edited and the list of those to be deleted, a line each, then the
// file.
#include <fstream>
#include <iterator>

#include "framework/text_utils.h"
#include "fuzz/phone.h"
#include "servlet/settings/settings_dial_rules.h"
#include "template/template_list.h"
#include "tests/support/fake_http.h"

namespace {

constexpr DialRuleText kTexts[] = {{"Prefix", "editPrefix", "textPrefix"}, {"LineID", "editAccount", "textAccount"}};
constexpr DialRuleFile kFile{.path = "/config/data/DialPlan.xml",
                             .area = ConfigArea::kDialPlan,
                             .page = "settings-dialplan",
                             .address = "/servlet?p=settings-dialplan&q=load",
                             .writeError = "Error:Write DialPlan.xml error!"};

std::filesystem::path path() {
  return fuzzedPhone() / "config/data/DialPlan.xml";
}

std::string content() {
  std::ifstream stream(path(), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// The prefixes of the rules that the file holds.
std::vector<std::string> prefixes() {
  pugi::xml_document document;
  loadDialRules(kFile.path, document);
  std::vector<std::string> all;
  for (const pugi::xml_node rule : dialRulesIn(document))
    all.emplace_back(rule.attribute("Prefix").as_string("(none)"));
  return all;
}

// Stores the document; false, with the file untouched, when that is refused.
bool store(const pugi::xml_document& document) {
  const std::string before = content();
  RecordingResponse response;
  storeDialRules(kFile, document, &response);
  require(response.redirects.size() + response.templates.size() == 1, "a save has one answer");
  if (!response.redirects.empty()) return true;
  require(content() == before, "a save that fails leaves the file");
  return false;
}

void add(FakeRequest& request) {
  std::vector<std::string> expected = prefixes();
  pugi::xml_document document;
  loadDialRules(kFile.path, document);
  appendDialRule(document, kTexts, &request);
  if (!store(document)) return;
  expected.push_back(request.fields.find("editPrefix")->second);
  require(prefixes() == expected, "a rule is added at the end, and no other changes");
}

void edit(FakeRequest& request) {
  std::vector<std::string> expected = prefixes();
  pugi::xml_document document;
  loadDialRules(kFile.path, document);
  const auto rules = dialRulesIn(document);
  const pugi::xml_node chosen = chosenDialRule(document, &request);
  changeDialRule(chosen, kTexts, &request);
  if (!store(document)) return;
  for (std::size_t i = 0; i < rules.size(); ++i) {
    const bool isSet = rules[i] == chosen && chosen.attribute("Prefix");
    if (isSet) expected[i] = request.fields.find("editPrefix")->second;
  }
  require(prefixes() == expected, "one rule at the most is edited");
}

void remove(FakeRequest& request) {
  std::vector<std::string> left = prefixes();
  pugi::xml_document document;
  loadDialRules(kFile.path, document);
  OrbList<std::string> numbers;
  if (!takeDialRuleNumbers(&request, numbers)) return;
  removeDialRules(dialRulesIn(document), numbers);
  if (!store(document)) return;
  int last = 0;
  std::ptrdiff_t removed = 0;
  const auto count = static_cast<int>(left.size());
  for (const std::string& text : numbers) {
    const int number = parseInt(text).value_or(0);
    if (number <= last || number > count) break;  // the walk is over, or waits for what never comes
    left.erase(left.begin() + number - 1 - removed++);
    last = number;
  }
  require(prefixes() == left, "the rules of the ascending numbers are gone, and no other");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const TemplateArena arena;
  fuzzedPhone();
  std::string_view input = inputText(data, size);
  const std::string text = takeLine(input), number = takeLine(input), numbers = takeLine(input);
  std::ofstream(path(), std::ios::binary) << input;
  pugi::xml_document document;
  if (!loadDialRules(kFile.path, document)) return 0;
  addDialRules(nullptr, dialRulesIn(document), kTexts);
  FakeRequest request{{"editPrefix", text}, {"currentIndex", number}, {"recountNum", numbers}};
  add(request);
  edit(request);
  remove(request);
  return 0;
}
