// Ini files shared with the phone's applications.
#pragma once

#include <memory>
#include <string>
#include <vector>

// One section of an ini file, held in memory from registryOpen() to registryFlush(). Values come back byte for byte
// as they were stored. The caller owns the handle; closing it without a flush drops what was set.
class ETL_SubClass {
 public:
  virtual ~ETL_SubClass() = default;
  // The value of `key`, or `fallback` when the section does not hold the key.
  virtual std::string registryGetString(const char* key, const char* fallback) = 0;
  // The same as a decimal number; `fallback` also when the value is not one.
  virtual int registryGetInt(const char* key, int fallback) = 0;
  // True when the section did not hold the key with that value.
  virtual bool registrySetString(const char* key, const char* value) = 0;
  virtual bool registrySetInt(const char* key, int value) = 0;
  // Replaces the file whole, keeping what other handles wrote to other keys since. False when it cannot be written.
  virtual bool registryFlush() = 0;
};

enum class RegistryFile {
  kMustExist,     // a missing file cannot be opened
  kMayBeMissing,  // a missing file reads as empty and is made by the first flush
};

// Opens a section of the file at the phone's path `file`; a section that does not exist yet is empty. Null when the
// file cannot be opened.
std::unique_ptr<ETL_SubClass> registryOpen(const char* file, const char* section, RegistryFile mode);

// For many sections of a file at once. While one lives, the handles that this thread opens share one reading of each
// file and see what the others flushed; a file is replaced once, when the batch ends, by all that was flushed. Within
// another one it does nothing.
class RegistryBatch {
 public:
  RegistryBatch();
  ~RegistryBatch();
  RegistryBatch(const RegistryBatch&) = delete;
  RegistryBatch& operator=(const RegistryBatch&) = delete;

 private:
  bool isOutermost_;
};

// Has all that was flushed, by whatever handle, outlast an end of the phone at once.
void etlRegFlushAllFile();

// The names of the file's sections, in its order. False when the file cannot be read.
bool registrySections(const char* file, std::vector<std::string>& names);
