// The layouts of the soft keys: the files of "/config/softkey/", each with one call state or several. A state is a
// top-level element with the children "Default", "Enable" and "Disable"; its address is "FILE.xml:ELEMENT".
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "framework/servlet_base.h"

namespace softkey {

inline constexpr char kDefaultState[] = "Dialing.xml";  // the first state of that file

using Names = std::vector<std::string>;

// Splits an address into the names of the file and, unless it is missing or empty, of the element. False for a null
// address.
bool getXmlFileNameAndRoot(const char* address, Names& names);

// Loads the file and finds the element: the named one, which is null when the file lacks it, otherwise the first. False
// (logged) without names, for a name that names no layout file, and for a file without an element.
bool getRootNodeByXml(pugi::xml_document& document, const Names& names, pugi::xml_node& element);

// Both of the above.
bool findState(const std::string& address, pugi::xml_document& document, pugi::xml_node& state);

// Appends the types of the element's keys; those of the call server's services go to `hidden` while the services are
// off. False when the element is null.
bool getDataByNode(pugi::xml_node element, Names& types, Names& hidden);

// The types that a state hides from the page: those of "Disable", then those of "Enable".
Names hiddenTypes(pugi::xml_node state);

// Appends a row for each type: "key", "displaykey".
void XMLData2TMPLData(TMPL_loop*& loop, const Names& types);

// A row for each state of every file: "selValue" (its address), "selName", "selected" ("1" or "0").
TMPL_loop* getCallStatesLoop(const std::string& address);

// The address of a state, with the default state by its full one.
std::string fullAddress(const std::string& address);

// Replaces the state's keys. A missing child of the state gets none.
void arrange(pugi::xml_node state, const Names& enabled, const Names& disabled, const Names& hidden);

// Puts the keys of "Default" into "Enable" and all others behind an empty one into "Disable".
void restore(pugi::xml_node state);

// Replaces the file of a state that was found; a failure is logged.
void save(const std::string& address, const pugi::xml_document& document);

}  // namespace softkey
