// Lists of texts.
#pragma once

#include <list>
#include <string>
#include <string_view>

#include "framework/servlet_base.h"
#include "platform/orb_list.h"

// Replaces the list by the pieces of `text` between separators, in order. Empty pieces between two separators are kept;
// the piece behind the last separator only when it is not empty. An empty text gives false and leaves the list alone.
bool String2List(OrbList<std::string>& list, std::string_view text, char separator);

// The element at the index (from 0), or an empty text past either end.
std::string GetStringListByIndex(const std::list<std::string>& list, int index);

// Sorts byte by byte; a null list is ignored.
void sortStringListByName(std::list<std::string>* list, bool ascending);

// Appends a row for each non-empty name: "selValue" (the name, or "prefix:name" when a prefix is given, cut to 255
// characters), "selName" and, when `selected` is given, "selected" = "selected" for the row of that value, else empty.
void AddPrefixLoop(TMPL_loop** loop, const std::list<std::string>& names, const char* prefix, const char* selected);
