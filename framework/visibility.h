// Which tabs and settings of a page the logged-in user may see. The page's script hides; this tells it what.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "framework/servlet_base.h"

enum SHOWTYPE {
  SHOWTYPE_ITEM = 0,  // the settings of a page
  SHOWTYPE_MENU = 1,  // the tabs of a section; its last entry is followed by "$"
};

// A page's two lists of visibility keys and the bytes its ShowLevel text may take, the final NUL included.
struct Visibility {
  std::span<const char* const> menu{};
  std::span<const char* const> items{};
  std::size_t bufferSize = 1024;
};

// Appends "key=level" entries joined by "&" to `buffer`, up to `size` - 1 characters in all. A null table or buffer is
// logged; null entries are skipped (a null last entry leaves out the list's end mark too).
void showString(SHOWTYPE type, const char* const* keys, int count, std::string* buffer, std::size_t size);

// What every page's showItemsByLevel() does: adds "ShowLevel", "Identity", "devseries" and "devtypeInfo".
TMPL_varlist* addVisibility(TMPL_varlist* list, HttpRequest* request, const Visibility& visibility);

// Adds "devseries" and "devtypeInfo".
TMPL_varlist* AddDevType(TMPL_varlist* list);

// The series name of a phone type, empty for most types.
void GetDevSeries(int phoneType, std::string* series);

// The identity whose configured login name is `name`; `identity` stays as it is when there is none. Null arguments are
// logged.
void GetIdentityByName(const char* name, std::string* identity);
// The configured login name of an identity; `name` stays as it is for an unknown one. Null arguments are logged.
void GetNameByIdentity(std::string* name, const char* identity);

// Adds "supportTR069": the pages of the settings section have a TR-069 tab.
TMPL_varlist* GetTR069Supported(TMPL_varlist* list);
