#include "host/module.h"

#include <dlfcn.h>

#include <stdexcept>

namespace host {

Module::Module(const std::filesystem::path& file) : library_(::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (library_) return;
  const char* reason = ::dlerror();
  throw std::runtime_error(reason ? reason : "cannot load " + file.string());
}

void* Module::function(const std::string& name) const {
  return ::dlsym(library_, name.c_str());
}

}  // namespace host
