// Captures of the network traffic: started, stopped and downloaded.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <string>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/phone_messages.h"
#include "framework/text_utils.h"
#include "platform/log.h"
#include "platform/os_services.h"
#include "platform/phone_root.h"
#include "servlet/settings/settings_upgrade_servlet.h"

namespace {
constexpr std::size_t kPathSize = 256;
constexpr std::size_t kBlockSize = 1024;
constexpr int kMaxClips = 1000;

// What a file's name and an answer's header can carry of a version.
std::string firmwareName() {
  std::string name = readConfigPlain("PhoneFirmware", kConfigValueSize);
  const auto isForbidden = [](unsigned char c) {
    return c < ' ' || c >= 0x7f || c == '/' || c == '\\' || c == '"' || c == ';';
  };
  std::ranges::replace_if(name, isForbidden, '_');
  return name;
}

std::string captureName() {
  const std::time_t now = osTime();
  std::tm local{};
  localtime_r(&now, &local);
  return firmwareName() + "_" + std::to_string(local.tm_hour) + "_" + std::to_string(local.tm_min) + "_" +
         std::to_string(local.tm_sec) + ".pcap";
}

enum class Sent { kNothing, kFile, kFailed };

// The file of that path, when there is one.
Sent sendFile(const std::string& path, HttpResponse* response) {
  const std::string real = phonePath(path);
  struct stat status {};
  if (real.empty() || stat(real.c_str(), &status) != 0) return Sent::kNothing;
  const int file = S_ISREG(status.st_mode) ? open(real.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK) : -1;
  if (file < 0) {
    log_log(kWebLog, kLogWarning, "PhoneUpgradeServlet::exportCapture(). failed to open file\n");
    return Sent::kFailed;
  }
  char block[kBlockSize];
  for (ssize_t count; (count = read(file, block, sizeof block)) > 0;)
    response->write(block, 1, static_cast<int>(count));
  close(file);
  return Sent::kFile;
}

// The capture, then the clips that were cut off a long one, up to one that cannot be read.
Sent sendAll(const std::string& capture, HttpResponse* response) {
  Sent all = sendFile(capture, response);
  const std::string prefix = readConfigPlain("PacketCapClipFilePrefix", kConfigValueSize);
  const int clips = std::min(readConfigNumber("PacketCapFileCount"), kMaxClips);
  for (int i = 0; i < clips && all != Sent::kFailed; ++i) {
    const Sent clip = sendFile(prefix + "-" + std::to_string(i) + ".pcap", response);
    if (clip != Sent::kNothing) all = clip;
  }
  return all;
}
}  // namespace

int SettingsUpgradeServlet::startCapture(HttpRequest*, HttpResponse* response) {
  sendMessage(kCaptureService, kStartCapture);
  sendMessage(kCaptureService, kCaptureState);
  response->sendRedirect("/servlet?p=settings-upgrade&q=load");
  return 1;
}

int SettingsUpgradeServlet::stopCapture(HttpRequest*, HttpResponse* response) {
  sendMessage(kCaptureService, kStopCapture);
  sendMessage(kCaptureService, kCaptureState);
  response->sendRedirect("/servlet?p=settings-upgrade&q=load");
  return 1;
}

int SettingsUpgradeServlet::exportCapture(HttpRequest*, HttpResponse* response) {
  const std::string name = captureName();
  std::string path = "/tmp/" + name;
  cutText(path, kPathSize);
  sendText(kCaptureService, kWriteCapture, path);
  response->setContentType("application/octet-stream");
  response->setHeader("Content-disposition", ("attachment; filename=" + name).c_str());
  response->setHeader("Accept-Ranges", "bytes");
  response->setHeader("Expires", "-1");
  const Sent sent = sendAll(path, response);
  removeFile(path.c_str());
  if (sent == Sent::kNothing) {
    response->print("Invalid file name.");
    log_log(kWebLog, kLogWarning, "PhoneUpgradeServlet::exportCapture() Invalid file name.\n");
  }
  return 1;
}
