#include "framework/xml_file.h"

#include <sstream>
#include <string>

#include "framework/file_utils.h"
#include "platform/phone_root.h"

bool loadXml(const char* path, pugi::xml_document& document) {
  const pugi::xml_parse_result result = document.load_file(phonePath(path).c_str());
  if (result) return true;
  document.reset();
  return result.status != pugi::status_file_not_found && result.status != pugi::status_io_error &&
         result.status != pugi::status_out_of_memory;
}

bool saveXml(const char* path, const pugi::xml_document& document) {
  std::ostringstream text;
  document.save(text, "\t");
  return replaceFile(path, text.str());
}
