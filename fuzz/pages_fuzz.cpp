// Every page, and the request filter, with any form. Input: requests to a fresh phone, one a line:
//   PAGE[@USER]?FIELD=VALUE&FIELD=VALUE...   as a browser encodes them; a VALUE "@NAME:BYTES" is an uploaded file.
// The page "filter" is the filter; what follows its "?" is then the query as it came.
#include <dlfcn.h>

#include "framework/servlet_base.h"
#include "fuzz/phone.h"
#include "host/fields.h"
#include "host/page_table.h"
#include "host/upload_files.h"
#include "template/template_list.h"
#include "tests/support/fake_http.h"

namespace {

class FuzzedRequest : public FakeRequest {
 public:
  const char** getParameterValues(const char* name) override {
    const auto field = fields.find(name);
    if (field == fields.end() || !field->second.starts_with('@')) return FakeRequest::getParameterValues(name);
    std::string_view upload = std::string_view(field->second).substr(1);
    browserName_ = takeUpTo(upload, ':');
    uploads_.setPattern(uploadTemplate);
    path_ = uploads_.hasPattern() ? uploads_.open() : "";
    if (path_.empty() || !uploads_.write(upload)) return nullptr;
    upload_[0] = path_.c_str();
    upload_[1] = browserName_.c_str();
    return upload_;
  }

 private:
  host::UploadFiles uploads_{fuzzedPhone()};
  std::string path_, browserName_;
  const char* upload_[3] = {};
};

// The handlers, which nobody ever deletes.
host::PageTable& pages() {
  static host::PageTable* const table =
      new host::PageTable(fuzzedPhone() / "phone/www/WEB-INFO/pages.conf",
                          [](const std::string& factory) { return dlsym(RTLD_DEFAULT, factory.c_str()); });
  require(table->size() > 20, "the pages are found");
  return *table;
}

void checkAnswer(const RecordingResponse& response) {
  const auto isOneLine = [](const std::string& text) { return text.find_first_of("\r\n") == std::string::npos; };
  for (const std::string& location : response.redirects) require(isOneLine(location), "a redirect is one line");
  for (const auto& [name, value] : response.headers) require(isOneLine(name + value), "a header is one line");
  require(isOneLine(response.contentType), "a content type is one line");
  require(response.templates.size() <= 1, "one page is rendered");
  require(response.status != 500, "no handler fails");
}

void run(std::string_view line) {
  TemplateArena arena;
  FuzzedRequest request;
  std::string_view user = takeUpTo(line, '?');
  const std::string_view page = takeUpTo(user, '@');
  // "admin" on a page without a user, nobody before the filter.
  if (!user.empty() || page != "filter") request.ownSession.attributes["user"] = user.empty() ? "admin" : user;
  request.body = line;
  request.uri = "/servlet?" + request.body;
  host::Fields fields;
  host::parseUrlEncoded(line, fields);
  for (const auto& field : fields.all()) request.fields.emplace(field.name, field.values[0]);
  RecordingResponse response;
  if (page == "filter") {
    pages().filter().onRequest(&request, &response);
  } else if (HttpServlet* handler = pages().find(page)) {
    handler->onRequest(&request, &response);
  }
  checkAnswer(response);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  resetFuzzedPhone();
  pages().find("login")->init();  // nobody is locked out
  for (std::string_view input = inputText(data, size); !input.empty();) {
    const std::string_view line = takeUpTo(input, '\n');
    if (!line.empty() && line.find('\0') == std::string_view::npos) run(line);
  }
  return 0;
}
