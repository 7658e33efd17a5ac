#include "host/multipart_reader.h"

#include <optional>

#include "host/http_text.h"

namespace host {
namespace {
constexpr std::size_t kMaxPadding = 63;  // blanks behind a boundary

// Browsers write a quote in a name as %22, some clients as \"; any other backslash belongs to the name.
std::string unescapeQuotes(std::string text) {
  for (std::size_t at = 0; (at = text.find("\\\"", at)) != std::string::npos; ++at) text.erase(at, 1);
  return text;
}

// True when `header` has the parameter, even an empty one.
bool hasParameter(std::string_view header, std::string_view name) {
  while (!header.empty()) {
    const std::string_view item = nextItem(header, ';');
    if (equalsIgnoreCase(trimBlanks(item.substr(0, item.find('='))), name)) return true;
  }
  return false;
}

std::optional<PartHead> parseDisposition(std::string_view value) {
  if (mediaType(value) != "form-data" || !hasParameter(value, "name")) return std::nullopt;
  return PartHead{unescapeQuotes(headerParameter(value, "name")), unescapeQuotes(headerParameter(value, "filename")),
                  hasParameter(value, "filename")};
}

// `lines` is the head of a part, each line with a CR LF in front.
std::optional<PartHead> parsePartHead(std::string_view lines) {
  while (lines.size() > 2) {
    lines.remove_prefix(2);
    const std::string_view line = lines.substr(0, lines.find("\r\n"));
    lines.remove_prefix(line.size());
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos || !equalsIgnoreCase(line.substr(0, colon), "Content-Disposition")) continue;
    return parseDisposition(line.substr(colon + 1));
  }
  return std::nullopt;
}
}  // namespace

MultipartReader::MultipartReader(std::string_view boundary, PartSink& sink)
    : sink_(sink), delimiter_("\r\n--" + std::string(boundary)), buffer_("\r\n") {
  if (boundary.empty() || boundary.size() > kMaxBoundary) state_ = State::kBroken;
}

bool MultipartReader::feed(std::string_view bytes) {
  if (state_ == State::kDone) return true;
  if (state_ == State::kBroken) return false;
  buffer_.append(bytes);
  while (step()) continue;
  buffer_.erase(0, at_);
  at_ = 0;
  return state_ != State::kBroken;
}

// One step; false when it needs more bytes or there is nothing left to do.
bool MultipartReader::step() {
  switch (state_) {
    case State::kPreamble:
    case State::kData:
      return readData();
    case State::kHead:
      return readHead();
    default:
      return false;
  }
}

void MultipartReader::emit(std::size_t count) {
  if (inPart_ && count) sink_.partData(rest().substr(0, count));
  at_ += count;
}

bool MultipartReader::readData() {
  const std::size_t found = rest().find(delimiter_);
  if (found == std::string_view::npos) {
    // The end may be the beginning of a delimiter.
    if (rest().size() >= delimiter_.size()) emit(rest().size() - delimiter_.size() + 1);
    return false;
  }
  emit(found);
  return passDelimiter(delimiter_.size());
}

// `rest()` begins with a delimiter, which ends at `end`; what follows tells whether it is a real one.
bool MultipartReader::passDelimiter(std::size_t end) {
  const std::string_view after = rest().substr(end);
  const bool last = after.starts_with("--");
  const std::size_t blanks = std::min(after.find_first_not_of(" \t"), after.size());
  const std::string_view lineEnd = after.substr(blanks, 2);
  const bool padded = blanks <= kMaxPadding;
  const bool unclear = padded && (lineEnd.empty() || lineEnd == "\r" || after == "-");
  if (!last && unclear) return false;
  if (!last && (!padded || lineEnd != "\r\n")) {
    emit(end);
    return true;
  }
  if (inPart_) sink_.endPart();
  inPart_ = false;
  at_ += last ? end + 2 : end + blanks;  // the line end stays: it stands before the first line of the head
  state_ = last ? State::kDone : State::kHead;
  return !last;
}

bool MultipartReader::readHead() {
  const std::size_t end = rest().find("\r\n\r\n");
  if (end == std::string_view::npos || end > kMaxPartHead) {
    if (rest().size() > kMaxPartHead) state_ = State::kBroken;
    return false;
  }
  const auto head = parsePartHead(rest().substr(0, end));
  at_ += end + 4;
  state_ = State::kData;
  if (head) sink_.beginPart(*head);
  inPart_ = head.has_value();
  return true;
}

}  // namespace host
