// The files of the local directory.
#pragma once

#include <pugixml.hpp>
#include <string>

#include "simulator/directory/directory_contents.h"

namespace simulator {

// Read what the files hold; one that is missing or broken counts as empty. What the store could not have written
// itself is left out: contacts and groups without a name, those whose name was there before, those beyond the limits.
void readGroups(DirectoryContents& contents);
void readContacts(DirectoryContents& contents);

// Finishes a change of both files that a power cut interrupted, and removes what is left of one that had not begun.
void recoverFiles();

// Brings the files from `old` to `now`; those that are the same stay untouched. False when that failed: both are then
// as they were.
bool writeFiles(const DirectoryContents& old, const DirectoryContents& now);

inline constexpr std::size_t kContactSize = 256;  // bytes of a contact in a file, about

// One contact as an element, here and in the exchange file. `group` is how the file names its group.
NS_DIRECTORY::ContactGeneralItemData contactOf(const pugi::xml_node& element);
void writeContact(pugi::xml_node element, const NS_DIRECTORY::ContactGeneralItemData& contact,
                  const std::string& group);

}  // namespace simulator
