#include "framework/user_photo.h"

#include <algorithm>
#include <string>

#include "framework/file_utils.h"
#include "framework/shell_command.h"
#include "framework/text_utils.h"

namespace {

constexpr char kScript[] = "/phone/scripts/imageScale.sh";
constexpr char kResultFile[] = "/tmp/imageScale.out";

// The first decimal number in the script's result file.
int scriptResult() {
  std::string text;
  readFile(kResultFile, text);
  std::size_t start = std::min(text.find_first_of("0123456789"), text.size());
  const std::size_t end = text.find_first_not_of("0123456789", start);
  if (start > 0 && text[start - 1] == '-') --start;
  return parseInt(text.substr(start, end - start)).value_or(0);
}

}  // namespace

int ProcessUserPhoto(const char* source, const char* destination, int width, int height, std::int64_t byteLimit) {
  if (!source || !destination) return 0;
  removeFile(kResultFile);  // of an earlier picture
  CommandShell(ShellCommand(kScript)
                   .path(source)
                   .word(std::to_string(width))
                   .word(std::to_string(height))
                   .path(destination)
                   .word(std::to_string(byteLimit)));
  removeFile(source);
  return scriptResult();
}
