#include "host/json_answer.h"

#include <zlib.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

#include "host/http_text.h"

namespace host {
namespace {
constexpr int kGzipWindow = 15 + 16;  // the largest, in gzip's format
constexpr int kMemoryLevel = 8;       // zlib's usual one

// Nothing when there is no memory for it.
std::optional<std::string> gzip(std::string& text) {
  z_stream stream{};
  if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kGzipWindow, kMemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
    return std::nullopt;
  }
  std::string out(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(text.data());
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  const int result = deflate(&stream, Z_FINISH);
  out.resize(out.size() - stream.avail_out);
  deflateEnd(&stream);
  return result == Z_STREAM_END ? std::optional(std::move(out)) : std::nullopt;
}

std::string etagOf(const std::string& text, bool compressed) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  std::array<char, 32> etag;
  std::snprintf(etag.data(), etag.size(), "\"%016llx%s\"", static_cast<unsigned long long>(hash),
                compressed ? "-gz" : "");
  return etag.data();
}
}  // namespace

Answer jsonAnswer(std::string json, const RequestHead& head) {
  Answer answer;
  const std::string etag = etagOf(json, head.acceptsGzip);
  answer.headers = {{"ETag", etag}, {"Cache-Control", "private, no-cache"}, {"Vary", "Accept-Encoding"}};
  if (matchesEtag(head.ifNoneMatch, etag)) {
    answer.status = 304;
    return answer;
  }
  answer.setHeader("Content-Type", "application/json");
  std::optional<std::string> compressed = head.acceptsGzip ? gzip(json) : std::nullopt;
  if (compressed) answer.setHeader("Content-Encoding", "gzip");
  answer.body = compressed ? std::move(*compressed) : std::move(json);
  return answer;
}

}  // namespace host
