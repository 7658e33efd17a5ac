// Photos of contacts that users bring: pictures in the folder of user photos, and nothing else.
#pragma once

#include <string>
#include <string_view>

inline constexpr char kUserPhotoSource[] = "Config:";  // in front of the file name in a contact's photo value

// True for a name under which a user photo may be kept: a plain file name without ":" that ends like a picture's.
bool isPhotoName(std::string_view name);

// The path of a user photo.
std::string userPhotoPath(std::string_view name);

// The path at which a picture waits to be stored as the photo `name`: pictures are scaled under names without blanks.
std::string photoSource(const std::string& name);

// Scales the picture that waits for `name`, which isPhotoName() accepts, and stores it; the waiting one is gone then.
// 1: done; 2: it has too many pixels; anything else: it is no picture or could not be stored.
int storePhoto(const std::string& name);
// Removes the photo in whose place a failed storePhoto() was to put another.
void removeFailedPhoto(const std::string& name);

// Announces that a user photo came or went.
void announcePhoto(const std::string& name);
