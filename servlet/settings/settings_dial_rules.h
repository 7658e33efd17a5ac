// The rules of the dial plan: XML files whose root element holds an element a rule, and what the pages of replace rules
// and of dial-now rules, which edit one rule at a time, have in common.
#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <vector>

#include "framework/servlet_base.h"
#include "platform/orb_list.h"
#include "platform/phone_application.h"

// One text of a rule: its attribute in the file, the form's field that brings it, the variable that shows it.
struct DialRuleText {
  const char* attribute;
  const char* field;
  const char* variable;
};

// The texts of a rule on a phone of that type: all, or, where phones have one account only, all but the last, the
// account's.
std::span<const DialRuleText> dialRuleTexts(std::span<const DialRuleText> texts, int phoneType);

// A file of rules and the page that edits it.
struct DialRuleFile {
  const char* path;
  ConfigArea area;
  const char* page;
  const char* address;     // of the page's "load"
  const char* writeError;  // what people are told when the file cannot be written
};

inline constexpr std::size_t kMaxDialRules = 100;  // that a page shows

// Reads the file; false when it has no root element.
bool loadDialRules(const char* path, pugi::xml_document& document);

// The rules of a document with a root element, in its order.
std::vector<pugi::xml_node> dialRulesIn(const pugi::xml_document& document);

// The rule of the number that the form's "currentIndex" gives (from 1); null when there is none.
pugi::xml_node chosenDialRule(const pugi::xml_document& document, HttpRequest* request);

// Takes the numbers of the rules to be deleted from the form's "recountNum"; false when there are none.
bool takeDialRuleNumbers(HttpRequest* request, OrbList<std::string>& numbers);

// How many rows a table has for so many rules: at most `most`; fewer than 9 rules are filled up to 10 rows.
std::size_t dialRowCount(std::size_t rules, std::size_t most);

// Adds the texts of a rule to a row, empty ones for what the rule lacks or for a null rule.
TMPL_varlist* addDialRule(TMPL_varlist* row, pugi::xml_node rule, std::span<const DialRuleText> texts);

// Adds the rows "TRLoop" and "max" to a page's list.
TMPL_varlist* addDialRules(TMPL_varlist* list, const std::vector<pugi::xml_node>& rules,
                           std::span<const DialRuleText> texts);

// Appends a rule with the form's texts; a field that the form lacks is empty.
void appendDialRule(pugi::xml_document& document, std::span<const DialRuleText> texts, HttpRequest* request);

// Sets those of a rule's texts that it has and the form brings; a null rule is left alone.
void changeDialRule(pugi::xml_node rule, std::span<const DialRuleText> texts, HttpRequest* request);

// Removes rules by their numbers (from 1), which are in ascending order: one out of order is ignored, and so is what
// follows one that reads as 0.
void removeDialRules(const std::vector<pugi::xml_node>& rules, const OrbList<std::string>& numbers);

// Stores the document, leads back to the page and tells the phone application; answers a notice, with the old file
// untouched, when it cannot be stored. Always 1.
int storeDialRules(const DialRuleFile& file, const pugi::xml_document& document, HttpResponse* response);
