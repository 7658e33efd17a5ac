// The shared library that holds the page handlers.
#pragma once

#include <filesystem>
#include <string>

namespace host {

// Stays loaded until the process ends: its objects are never deleted.
class Module {
 public:
  // Throws std::runtime_error with the loader's words when the library cannot be loaded.
  explicit Module(const std::filesystem::path& file);

  // The address of an exported function; null when there is none.
  void* function(const std::string& name) const;

 private:
  void* library_;
};

}  // namespace host
