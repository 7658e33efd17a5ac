#include "framework/user_photo.h"

#include <unistd.h>

#include <string>

#include "framework/file_utils.h"
#include "framework/accounts.h"
#include "framework/text_utils.h"
#include "platform/phone_root.h"

namespace {

constexpr char kScript[] = "/phone/scripts/imageScale.sh";
constexpr char kResultFile[] = "/tmp/imageScale.out";

std::string commandLine(const std::string& source, const std::string& destination, int width, int height, long limit) {
  return shellQuote(phonePath(kScript)) + " " + shellQuote(source) + " " + std::to_string(width) + " " +
         std::to_string(height) + " " + shellQuote(destination) + " " + std::to_string(limit);
}

int scriptResult() {
  std::string text;
  if (!readFile(kResultFile, text)) return 0;
  if (text.ends_with('\n')) text.pop_back();
  return parseInt(text).value_or(0);
}

}  // namespace

int ProcessUserPhoto(const char* source, const char* destination, int width, int height, long byteLimit) {
  if (!source || !destination) return 0;
  const std::string from = phonePath(source), to = phonePath(destination);
  if (from.empty() || to.empty()) {
    ::unlink(from.c_str());
    return 0;
  }
  ::unlink(phonePath(kResultFile).c_str());  // of an earlier picture
  CommandShell(commandLine(from, to, width, height, byteLimit).c_str());
  ::unlink(from.c_str());
  return scriptResult();
}
