// Keys in files that hold anything: they can be read, and a save either stores what was asked for or leaves the file as
// it is. Input: a line that names the family of the file ("line", "program", "module") or "blf", a line that is stored
// as a key's value, then the file or the list of busy lamps.
#include <fstream>
#include <iterator>

#include "dsskey/dsskey_k7x_model.h"
#include "fuzz/phone.h"

namespace {

struct File {
  DSSK_MODEL_TYPE family;
  const char* path;
};

File fileOf(const std::string& kind) {
  if (kind == "program") return {DSSK_PROGRAM, "config/data/programkey.xml"};
  if (kind == "module") return {DSSK_EXT, "config/data/expkey0.xml"};
  return {DSSK_LINE, "config/data/linekey.xml"};
}

void put(const char* path, std::string_view bytes) {
  std::ofstream(fuzzedPhone() / path, std::ios::binary) << bytes;
}

std::string content(const char* path) {
  std::ifstream stream(fuzzedPhone() / path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

Key_Display firstPage(Dsskey_K7X_Model& model, DSSK_MODEL_TYPE family) {
  Key_Display display;
  model.GetKeyIndexList(&display, family, 1);
  if (family == DSSK_EXT) {  // no module is attached
    display.status = kKeyRange;
    for (const int index : {0, 39}) display.keyIndexList.push_back(index);
  }
  return display;
}

void checkKeys(Dsskey_K7X_Model& model, DSSK_MODEL_TYPE family, const OrbList<DssKey>& keys) {
  for (const DssKey& key : keys) {
    require(model.CheckSupportDKtype(family, key.dktype), "a key has a type that its family offers");
    require(!key.line.choices.empty() || key.dktype == DT_LOCALGROUP, "a line has choices");
  }
}

void checkSave(Dsskey_K7X_Model& model, const File& file, const std::string& value) {
  OrbList<DssKey> keys;
  DssKey key;
  key.keyIndex = 2;
  key.dktype = DT_SPEEDDIAL;
  key.value.text = value;
  key.line.text = "1";
  keys.push_back(key);
  const std::string before = content(file.path);
  if (!model.SetDsskeyList(file.family, &keys, 1, true)) {
    require(content(file.path) == before, "a save that fails leaves the file");
    return;
  }
  DssKey stored;
  stored.keyIndex = 2;
  require(model.GetDsskey(&stored, file.family, 1, false), "a key that was saved can be read");
  require(stored.dktype == DT_SPEEDDIAL && stored.value.text == value && stored.line.text == "1",
          "a key comes back as it was saved");
  const std::string after = content(file.path);
  require(model.SetDsskeyList(file.family, &keys, 1, true) && content(file.path) == after, "a save is done once");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzzedPhone();
  std::string_view input = inputText(data, size);
  const std::string kind = takeLine(input), value = takeLine(input);
  const File file = fileOf(kind);
  if (kind == "blf") {
    put(file.path, "<dsskey><item type='39'/><item type='39'/></dsskey>");
    put("tmp/tmpBLFListValues", input);
  } else {
    put(file.path, input);
  }
  Dsskey_K7X_Model model;
  const Key_Display display = firstPage(model, file.family);
  OrbList<DssKey> keys;
  model.GetDsskeyList(&keys, file.family, &display, 1);
  checkKeys(model, file.family, keys);
  DssKey lamp;
  lamp.keyIndex = 2;
  lamp.dktype = DT_BLFLIST;
  require(model.GetBlfListDssKey(&lamp, file.family), "any list can be read");
  checkSave(model, file, value);
  return 0;
}
