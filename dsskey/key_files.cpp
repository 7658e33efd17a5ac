#include "dsskey/key_files.h"

#include "dsskey/page_files.h"
#include "framework/text_utils.h"

namespace dsskey {
namespace {

constexpr char kFolder[] = "/config/data/";

std::string moduleFile(int module) {
  return module >= 1 ? kFolder + ("expkey" + std::to_string(module - 1)) + ".xml" : "";
}

bool isBlank(const std::string& text) {
  return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace

std::string keyFilePath(DSSK_MODEL_TYPE family, int module) {
  switch (family) {
    case DSSK_MEMORY:
      return "/config/data/memkey.xml";
    case DSSK_LINE:
      return "/config/data/linekey.xml";
    case DSSK_PROGRAM:
      return "/config/data/programkey.xml";
    case DSSK_EXT:
      return moduleFile(module);
  }
  return {};
}

const char* rootName(DSSK_MODEL_TYPE family) {
  return family == DSSK_PROGRAM ? "programkey" : "dsskey";
}

const char* attributeName(DSSK_PARA_TYPE parameter) {
  constexpr const char* kNames[] = {"value", "line", "label", "extension"};
  return kNames[parameter];
}

pugi::xml_node findItem(pugi::xml_node root, DSSK_MODEL_TYPE family, int keyIndex) {
  pugi::xml_node item = keyIndex >= firstKey(family) ? root.child(kItem) : pugi::xml_node();
  for (int index = firstKey(family); item && index != keyIndex; ++index) item = item.next_sibling(kItem);
  return item;
}

int storedType(pugi::xml_node item) {
  return parseInt(item.attribute("type").value()).value_or(DT_NA);
}

bool loadForWriting(DSSK_MODEL_TYPE family, int module, pugi::xml_document& document) {
  const std::string path = keyFilePath(family, module);
  const XmlDocument stored = PageFiles::xml(path);
  if (!stored) return false;
  document.reset(*stored);
  if (document.child(rootName(family))) return true;
  return !document.first_child() && isBlank(PageFiles::text(path)) && document.append_child(rootName(family));
}

}  // namespace dsskey
