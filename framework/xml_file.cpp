#include "framework/xml_file.h"

#include <sstream>
#include <string>

#include "framework/file_utils.h"
#include "platform/phone_root.h"

namespace {

// The writer turns control characters into references of two digits, which no strict reader takes: a file with one
// would be lost to the phone's applications. An "&" of a text is always escaped.
bool holdsControlCharacter(const std::string& text) {
  for (std::size_t at = 0; (at = text.find("&#", at)) != std::string::npos; ++at) {
    const std::string digits = text.substr(at + 2, 2);
    if (digits != "09" && digits != "10" && digits != "13") return true;
  }
  return false;
}

}  // namespace

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
  return !holdsControlCharacter(text.str()) && replaceFile(path, text.str());
}
