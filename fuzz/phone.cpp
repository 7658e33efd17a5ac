#include "fuzz/phone.h"

#include "host/log.h"
#include "simulator/simulator.h"

namespace fs = std::filesystem;

const fs::path& fuzzedPhone() {
  static fs::path folder;
  if (!folder.empty()) return folder;
  std::string pattern = (fs::temp_directory_path() / "phone_web_fuzz_XXXXXX").string();
  require(mkdtemp(pattern.data()) != nullptr, "a temporary folder can be made");
  folder = fs::canonical(pattern) / "phone";
  std::atexit([] { fs::remove_all(folder.parent_path()); });
  simulator::setLogSink([](int, int, std::string_view) {});
  host::setLogSink([](std::string_view) {});
  simulator::prepareRoot(folder, PHONE_WEB_ROOTFS);
  simulator::start(folder);
  return folder;
}

void resetFuzzedPhone() {
  const fs::path& root = fuzzedPhone();
  for (const char* folder : {"config", "data", "tmp"}) fs::remove_all(root / folder);
  simulator::prepareRoot(root, PHONE_WEB_ROOTFS);
  simulator::start(root);
}
