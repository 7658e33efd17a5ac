// The directory kinds of the page "contacts-favorite", those in use in their order and the others, and their two files.
#pragma once

#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/servlet_base.h"

namespace favorite {

// One kind.
struct _contactGroup {
  std::string displayName;
  bool enabled = false;
  std::string priority;  // "1", "2", ... of an enabled kind, otherwise empty
  std::string idName;
};
using Groups = std::vector<_contactGroup>;

// What the network directory service brings, as the file that was read last holds it: kept out of the lists while the
// service is off, and written back as it is.
struct HeldBack {
  Groups favorites;
  Groups search;
};

struct File {
  const char* path;
  const char* root;
  std::span<const char* const> ofService;  // the kinds that are held back
  Groups HeldBack::*heldBack;              // where
};
extern const File kFavoriteFile;
extern const File kSearchFile;

// Reads a file and what it holds back; the list is emptied first. `serviceSwitch` is off when it reads as 0. False
// (logged) without a list or when the file cannot be read.
bool getContactGroupLists(Groups* groups, const File& file, const std::string& serviceSwitch, HeldBack& heldBack);
// Replaces the file by the list and, while the service is off, what was held back of it. An empty list (logged) leaves
// the file alone.
void setContactGroupLists(const Groups& groups, const File& file, const std::string& serviceSwitch,
                          const HeldBack& heldBack);
// Appends an "item" element for each kind.
void addNewNode(pugi::xml_node parent, const Groups& groups);

// The standard name of a kind; empty for an unknown one.
std::string GetDisplayNameByID(std::string_view id);
// The name that a list gives a kind, the standard name where it gives none; empty for a kind that it does not hold.
std::string GetDisplayNameByID(const Groups& groups, std::string_view id);

// The rows ("selValue", "selName") of a list's first ten kinds: disabled ones as they stand, enabled ones by their
// priority as text.
void getLoops(const Groups& groups, TMPL_loop*& disabled, TMPL_loop*& enabled);

// The kinds that a form posted, in its order, the disabled ones first; `known` gives their names.
Groups getListFromPage(const std::vector<std::string>& disabled, const std::vector<std::string>& enabled,
                       const Groups& known);

}  // namespace favorite
