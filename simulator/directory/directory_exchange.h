// The exchange file of the local directory, "/config/data/contact_xported.xml".
#pragma once

#include "simulator/directory/directory_contents.h"

namespace simulator {

// What the phone application answers to a request for the exchange file.
enum ExchangeResult : int {
  kExchanged = 0,
  kFileInvalid = 1,  // no XML, another root, or characters that XML cannot carry
  kGroupTwice = 2,
  kContactTwice = 3,
  kTooManyGroups = 4,
  kTooManyContacts = 5,
  kTooManyInBlacklist = 6,
  kPathInvalid = 7,  // the file cannot be written
  kGroupNameEmpty = 8,
  kContactNameEmpty = 9,
  kDirectoryInUse = 12,
};

// Writes the own groups and all contacts.
ExchangeResult exportDirectory(const DirectoryContents& contents);

// Adds what the file holds to the contents, a contact in the place of the one of the same name. What the file refers to
// a group by is the group's name, or the id of one that is there; groups that nobody made are made. After anything but
// kExchanged the contents are not to be used.
ExchangeResult importDirectory(DirectoryContents& contents);

}  // namespace simulator
