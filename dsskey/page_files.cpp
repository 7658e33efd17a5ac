#include "dsskey/page_files.h"

#include <map>

#include "framework/file_utils.h"
#include "framework/xml_file.h"

namespace {

struct KeptFiles {
  std::map<std::string, XmlDocument> documents;
  std::map<std::string, std::string> texts;
};
thread_local std::unique_ptr<KeptFiles> kept;

XmlDocument readXml(const std::string& path) {
  auto document = std::make_shared<pugi::xml_document>();
  return loadXml(path.c_str(), *document) ? document : nullptr;
}

std::string readText(const std::string& path) {
  std::string text;
  readFile(path.c_str(), text);
  return text;
}

// The entry of a path, read when it is not there yet.
template <class Value>
const Value& entryOf(std::map<std::string, Value>& entries, const std::string& path,
                     Value (*read)(const std::string& path)) {
  const auto known = entries.find(path);
  return known != entries.end() ? known->second : entries.emplace(path, read(path)).first->second;
}

}  // namespace

PageFiles::PageFiles() : isOutermost_(!kept) {
  if (isOutermost_) kept = std::make_unique<KeptFiles>();
}

PageFiles::~PageFiles() {
  if (isOutermost_) kept.reset();
}

XmlDocument PageFiles::xml(const std::string& path) {
  return kept ? entryOf(kept->documents, path, readXml) : readXml(path);
}

std::string PageFiles::text(const std::string& path) {
  return kept ? entryOf(kept->texts, path, readText) : readText(path);
}
