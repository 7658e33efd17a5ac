#include "framework/xml_file.h"

#include <sstream>
#include <string>

#include "framework/file_utils.h"

bool loadXml(const char* path, pugi::xml_document& document) {
  document.reset();
  std::string text;
  if (!readFile(path, text)) return false;
  if (!document.load_buffer(text.data(), text.size())) document.reset();
  return true;
}

bool saveXml(const char* path, const pugi::xml_document& document) {
  std::ostringstream text;
  document.save(text, "\t");
  return replaceFile(path, text.str());
}
