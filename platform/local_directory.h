// The phone's local directory: contacts in groups.
#pragma once

#include <cstdint>
#include <string>

#include "platform/orb_list.h"

namespace NS_DIRECTORY {

struct ContactGeneralItemData {
  std::string displayName;  // names the contact: no two have the same
  std::string groupName;
  std::string officeNumber;
  std::string mobileNumber;
  std::string otherNumber;
  std::string photo;  // "Default", "Resource" or "Config", a colon, the file name
  std::string ring;
  std::int32_t account = 0;  // index from 0; -1: automatic
  std::int32_t reserved = 0;
};

struct ContactGroupData {
  std::string name;
  std::string ring;
};

struct ContactGroupSimpleData {
  std::string name;
  std::int32_t id = -1;
};

// A part of a list: asked for by `start` (from 0) and `count`, filled with at most that many entries and the `total` of
// the whole list.
struct ContactGeneralItemListData {
  OrbList<ContactGeneralItemData> contacts;
  std::int32_t start = 0;
  std::int32_t count = 0;
  std::int32_t total = 0;
};
struct ContactGroupSimpleListData {
  OrbList<ContactGroupSimpleData> groups;
  std::int32_t start = 0;
  std::int32_t count = 0;
  std::int32_t total = 0;
};

// Results of changes; 0 and above are success.
enum DirectoryResult : std::int32_t {
  kDirectoryDone = 0,
  kGroupExists = -1,
  kContactExists = -2,
  kGroupIdInvalid = -3,
  kGroupUnknown = -4,
  kContactUnknown = -5,
  kGroupFixed = -6,  // cannot be renamed or removed
  kContactsFull = -7,
  kBlacklistFull = -8,
  kGroupsFull = -9,
  kContactNotLocal = -10,
  kDirectoryFailed = -11,
  kContactNotInBlacklist = -12,
  kDirectoryBusy = -13,
  kDirectoryNetworkError = -14,
  kPhotoNameInvalid = -15,
};

// The store. A change is on disk before the call returns; one that fails changes nothing. Names are compared exactly.
// Group 0 lists every contact outside the blacklist, group 1 is the blacklist.
class CContactLocalManager {
 public:
  // Null while the directory is not available.
  static CContactLocalManager* GetInstance();

  // False when there is no such group.
  bool GetContactListById(ContactGeneralItemListData& list, int group);
  bool GetGroupSimpleList(ContactGroupSimpleListData& list);
  bool GetGroupDataByID(ContactGroupData& group, int id);
  // The name of the first contact with that office, mobile or other number; empty when nobody has it.
  std::string GetContactNameByPhoneNumber(const std::string& number);

  // An unknown group, or an empty name, means group 0; an empty ring or photo the phone's default.
  int AddContact(const std::string& groupName, const ContactGeneralItemData& contact);
  // An unknown group, or an empty name, leaves the contact in its group; an empty ring or photo leaves it its own.
  int UpdateContactData(const std::string& oldName, const ContactGeneralItemData& contact);
  // All or none of the contacts.
  int RemoveContactList(const OrbList<std::string>& names);
  int RemoveAllContacts(int group);
  // All or none of the contacts.
  int MoveListToGroup(const OrbList<std::string>& names, const std::string& groupName);

  int AddGroup(const ContactGroupData& group);
  int UpdateGroupData(const std::string& oldName, const ContactGroupData& group);
  // Contacts of a removed group fall back to group 0.
  int RemoveGroup(const std::string& name);
  int RemoveAllGroup();

  // Gives the phone's default photo to all contacts that had `photo`.
  int SetDefaultPhoto(const std::string& photo);

  // Read the files again after another program changed them.
  void ReloadContactXml();
  void ReloadGroupXml();
};

}  // namespace NS_DIRECTORY
