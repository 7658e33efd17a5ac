#include "platform/registry.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <optional>

#include "platform/log.h"
#include "platform/phone_root.h"
#include "simulator/files.h"
#include "simulator/ini_file.h"
#include "simulator/number.h"

namespace {

using simulator::FileStamp;
using simulator::IniFile;
using simulator::readFile;

// Files are read, merged and replaced by one thread at a time.
std::mutex flushMutex;

struct Change {
  std::string section, key, value;
};

// A file as it was last read, for one handle or for those of a batch.
class OpenFile {
 public:
  OpenFile(std::string path, const std::string& bytes, std::optional<FileStamp> stamp)
      : path_(std::move(path)), ini_(bytes), stamp_(stamp) {}

  std::optional<std::string> get(const std::string& section, const std::string& key) const {
    return ini_.get(section, key);
  }

  void set(Change change) {
    apply(change);
    changes_.push_back(std::move(change));
  }

  // Replaces the file by what it holds by now, with the changes in it.
  bool store() {
    if (changes_.empty()) return true;
    const std::lock_guard lock(flushMutex);
    if (simulator::fileStamp(path_) != stamp_) mergeAnew();
    if (differs_ && !simulator::replaceFile(path_, ini_.text())) {
      log_log(kWebLog, kLogError, "registryFlush() cannot write %s\n", path_.c_str());
      return false;
    }
    stamp_ = simulator::fileStamp(path_);
    changes_.clear();
    differs_ = false;
    return true;
  }

  bool isOfBatch = false;

 private:
  void apply(const Change& change) {
    if (ini_.get(change.section, change.key) == change.value) return;
    ini_.set(change.section, change.key, change.value);
    differs_ = true;
  }

  void mergeAnew() {
    ini_ = IniFile(readFile(path_).value_or(""));
    differs_ = false;
    for (const Change& change : changes_) apply(change);
  }

  const std::string path_;
  IniFile ini_;
  std::optional<FileStamp> stamp_;
  std::vector<Change> changes_;  // since then
  bool differs_ = false;         // they make the file another one
};

// Those of this thread's batch, null without one.
using OpenFiles = std::map<std::string, std::shared_ptr<OpenFile>>;
thread_local std::unique_ptr<OpenFiles> batch;

class RegistrySection : public ETL_SubClass {
 public:
  RegistrySection(std::shared_ptr<OpenFile> file, std::string section)
      : file_(std::move(file)), section_(std::move(section)) {}

  std::string registryGetString(const char* key, const char* fallback) override {
    return find(key).value_or(fallback != nullptr ? fallback : "");
  }

  int registryGetInt(const char* key, int fallback) override {
    return simulator::decimalNumber(find(key).value_or("")).value_or(fallback);
  }

  bool registrySetString(const char* key, const char* value) override {
    if (key == nullptr || value == nullptr) return false;
    const bool isNew = find(key) != value;
    changes_.push_back({section_, key, value});
    return isNew;
  }

  bool registrySetInt(const char* key, int value) override {
    return registrySetString(key, std::to_string(value).c_str());
  }

  bool registryFlush() override {
    for (Change& change : changes_) file_->set(std::move(change));
    changes_.clear();
    return file_->isOfBatch || file_->store();
  }

 private:
  std::optional<std::string> find(const char* key) const {
    if (key == nullptr) return std::nullopt;
    const auto isOfKey = [key](const Change& change) { return change.key == key; };
    const auto last = std::find_if(changes_.rbegin(), changes_.rend(), isOfKey);
    return last != changes_.rend() ? std::optional(last->value) : file_->get(section_, key);
  }

  const std::shared_ptr<OpenFile> file_;
  const std::string section_;
  std::vector<Change> changes_;  // since the last flush
};

std::shared_ptr<OpenFile> readOpenFile(const std::string& path, RegistryFile mode) {
  const std::optional<FileStamp> stamp = simulator::fileStamp(path);
  const std::optional<std::string> bytes = readFile(path);
  const bool isAbsent = !simulator::fileStamp(path);
  if (!bytes && !(isAbsent && mode == RegistryFile::kMayBeMissing)) return nullptr;
  return std::make_shared<OpenFile>(path, bytes.value_or(""), stamp);
}

}  // namespace

std::unique_ptr<ETL_SubClass> registryOpen(const char* file, const char* section, RegistryFile mode) {
  if (file == nullptr || section == nullptr) return nullptr;
  const std::string path = phonePath(file);
  if (path.empty()) return nullptr;
  const auto known = batch ? batch->find(path) : OpenFiles::iterator();
  if (batch && known != batch->end()) return std::make_unique<RegistrySection>(known->second, section);
  const std::shared_ptr<OpenFile> opened = readOpenFile(path, mode);
  if (!opened) return nullptr;
  if (batch) {
    opened->isOfBatch = true;
    batch->emplace(path, opened);
  }
  return std::make_unique<RegistrySection>(opened, section);
}

RegistryBatch::RegistryBatch() : isOutermost_(!batch) {
  if (isOutermost_) batch = std::make_unique<OpenFiles>();
}

RegistryBatch::~RegistryBatch() {
  if (!isOutermost_) return;
  const std::unique_ptr<OpenFiles> ended = std::move(batch);
  for (const auto& [path, file] : *ended) {
    file->isOfBatch = false;
    file->store();
  }
}

// Each flush has its file on disk when it returns.
void etlRegFlushAllFile() {}

bool registrySections(const char* file, std::vector<std::string>& names) {
  names.clear();
  const std::optional<std::string> bytes = file != nullptr ? readFile(phonePath(file)) : std::nullopt;
  if (!bytes) return false;
  names = IniFile(*bytes).sections();
  return true;
}
