#include "servlet/settings/settings_dial_rules.h"

#include <algorithm>

#include "framework/notice.h"
#include "framework/phone_messages.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "framework/xml_file.h"
#include "platform/log.h"

namespace {
constexpr std::size_t kFilledBelow = 9;  // rules
constexpr std::size_t kFilledRows = 10;
constexpr int kTypeWithOneAccount = 19;
}  // namespace

std::span<const DialRuleText> dialRuleTexts(std::span<const DialRuleText> texts, int phoneType) {
  return phoneType == kTypeWithOneAccount ? texts.first(texts.size() - 1) : texts;
}

bool loadDialRules(const char* path, pugi::xml_document& document) {
  return loadXml(path, document) && document.document_element();
}

std::vector<pugi::xml_node> dialRulesIn(const pugi::xml_document& document) {
  std::vector<pugi::xml_node> rules;
  for (const pugi::xml_node node : document.document_element()) {
    if (node.type() == pugi::node_element) rules.push_back(node);
  }
  return rules;
}

pugi::xml_node chosenDialRule(const pugi::xml_document& document, HttpRequest* request) {
  const std::vector<pugi::xml_node> rules = dialRulesIn(document);
  const int number = parseInt(request->getParameter("currentIndex")).value_or(-1);
  const bool isOne = number > 0 && static_cast<std::size_t>(number) <= rules.size();
  return isOne ? rules[static_cast<std::size_t>(number) - 1] : pugi::xml_node();
}

bool takeDialRuleNumbers(HttpRequest* request, OrbList<std::string>& numbers) {
  const char* const posted = request->getParameter("recountNum");
  if (!posted) return false;
  const bool isList = String2List(numbers, posted, ',');
  if (!isList) log_log(kWebLog, kLogWarning, "pStrRecountNum is empty\n");
  return isList;
}

std::size_t dialRowCount(std::size_t rules, std::size_t most) {
  return rules < kFilledBelow ? kFilledRows : std::min(rules, most);
}

TMPL_varlist* addDialRule(TMPL_varlist* row, pugi::xml_node rule, std::span<const DialRuleText> texts) {
  for (const DialRuleText& text : texts) {
    row = TMPL_add_var(row, text.variable, templateText(rule.attribute(text.attribute).as_string()).c_str(), nullptr);
  }
  return row;
}

TMPL_varlist* addDialRules(TMPL_varlist* list, const std::vector<pugi::xml_node>& rules,
                           std::span<const DialRuleText> texts) {
  TMPL_loop* rows = nullptr;
  for (std::size_t i = 0; i < dialRowCount(rules.size(), kMaxDialRules); ++i) {
    const char* const color = i % 2 == 0 ? "0" : "1";
    TMPL_varlist* row = TMPL_add_var(nullptr, "row", std::to_string(i + 1).c_str(), "setColor", color, nullptr);
    rows = TMPL_add_varlist(rows, addDialRule(row, i < rules.size() ? rules[i] : pugi::xml_node(), texts));
  }
  list = TMPL_add_var(list, "max", std::to_string(kMaxDialRules).c_str(), nullptr);
  return TMPL_add_loop(list, "TRLoop", rows);
}

void appendDialRule(pugi::xml_document& document, std::span<const DialRuleText> texts, HttpRequest* request) {
  pugi::xml_node rule = document.document_element().append_child("Data");
  for (const DialRuleText& text : texts) {
    const char* const value = request->getParameter(text.field);
    rule.append_attribute(text.attribute) = value ? value : "";
  }
}

void changeDialRule(pugi::xml_node rule, std::span<const DialRuleText> texts, HttpRequest* request) {
  for (const DialRuleText& text : texts) {
    if (const char* value = request->getParameter(text.field)) rule.attribute(text.attribute).set_value(value);
  }
}

void removeDialRules(const std::vector<pugi::xml_node>& rules, const OrbList<std::string>& numbers) {
  int position = 0;
  auto wanted = numbers.begin();
  for (const pugi::xml_node rule : rules) {
    const int number = wanted == numbers.end() ? 0 : parseInt(*wanted).value_or(0);
    if (number == 0) return;
    if (++position != number) continue;
    rule.parent().remove_child(rule);
    ++wanted;
  }
}

int storeDialRules(const DialRuleFile& file, const pugi::xml_document& document, HttpResponse* response) {
  if (!saveXml(file.path, document)) {
    SetNoticePage(response, false, file.page, file.writeError);
    return 1;
  }
  response->sendRedirect(file.address);
  postConfigChanged(file.area);
  return 1;
}
