// Forwarding and do not disturb: one set of settings for the phone, or one for each account.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "framework/servlet_base.h"

// A setting in both of its places: the phone's key (variable and field, too), and the key of an account's ini section.
struct ForwardField {
  const char* name;
  const char* iniKey;
  const char* fallback;
};

// What forwarding and do not disturb differ in.
struct ForwardKind {
  const char* mode;          // key and field of the mode: "0" for the phone, "1" for each account
  const char* section;       // of an account, its index behind it
  const char* accountField;  // the account that a save is about
  const char* shownField;    // the account that a request wants to see
  const char* index;         // variable: the account shown
  const char* noAccount;     // variable: "true" when there is none
  std::span<const ForwardField> fields;
};
extern const ForwardKind kForwardKind;
extern const ForwardKind kDndKind;

// An account whose line is on.
struct EnabledAccount {
  int index;
  std::string userName;
};
std::vector<EnabledAccount> enabledAccounts();

// The account to show: the one the request asks for, or the first enabled one; -1 when no account is enabled.
int shownAccount(const ForwardKind& kind, HttpRequest* request, const std::vector<EnabledAccount>& accounts);

// Adds the settings of the mode shown, with the account's variables where each account has its own.
TMPL_varlist* addForwardData(TMPL_varlist* list, const ForwardKind& kind, const std::string& mode, int account);

// The delay before an unanswered call is passed on, in rings, as the mode shown holds it.
std::string forwardDelay(const std::string& mode, int account);

// True when a form wants to store an account's own settings and names an account that this phone has not.
bool namesNoAccount(const ForwardKind& kind, HttpRequest* request);

struct ForwardSave {
  bool changed = false;
  std::optional<int> account;  // whose settings were stored, where each account has its own
};
// Stores the settings of a form in the place that the form's mode names.
ForwardSave storeForwardData(const ForwardKind& kind, HttpRequest* request);
