// What the contacts page shows of the local directory. Where the directory is not available, lists are empty.
#pragma once

#include <string_view>

#include "framework/servlet_base.h"
#include "platform/local_directory.h"

inline constexpr int kContactsPerPage = 10;

// A row a group: "groupId", "groupName", "selected" ("1" or "0").
TMPL_loop* getGroupListLoop(int selected);
// The rows of a page (from 1) of a group, always ten of them; those behind the last contact have empty texts.
TMPL_loop* getContactListLoop(int group, int page);
// A row a page of the group, one at the least: "index", "selected".
TMPL_loop* getPageListLoop(int group, int page);

// Appends the names of the contacts in the rows of `record`: at most ten row numbers divided by commas, ascending and
// all on one page of the group. False when no row is named, or the directory cannot tell.
bool getContactNameList(OrbList<std::string>& names, std::string_view record, int group);
