#include "fuzz/phone.h"

#include <cstdlib>

#include "fuzz/require.h"
#include "host/log.h"
#include "simulator/simulator.h"

namespace fs = std::filesystem;

namespace {

class Root {
 public:
  Root() {
    std::string pattern = (fs::temp_directory_path() / "phone_web_fuzz_XXXXXX").string();
    require(mkdtemp(pattern.data()) != nullptr, "a temporary folder can be made");
    path = fs::canonical(pattern) / "phone";
    simulator::setLogSink([](int, int, std::string_view) {});
    host::setLogSink([](std::string_view) {});
    simulator::prepareRoot(path, PHONE_WEB_ROOTFS);
    simulator::start(path);
  }
  ~Root() {
    std::error_code ignored;
    fs::remove_all(path.parent_path(), ignored);
  }
  Root(const Root&) = delete;
  Root& operator=(const Root&) = delete;

  fs::path path;
};

}  // namespace

const fs::path& fuzzedPhone() {
  static const Root root;
  return root.path;
}

void resetFuzzedPhone() {
  const fs::path& root = fuzzedPhone();
  for (const char* folder : {"config", "data", "tmp"}) fs::remove_all(root / folder);
  simulator::prepareRoot(root, PHONE_WEB_ROOTFS);
  simulator::start(root);
}
