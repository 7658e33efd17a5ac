#include "simulator/runtime_files.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/phone_root.h"

namespace simulator {
namespace {

constexpr char kMacFile[] = "/tmp/mac.tmp";
constexpr char kLogFile[] = "/tmp/log/phone.log";
constexpr std::uintmax_t kMaxLog = 64 << 10;

}  // namespace

void writeMacFile(const std::string& mac) {
  const std::string path = phonePath(kMacFile);
  if (mac.empty()) {
    ::unlink(path.c_str());
  } else {
    std::ofstream(path, std::ios::trunc) << mac;
  }
}

void writeStartLine(const std::string& line) {
  const std::string path = phonePath(kLogFile);
  std::error_code none;
  const std::uintmax_t size = std::filesystem::file_size(path, none);
  std::ofstream(path, !none && size < kMaxLog ? std::ios::app : std::ios::trunc) << line << '\n';
}

void removeUnfinishedImage() {
  ::unlink(unfinishedImage().c_str());
}

std::string unfinishedImage() {
  const std::string folder = phonePath("/data/");
  return folder.empty() ? folder : folder + "firmware.img.new";
}

}  // namespace simulator
