#include "servlet/access/trusted_clients.h"

#include <regex.h>
#include <strings.h>

#include <algorithm>
#include <string>

#include "framework/config_operate.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "platform/log.h"

namespace {

constexpr std::size_t kTrustListSize = 512;
constexpr int kMostRepetitions = 4;

// An item of the trust list as a regular expression: "*" stands for one part of an address. It is searched anywhere in
// the address. Counts and many repetitions of the item's own are refused: nested, they take gigabytes to compile.
int searchItem(std::string item, const char* address) {
  cutText(item, kTrustListSize);
  const auto repeats = [](char c) { return c == '+' || c == '?'; };
  if (item.find('{') != std::string::npos || std::ranges::count_if(item, repeats) > kMostRepetitions) return REG_BADPAT;
  ReplaceStrByStr(item, "*", "[0-9]{1,3}");
  ReplaceStrByStr(item, ".", "\\.");
  regex_t pattern;
  if (regcomp(&pattern, item.c_str(), REG_EXTENDED | REG_NOSUB) != 0) return REG_BADPAT;
  const int result = regexec(&pattern, address, 0, nullptr, 0);
  regfree(&pattern);
  return result;
}

}  // namespace

bool IsTrustIP(const char* address) {
  if (!address) {
    log_log(kWebLog, kLogWarning, "IsTrustIP() para error.\n");
    return false;
  }
  const std::string trusted = readConfigText("AURILimitIP", kTrustListSize);
  if (strcasecmp(trusted.c_str(), "any") == 0) return true;
  if (trusted.empty()) log_log(kWebLog, kLogWarning, "proccessActionURI(): Error, URI Limit All IP!\n");
  OrbList<std::string> items;
  String2List(items, trusted, ',');
  for (const std::string& item : items) {
    if (item.empty()) continue;
    const int result = searchItem(item, address);
    if (result == 0) {
      log_log(kWebLog, kLogInfo, "ip match.\n");
      return true;
    }
    log_log(kWebLog, kLogInfo, "%s\n", result == REG_NOMATCH ? "ip no match." : "regexec error");
  }
  log_log(kWebLog, kLogWarning, "ip is not trust.\n");
  return false;
}

bool IsTrustServerIP(const char* address, const char* list) {
  if (!address || !list) {
    log_log(kWebLog, kLogWarning, "IsTrustServerIP() para error\n");
    return false;
  }
  OrbList<std::string> items;
  String2List(items, list, ',');
  for (std::string& item : items) {
    ReplaceStrByStr(item, " ", "");
    if (item == address) return true;
  }
  return false;
}
