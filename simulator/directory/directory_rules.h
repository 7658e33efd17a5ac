// The changes that the store offers, by its rules.
#pragma once

#include <string>

#include "simulator/directory/directory_contents.h"

namespace simulator {

// Each does to the contents what the operation of the store does, and answers a DirectoryResult; after a negative one
// the contents are not to be used.
int addContact(DirectoryContents& contents, const std::string& groupName, NS_DIRECTORY::ContactGeneralItemData contact);
int updateContact(DirectoryContents& contents, const std::string& oldName,
                  NS_DIRECTORY::ContactGeneralItemData contact);
int removeContacts(DirectoryContents& contents, const OrbList<std::string>& names);
int removeAllContacts(DirectoryContents& contents, int group);
int moveContacts(DirectoryContents& contents, const OrbList<std::string>& names, const std::string& groupName);
int addGroup(DirectoryContents& contents, const NS_DIRECTORY::ContactGroupData& group);
int updateGroup(DirectoryContents& contents, const std::string& oldName, const NS_DIRECTORY::ContactGroupData& group);
int removeGroup(DirectoryContents& contents, const std::string& name);
int removeAllGroups(DirectoryContents& contents);
int setDefaultPhoto(DirectoryContents& contents, const std::string& photo);

}  // namespace simulator
