// Firmware that comes in: any content type and any body. Input: the content type, a line end, the body.
#include <fstream>
#include <iterator>

#include "fuzz/phone.h"
#include "tests/support/fake_http.h"

extern "C" HttpServlet* createSettingsUpgradeServlet();

namespace {

namespace fs = std::filesystem;

// The image that is stored when the body has come in pieces of that size; empty when none is.
std::string stored(const std::string& type, std::string_view body, int pieceSize) {
  static HttpServlet* const page = createSettingsUpgradeServlet();
  const fs::path image = fuzzedPhone() / "data/firmware.img";
  fs::remove(image);
  FakeRequest request{{"q", "upgrade"}};
  request.contentType = type;
  request.body = body;
  request.pieceSize = pieceSize;
  RecordingResponse response;
  const bool done = page->onRequest(&request, &response) == 1;
  require(response.status == 200 && response.body.empty(), "nothing is answered");
  require(!fs::exists(fuzzedPhone() / "data/firmware.img.new"), "nothing is left behind");
  require(fs::exists(image) == done, "what was installed is stored, and nothing else");
  std::ifstream file(image, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = inputText(data, size);
  const std::string type = takeLine(input);
  const std::string whole = stored(type, input, 1 << 20);
  require(whole.empty() || (whole.starts_with("PHONE-FIRMWARE 1\n") && input.find(whole) != std::string_view::npos),
          "an image is a part of the body");
  require(stored(type, input, 3) == whole, "the pieces in which a body comes do not matter");
  return 0;
}
