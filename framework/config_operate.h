// Settings between the configuration service and the pages.
//
// A template variable and the form field that brings it back are named like the logical key. Values shown are escaped
// for HTML; values stored are taken as posted. A value is cut to its first 1023 characters when it is read.
#pragma once

#include <cstddef>
#include <string>

#include "framework/servlet_base.h"

enum FILETYPE {
  GLOBAL_FILE = 0,   // a key of the whole phone
  ACCOUNT_FILE = 1,  // a key of one account (index from 0); other reads and writes ignore the account
};

inline constexpr std::size_t kConfigValueSize = 1024;  // bytes of a value buffer, the final NUL included

// What forms show in place of a stored secret; posted back, it means "unchanged".
inline constexpr char kSecretPlaceholder[] = "********";

// Adds a variable for each key of the table, in its order; null entries are skipped. Returns the (possibly new) list.
// A count below 1 changes nothing; a null table is logged and gives null.
TMPL_varlist* readConfigOperate(FILETYPE type, const char* const* keys, int count, TMPL_varlist* list, int account);
template <std::size_t N>
TMPL_varlist* readConfigOperate(FILETYPE type, const char* const (&keys)[N], TMPL_varlist* list, int account) {
  return readConfigOperate(type, keys, static_cast<int>(N), list, account);
}

// Adds the variable of one key. A null key is logged and gives null. The character has no effect.
TMPL_varlist* readConfigOperate(FILETYPE type, const char* key, TMPL_varlist* list, int account);
TMPL_varlist* readConfigOperate(FILETYPE type, const char* key, TMPL_varlist* list, char character, int account);

// Copies the escaped value into `buffer`, cut to `size` - 1 characters. A null key is logged and leaves it untouched.
void readConfigOperate(FILETYPE type, const char* key, std::string& buffer, std::size_t size, int account);

// The escaped value of a key of the whole phone, cut to `size` - 1 characters.
std::string readConfigText(const char* key, std::size_t size);

// The value as it is stored, cut to `size` - 1 characters: for comparing, never for showing.
std::string readConfigPlain(const char* key, std::size_t size);
std::string readAccountConfigPlain(const char* key, int account, std::size_t size);

// The value of a key of the whole phone as a decimal number, 0 when it is none.
int readConfigNumber(const char* key);

// Stores every field of the table that the request has. 1 when a value changed, 0 when none did, -1 (logged) when the
// table or the request is null.
int writeConfigOperate(FILETYPE type, const char* const* keys, int count, HttpRequest* request, int account);
template <std::size_t N>
int writeConfigOperate(FILETYPE type, const char* const (&keys)[N], HttpRequest* request, int account) {
  return writeConfigOperate(type, keys, static_cast<int>(N), request, account);
}

// Stores the field of that name. Non-zero when the value changed, 0 when not, -1 (logged) for a missing argument or
// field.
int writeConfigOperate(FILETYPE type, const char* key, HttpRequest* request, int account);

// Stores a value. Non-zero when it changed, 0 when not, -1 (logged) when the key or the value is null.
int writeConfigOperate(FILETYPE type, const char* key, const char* value, int account);

// Stores the field as a secret: an absent field or the placeholder leaves the stored value. True when it changed.
bool writeSecret(FILETYPE type, const char* key, const char* field, int account);
