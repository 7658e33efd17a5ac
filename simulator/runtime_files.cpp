#include "simulator/runtime_files.h"

#include <unistd.h>

#include "platform/phone_root.h"
#include "simulator/files.h"

namespace simulator {
namespace {

constexpr char kMacFile[] = "/tmp/mac.tmp";
constexpr char kLogFile[] = "/tmp/log/phone.log";
constexpr std::size_t kMaxLog = 64 << 10;

}  // namespace

void writeMacFile(const std::string& mac) {
  const std::string path = phonePath(kMacFile);
  if (mac.empty()) {
    ::unlink(path.c_str());
  } else {
    replaceFile(path, mac);
  }
}

void writeStartLine(const std::string& line) {
  const std::string path = phonePath(kLogFile);
  std::string text = readFile(path).value_or("") + line + "\n";
  if (text.size() > kMaxLog) text.erase(0, text.size() - kMaxLog);
  replaceFile(path, text);
}

}  // namespace simulator
