// What a column of a contact file can hold.
#pragma once

#include <string_view>

enum CSV_CONTACT_INDEX {
  kIgnored = 0,
  kDisplayName = 1,
  kOfficeNumber = 2,
  kMobileNumber = 3,
  kOtherNumber = 4,
  kLine = 5,
  kRing = 6,
  kGroupName = 7,
  kPhoto = 8,
  kPhotoData = 9,  // a picture in base64
};
inline constexpr int kContactFields = 10;

// The name of a value, which is also its attribute in contact files. False for a number that is none.
bool GetParaNameByIndex(int index, const char** name);

// False for a field that this type of phone does not have.
bool hasContactField(int phoneType, int index);
