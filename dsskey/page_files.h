// The files that a page of keys is read from.
#pragma once

#include <memory>
#include <pugixml.hpp>
#include <string>

// A document that nobody changes any more.
using XmlDocument = std::shared_ptr<const pugi::xml_document>;

// While one lives, this thread reads each file once: files that change meanwhile are seen as they were. Those inside
// another one share its files.
class PageFiles {
 public:
  PageFiles();
  ~PageFiles();
  PageFiles(const PageFiles&) = delete;
  PageFiles& operator=(const PageFiles&) = delete;

  // The document of a path of the phone: empty for a file that is no XML, null when it cannot be read.
  static XmlDocument xml(const std::string& path);
  // The bytes of a file; empty when it cannot be read.
  static std::string text(const std::string& path);

 private:
  bool isOutermost_;
};
