// Ini files: any bytes are read; what is stored comes back. Input: key, value and section, a line each, then the file.
#include <fstream>
#include <set>
#include <vector>

#include "fuzz/phone.h"
#include "platform/registry.h"
#include "simulator/config_store.h"
#include "simulator/ini_file.h"

namespace {

using simulator::IniFile;

// In an order of their own: keys above the first section move up when they are written.
std::multiset<std::string> entriesOf(const IniFile& file) {
  std::multiset<std::string> entries;
  file.visit([&entries](const std::string& section, const std::string& key, const std::string& value) {
    entries.insert(section + '\n' + key + '\n' + value);
  });
  return entries;
}

void put(const char* path, std::string_view bytes) {
  std::ofstream(fuzzedPhone() / path, std::ios::binary) << bytes;
}

void checkText(const std::string& bytes, const std::string& section, const std::string& key, const std::string& value) {
  require(simulator::decodeIniText(simulator::encodeIniKey(key)) == key, "a key is decoded to what it was");
  require(simulator::decodeIniText(simulator::encodeIniValue(value)) == value, "a value is decoded to what it was");
  IniFile file(bytes);
  file.set(section, key, value);
  const IniFile again(file.text());
  require(again.get(section, key) == value, "a value comes back");
  require(entriesOf(again) == entriesOf(file), "writing a file changes nothing in it");
  // The library may take the comment of the first section for the file's own once, and part them by blank lines.
  const std::string settled = IniFile(again.text()).text();
  require(IniFile(settled).text() == settled, "a file that was written again and again stays as it is");
}

void checkRegistry(const std::string& section, const std::string& key, const std::string& value) {
  const auto handle = registryOpen("/tmp/fuzz.ini", section.c_str(), RegistryFile::kMustExist);
  require(handle != nullptr, "any file can be opened");
  handle->registrySetString(key.c_str(), value.c_str());
  require(handle->registryFlush(), "the file can be written");
  const auto again = registryOpen("/tmp/fuzz.ini", section.c_str(), RegistryFile::kMustExist);
  require(again->registryGetString(key.c_str(), "none") == value, "the registry gives back what was stored");
  again->registryGetInt(key.c_str(), 0);
  std::vector<std::string> names;
  require(registrySections("/tmp/fuzz.ini", names), "sections can be listed");
}

// A configuration without factory defaults, which take long to read.
void checkConfig(const std::string& bytes, const std::string& key, const std::string& value) {
  std::filesystem::remove_all(fuzzedPhone() / "phone/factory");
  put("config/global.ini", bytes);
  put("config/account.ini", bytes);
  simulator::ConfigStore store;
  store.load();
  const std::string account = simulator::accountConfigName(key, 2);
  store.set({{key, value}, {account, value}});
  simulator::ConfigStore again;
  again.load();
  require(again.get(key) == value && again.get(account) == value, "the configuration survives a restart");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzzedPhone();
  std::string_view input = inputText(data, size);
  const std::string key = takeLine(input), value = takeLine(input), section = takeLine(input), bytes(input);
  checkText(bytes, section, key, value);
  put("tmp/fuzz.ini", bytes);
  checkRegistry(section, key, value);
  checkConfig(bytes, key, value);
  return 0;
}
