// What the local directory holds.
#pragma once

#include <string>
#include <vector>

#include "platform/local_directory.h"

namespace simulator {

// The groups that are always there.
inline constexpr int kAllContactsId = 0;
inline constexpr int kBlacklistId = 1;

inline constexpr std::size_t kMaxContacts = 10'000;
inline constexpr std::size_t kMaxBlacklist = 100;
inline constexpr std::size_t kMaxGroups = 50;

inline constexpr char kDefaultRing[] = "Auto";

struct DirectoryGroup {
  int id;
  std::string name;
  std::string ring;
  bool operator==(const DirectoryGroup&) const = default;
};

struct DirectoryContact {
  NS_DIRECTORY::ContactGeneralItemData data;  // its group name is not used
  int group = kAllContactsId;
  bool operator==(const DirectoryContact& other) const;
};

// Both in the order of adding.
struct DirectoryContents {
  DirectoryContents();  // as a new phone has it

  DirectoryGroup* group(int id);
  const DirectoryGroup* group(int id) const;
  DirectoryGroup* group(const std::string& name);
  std::size_t blacklisted() const;

  std::vector<DirectoryGroup> groups;
  std::vector<DirectoryContact> contacts;
};

// Group 0 lists every contact outside the blacklist.
bool isListedIn(const DirectoryContact& contact, int group);

// SOURCE:NAME, the name that of a file in a known folder.
bool isPhoto(const std::string& value);

// Gives the default ring for none, and the default photo for one that is no photo.
void completeContact(NS_DIRECTORY::ContactGeneralItemData& contact);

// Adds a group, with the default ring for none, and gives its id, the lowest that is free.
int appendGroup(DirectoryContents& contents, const std::string& name, const std::string& ring);

// Contacts of groups that are gone fall back to group 0.
void regroupContacts(DirectoryContents& contents);

}  // namespace simulator
