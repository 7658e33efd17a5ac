// The phone's local directory. Not safe from several threads at once.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "simulator/directory/directory_contents.h"

namespace simulator {

class Directory {
 public:
  // Read everything, or one of the files, from the phone's tree.
  void load();
  void loadGroups();
  void loadContacts();

  const DirectoryContents& contents() const { return contents_; }
  // Makes `next` the directory, on disk when it returns. False when that failed, which changes nothing.
  bool replace(DirectoryContents next);

  // The name of the first contact with that number; empty when nobody has it.
  std::string nameOf(const std::string& number);

 private:
  DirectoryContents contents_;
  // Names by number, made when somebody asks after a change.
  std::optional<std::unordered_map<std::string_view, std::string_view>> names_;
};

}  // namespace simulator
