#include "host/static_files.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <array>
#include <climits>
#include <cstdio>
#include <utility>

#include "host/fields.h"
#include "host/http_text.h"

namespace host {
namespace {
// The file's path without links; empty when it does not exist.
std::string realPath(const std::string& path) {
  std::array<char, PATH_MAX> real;
  return ::realpath(path.c_str(), real.data()) ? real.data() : std::string();
}

// Every part of a plain path has a name that does not begin with a dot.
bool isPlainPath(std::string_view path) {
  if (!path.starts_with('/') || path.ends_with('/') || path.find('\0') != std::string_view::npos) return false;
  return path.find("//") == std::string_view::npos && path.find("/.") == std::string_view::npos;
}

struct OpenFile {
  FileHandle file;
  struct stat status;
};

std::optional<OpenFile> openRegular(const std::string& path) {
  OpenFile open{FileHandle(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW)), {}};
  if (!open.file || ::fstat(open.file.get(), &open.status) != 0 || !S_ISREG(open.status.st_mode)) return std::nullopt;
  return open;
}

// A compressed copy that is clearly older than its file was not made from it. Copying a tree may mix the order up a
// bit.
bool isCurrentCopy(const struct stat& copy, const std::string& path) {
  constexpr time_t kSlack = 10;
  struct stat original;
  return ::stat(path.c_str(), &original) == 0 && original.st_mtim.tv_sec <= copy.st_mtim.tv_sec + kSlack;
}

std::string etagOf(const struct stat& status, bool compressed) {
  std::array<char, 80> text;
  std::snprintf(text.data(), text.size(), "\"%llx-%llx-%llx%s\"",
                static_cast<unsigned long long>(status.st_mtim.tv_sec),
                static_cast<unsigned long long>(status.st_mtim.tv_nsec),
                static_cast<unsigned long long>(status.st_size), compressed ? "-gz" : "");
  return text.data();
}
Answer answerWith(OpenFile open, const StaticRequest& request, std::string_view fileName, bool compressed) {
  Answer answer;
  const std::string etag = etagOf(open.status, compressed);
  answer.headers = {{"ETag", etag}, {"Cache-Control", "no-cache"}};
  if (matchesEtag(request.ifNoneMatch, etag)) {
    answer.status = 304;
    return answer;
  }
  answer.headers.push_back({"Content-Type", std::string(mediaTypeOf(fileName))});
  answer.fileSize = static_cast<std::size_t>(open.status.st_size);
  answer.file = std::move(open.file);
  return answer;
}

bool isPictureOrSound(std::string_view type) {
  return (type.starts_with("image/") && type != "image/svg+xml") || type.starts_with("audio/");
}
}  // namespace

std::string_view mediaTypeOf(std::string_view fileName) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 19> kTypes{
      {{".html", "text/html; charset=utf-8"},
       {".htm", "text/html; charset=utf-8"},
       {".css", "text/css; charset=utf-8"},
       {".js", "text/javascript; charset=utf-8"},
       {".mjs", "text/javascript; charset=utf-8"},
       {".json", "application/json"},
       {".txt", "text/plain; charset=utf-8"},
       {".xml", "text/xml"},
       {".svg", "image/svg+xml"},
       {".png", "image/png"},
       {".jpg", "image/jpeg"},
       {".jpeg", "image/jpeg"},
       {".gif", "image/gif"},
       {".webp", "image/webp"},
       {".bmp", "image/bmp"},
       {".ico", "image/x-icon"},
       {".woff2", "font/woff2"},
       {".wav", "audio/wav"},
       {".webmanifest", "application/manifest+json"}}};
  const std::string_view ending = fileName.substr(std::min(fileName.rfind('.'), fileName.size()));
  for (const auto& [known, type] : kTypes) {
    if (equalsIgnoreCase(ending, known)) return type;
  }
  return "application/octet-stream";
}

StaticFiles::StaticFiles(const std::filesystem::path& folder) : folder_(realPath(folder.string())) {
  if (!folder_.empty()) folder_ += '/';
}

std::string StaticFiles::locate(std::string_view path) const {
  const std::string plain = percentDecode(path.substr(0, path.find('?')), false);
  if (folder_.empty() || !isPlainPath(plain)) return {};
  std::string file = realPath(folder_ + plain.substr(1));
  return file.starts_with(folder_) ? file : std::string();
}

std::optional<Answer> StaticFiles::answer(const StaticRequest& request) const {
  const std::string path = locate(request.path);
  if (path.empty()) return std::nullopt;
  std::optional<OpenFile> open;
  if (acceptsGzip(request.acceptEncoding)) open = openRegular(path + ".gz");
  const bool compressed = open && isCurrentCopy(open->status, path);
  if (!compressed) open = openRegular(path);
  if (!open) return std::nullopt;
  Answer answer = answerWith(std::move(*open), request, path, compressed);
  answer.headers.push_back({"Vary", "Accept-Encoding"});
  if (compressed && answer.file) answer.headers.push_back({"Content-Encoding", "gzip"});
  return answer;
}

std::optional<Answer> userFile(const std::filesystem::path& folder, const StaticRequest& request) {
  const std::string name = percentDecode(request.path, false);
  if (!isPlainPath("/" + name) || name.find('/') != std::string::npos || !isPictureOrSound(mediaTypeOf(name)))
    return {};
  auto open = openRegular(folder / name);
  if (!open) return {};
  Answer answer = answerWith(std::move(*open), request, name, false);
  answer.setHeader("Cache-Control", "private, no-cache");
  return answer;
}

}  // namespace host
