#include "platform/registry.h"

#include <map>
#include <mutex>
#include <optional>

#include "platform/log.h"
#include "platform/phone_root.h"
#include "simulator/files.h"
#include "simulator/ini_file.h"
#include "simulator/number.h"

namespace {

using simulator::IniFile;
using simulator::readFile;

// Files are read, merged and replaced by one handle at a time.
std::mutex flushMutex;

class RegistrySection : public ETL_SubClass {
 public:
  RegistrySection(std::string path, std::string section, const std::string& bytes)
      : path_(std::move(path)), section_(std::move(section)), file_(bytes) {}

  std::string registryGetString(const char* key, const char* fallback) override {
    return find(key).value_or(fallback != nullptr ? fallback : "");
  }

  int registryGetInt(const char* key, int fallback) override {
    return simulator::decimalNumber(find(key).value_or("")).value_or(fallback);
  }

  void registrySetString(const char* key, const char* value) override {
    if (key != nullptr && value != nullptr) changes_[key] = value;
  }

  void registrySetInt(const char* key, int value) override { registrySetString(key, std::to_string(value).c_str()); }

  bool registryFlush() override {
    if (changes_.empty()) return true;
    const std::lock_guard lock(flushMutex);
    IniFile merged(readFile(path_).value_or(""));
    for (const auto& [key, value] : changes_) merged.set(section_, key, value);
    if (!simulator::replaceFile(path_, merged.text())) {
      log_log(kWebLog, kLogError, "registryFlush() cannot write %s\n", path_.c_str());
      return false;
    }
    file_ = std::move(merged);
    changes_.clear();
    return true;
  }

 private:
  std::optional<std::string> find(const char* key) const {
    if (key == nullptr) return std::nullopt;
    const auto changed = changes_.find(key);
    return changed != changes_.end() ? std::optional(changed->second) : file_.get(section_, key);
  }

  const std::string path_;
  const std::string section_;
  IniFile file_;                                // as last read
  std::map<std::string, std::string> changes_;  // since then
};

}  // namespace

std::unique_ptr<ETL_SubClass> registryOpen(const char* file, const char* section, RegistryFile mode) {
  if (file == nullptr || section == nullptr) return nullptr;
  std::string path = phonePath(file);
  if (path.empty()) return nullptr;
  const std::optional<std::string> bytes = readFile(path);
  const bool isAbsent = !simulator::fileStamp(path);
  if (!bytes && !(isAbsent && mode == RegistryFile::kMayBeMissing)) return nullptr;
  return std::make_unique<RegistrySection>(std::move(path), section, bytes.value_or(""));
}

bool registrySections(const char* file, std::vector<std::string>& names) {
  names.clear();
  const std::optional<std::string> bytes = file != nullptr ? readFile(phonePath(file)) : std::nullopt;
  if (!bytes) return false;
  names = IniFile(*bytes).sections();
  return true;
}
