// Forms: any body is read, however it comes in pieces. Input: the content type, a line end, the body.
#include <filesystem>

#include "fuzz/phone.h"
#include "host/form_reader.h"
#include "host/http_text.h"
#include "tests/support/part_text.h"

namespace {

void checkFields(const host::Fields& fields) {
  for (const auto& field : fields.all()) {
    std::string texts = field.name;
    for (const auto& value : field.values) texts += value;
    require(texts.find('\0') == std::string::npos, "no NUL in a name or a value");
    require(fields.first(field.name) != nullptr, "a field is found by its name");
  }
}

void readForm(const std::string& type, std::string_view bytes, bool patternFirst) {
  host::UploadFiles uploads(fuzzedPhone());
  host::Body body("/tmp");
  body.gathered().append(bytes);
  host::FormReader reader(type, body, uploads);
  if (patternFirst) uploads.setPattern("/tmp/upload/XXXXXX");
  checkFields(reader.fields());
  uploads.setPattern("/tmp/upload/XXXXXX");
  checkFields(reader.fieldsWithFiles());
  require(reader.error() == host::FieldResult::kOk || reader.fields().empty(), "a refused form counts as empty");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = inputText(data, size);
  const std::string type(takeUpTo(input, '\n'));
  const std::string boundary = host::headerParameter(type, "boundary");
  const std::string whole = partsOf(input, boundary, 1 << 20);
  for (const std::size_t piece : {1u, 3u, 64u}) {
    // A broken body may be noticed later in small pieces, when some of its last part was already passed on.
    const std::string pieces = partsOf(input, boundary, piece);
    require(whole.ends_with('!') ? pieces.ends_with('!') : pieces == whole,
            "the pieces in which a body comes do not matter");
  }
  const std::filesystem::path folder = fuzzedPhone() / "tmp/upload";
  std::filesystem::create_directories(folder);
  readForm(type, input, true);
  readForm(type, input, false);
  require(std::filesystem::is_empty(folder), "no upload is left behind");
  return 0;
}
