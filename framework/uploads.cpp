#include "framework/uploads.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string_view>

#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/text_utils.h"
#include "platform/log.h"
#include "platform/phone_root.h"

namespace {

constexpr std::size_t kPatternEnd = 6;  // characters that make an upload's path unique
constexpr std::int64_t kConfigReserve = 5119;

bool folderExists(const char* path) {
  struct stat status {};
  return stat(phonePath(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

bool CheckUploadFile(HttpRequest* request, const char* partition, const char* folder, std::string* error, bool replace,
                     std::int64_t maximum, std::int64_t reserve) {
  if (!request || !partition || !folder || !error) return false;
  if (!folderExists(folder)) {
    *error = "Error:The destination folder does not exist!";
    return false;
  }
  const std::int64_t length = request->getContentLength();
  const std::int64_t total = replace ? length : length + 1 + GetDirSize(folder);
  const std::int64_t free = GetPartionFreeSize(partition);
  log_log(kWebLog, kLogInfo, "ContentLength = %lld, TotleSize = %lld, partion_free_size = %lld, iLeastSize=%lld\n",
          static_cast<long long>(length), static_cast<long long>(total), static_cast<long long>(free),
          static_cast<long long>(reserve));
  if (total <= maximum && length <= free - reserve) return true;
  *error = "No space left!";
  return false;
}

bool CheckConfigFreeSize(HttpRequest* request, HttpResponse* response, const char* existing, bool isFolder) {
  if (!request || !response || !existing) return false;
  const std::int64_t replaced = isFolder ? GetDirSize(existing) : GetFileSize(existing);
  if (request->getContentLength() < GetPartionFreeSize("/config/") - kConfigReserve + replaced) return true;
  SetNoticePage(response, false, "notice", "Error:No space left!");
  return false;
}

std::string uploadedFile(HttpRequest* request, const char* field, const char* pattern) {
  request->setUploadFileTemplate(pattern);
  const char** values = request->getParameterValues(field);
  const std::string_view path = values && values[0] ? values[0] : "";
  const std::string_view front(pattern, std::strlen(pattern) - kPatternEnd);
  const bool stored =
      path.size() == front.size() + kPatternEnd && path.starts_with(front) && isPlainName(path.substr(front.size()));
  if (!stored && !path.empty()) log_log(kWebLog, kLogWarning, "uploadedFile() %s is no file\n", field);
  return stored ? std::string(path) : "";
}

std::string uploadedFileName(HttpRequest* request, const char* field) {
  const char** values = request->getParameterValues(field);
  std::string name;
  if (values && values[0] && values[1]) GetSimpleUpdateFileName(values[1], &name);
  return name;
}

bool RenameUploadFile(const char* upload, const char* target) {
  if (!upload || !target) return false;
  const std::string to = phonePath(target);
  unlink(to.c_str());
  return std::rename(phonePath(upload).c_str(), to.c_str()) == 0;
}
