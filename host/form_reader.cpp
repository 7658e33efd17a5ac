#include "host/form_reader.h"

#include <array>
#include <utility>

#include "host/http_text.h"
#include "host/log.h"
#include "host/multipart_reader.h"

namespace host {

// Turns the parts of one multipart body into fields.
class FormCollector final : public PartSink {
 public:
  explicit FormCollector(FormReader& reader) : reader_(reader) {}

  void beginPart(const PartHead& head) override {
    head_ = head;
    value_.clear();
    size_ = 0;
    if (!head.isFile) return;
    path_.clear();
    if (!reader_.uploads_.hasPattern()) {
      reader_.filesLeftOut_ = true;
    } else {
      path_ = reader_.uploads_.open();
    }
  }

  void partData(std::string_view bytes) override {
    size_ += bytes.size();
    if (head_.isFile) {
      if (!path_.empty() && !reader_.uploads_.write(bytes)) path_.clear();
    } else if (value_.size() + bytes.size() <= kMaxFieldBytes) {
      value_.append(bytes);
    } else {
      reader_.fail(FieldResult::kTooLarge);
    }
  }

  void endPart() override {
    if (head_.isFile) return endFile();
    take(reader_.fields_.add(head_.name, std::move(value_)));
  }

  // The body ended inside a part.
  void dropPart() {
    if (head_.isFile && !path_.empty()) reader_.uploads_.discard();
  }

 private:
  // A form without a chosen file sends an empty file without a name: that is no upload.
  void endFile() {
    if (path_.empty()) return;
    if (head_.fileName.empty() && size_ == 0) {
      reader_.uploads_.discard();
    } else {
      reader_.uploads_.close();
      take(reader_.fields_.addFile(head_.name, path_, head_.fileName));
    }
    path_.clear();
  }

  void take(FieldResult result) {
    if (result != FieldResult::kOk) reader_.fail(result);
  }

  FormReader& reader_;
  PartHead head_;
  std::string value_, path_;
  std::size_t size_ = 0;
};

const Fields& FormReader::fields() {
  if (parsed_ || !body_.readable()) return fields_;
  if (body_.rewindable() || uploads_.hasPattern() || !isMultipart()) {
    parse();
  } else {
    unwanted_ = true;
  }
  return fields_;
}

FieldResult FormReader::error() const {
  return unwanted_ && !parsed_ ? FieldResult::kTooLarge : error_;
}

bool FormReader::isMultipart() const {
  return mediaType(contentType_) == "multipart/form-data";
}

const Fields& FormReader::fieldsWithFiles() {
  if (fields(); filesLeftOut_ && body_.rewindable() && uploads_.hasPattern()) {
    retired_ = std::exchange(fields_, {});
    parse();
  }
  return fields_;
}

void FormReader::parse() {
  parsed_ = true;
  filesLeftOut_ = false;
  if (mediaType(contentType_) == "application/x-www-form-urlencoded") parseUrlEncodedBody();
  if (isMultipart()) parseMultipartBody();
  if (error_ != FieldResult::kOk) fields_ = {};
}

// Such a body is always gathered: a longer one was refused.
void FormReader::parseUrlEncodedBody() {
  std::string text(body_.gathered().size(), '\0');
  std::size_t size = 0;
  while (const std::size_t count = body_.read(size, text.data() + size, text.size() - size)) size += count;
  const FieldResult result = parseUrlEncoded(std::string_view(text).substr(0, size), fields_);
  if (result != FieldResult::kOk) fail(result);
}

void FormReader::parseMultipartBody() {
  FormCollector collector(*this);
  MultipartReader reader(headerParameter(contentType_, "boundary"), collector);
  std::array<char, 16 * 1024> piece;
  std::size_t offset = 0;
  bool sound = true;
  while (const std::size_t count = body_.read(offset, piece.data(), piece.size())) {
    offset += count;
    sound = sound && error_ == FieldResult::kOk && reader.feed({piece.data(), count});
  }
  consumed_ = !body_.rewindable();
  if (reader.complete()) return;
  collector.dropPart();
  logLine({"a form was cut off or is broken: what was complete counts"});
}

void FormReader::fail(FieldResult error) {
  if (error_ == FieldResult::kOk) error_ = error;
}

}  // namespace host
