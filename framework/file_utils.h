// Files and folders. All paths are paths of the phone.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <list>
#include <string>
#include <string_view>

class ReadFiles {
 public:
  // Appends the names of the folder's entries that end with `suffix` (letter case ignored), in the folder's order:
  // without the suffix unless `keepSuffix`, with the folder in front if `withPath`. False when it cannot be opened.
  static bool FindFiles(std::list<std::string>& names, const char* directory, const char* suffix, bool withPath,
                        bool keepSuffix);
};

// Bytes of the file, -1 when it cannot be examined.
std::int64_t GetFileSize(const char* path);

// Bytes of the path itself plus, for a folder, of all below it; symbolic links are not followed. What cannot be
// examined is logged and counts 0; an entry's path of more than 4096 characters is logged and makes the whole 0.
std::int64_t GetDirSize(const char* path);

// Bytes free in the file system that holds `path`; 0 when that cannot be told.
std::int64_t GetPartionFreeSize(const char* path);

// From a file's first bytes: 1 for a bitmap, 2 for JPEG, 3 for PNG, 0 for anything else.
int GetImageTypeByData(std::string_view data);

// Replaces the file whole: written beside it, on disk, then renamed. It gets the rights of `mode`, or with 0 the old
// file's, a new one its owner's alone. False, with the old file untouched, when that fails.
bool replaceFile(const char* path, std::string_view content, mode_t mode = 0);

// True for what may name a file in a folder: 1 to 255 bytes without "/", "\\" and control characters, and no dot in
// front.
bool isFileName(std::string_view name);

// Removes a file; false when there is none or it cannot be removed.
bool removeFile(const char* path);

// The whole file; false when it cannot be read.
bool readFile(const char* path, std::string& content);
