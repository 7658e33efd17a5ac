// Forms and uploads, whole and broken.
#include "host/form_reader.h"
#include "tests/host/host_test.h"
#include "tests/support/part_text.h"

namespace host {
namespace {
using host_test::part;

TEST(MultipartReader, KeepsWhatIsCompleteHoweverTheBodyIsCut) {
  const std::string a = part("name=\"a\"", "1");
  const std::pair<std::string, std::string> kCases[] = {
      {"preamble\r\n" + a + part("name=\"b\"", "") +
           part("name=\"f\"; filename=\"x;\\\"y.bin\"", "\r\n--BX\r\n--B-\r\n--") +
           "--B \t\r\nContent-Type: text/plain\r\nCONTENT-DISPOSITION: form-data; filename=\"\"; name=c\r\n"
           "\r\nv\r\n--B--\r\nepilogue --B\r\n",
       "<a>1</><b></><f@x;\"y.bin>\r\n--BX\r\n--B-\r\n--</><c@>v</>"},
      {"", "!"},
      {"no boundary at all", "!"},
      {a, "<a>!"},  // what may be the beginning of a boundary is held back
      {a + "--B", "<a>1!"},
      {a + "--B--", "<a>1</>"},
      {a + part("name=\"b\"", "cut").substr(0, 50), "<a>1</><b>!"},
      {a + "--B\r\nno colon\r\n\r\nlost\r\n" + a + "--B--", "<a>1</><a>1</>"},
      {a + part("filename=\"x\"", "nameless") + "--B--", "<a>1</>"},
      {a + "--B\r\nContent-Disposition: attachment; name=\"z\"\r\n\r\nz\r\n--B--", "<a>1</>"},
      {a + "--B\r\n" + std::string(9000, 'h') + "\r\n\r\nx\r\n--B--", "<a>1</>!"},
      {a + "--B" + std::string(63, '\t') + part("name=\"b\"", "2").substr(3) + "--B" + std::string(64, '\t') +
           "\r\n--B--",
       "<a>1</><b>2\r\n--B" + std::string(64, '\t') + "</>"},
      {a + "--B\r\n\r\nheadless\r\n--B--", "<a>1</>"},
  };
  for (const auto& [body, expected] : kCases) {
    for (std::size_t size = 1; size <= 400; ++size) ASSERT_EQ(partsOf(body, "B", size), expected) << size;
    EXPECT_EQ(partsOf(body, "B", 100'000), expected);
  }
  const std::string longest(300, 'b');
  EXPECT_EQ(partsOf("--\r\n" + part("name=\"a\"", "1"), "", 1000), "!");
  EXPECT_EQ(partsOf("--" + longest + "--", longest, 1000), "!");
}

// A gathered body with a form in it.
struct Form {
  explicit Form(const std::string& content) : body("/tmp") { body.gathered().append(content); }
  host_test::LogCapture log;
  TemporaryFolder root;
  Body body;
  UploadFiles uploads{root.path()};
  FormReader reader{"multipart/form-data; boundary=B; charset=utf-8", body, uploads};
};

TEST(FormReader, StoresFilesBelowTheRoot) {
  Form form(part("name=\"f\"; filename=\"my logo.png\"", std::string(200'000, 'x')) + part("name=\"after\"", "y") +
            part("name=\"none\"; filename=\"\"", "") + "--B--");
  // A look at a text field before the pattern is known costs nothing.
  EXPECT_EQ(*form.reader.fields().first("after"), "y");
  EXPECT_EQ(form.reader.fieldsWithFiles().first("f"), nullptr);
  form.uploads.setPattern("/tmp/logofile_XXXXXX");
  const Fields& fields = form.reader.fieldsWithFiles();
  ASSERT_EQ(fields.all().size(), 2U);  // a file field without a chosen file is absent
  const auto& values = fields.all()[0].values;
  EXPECT_EQ(values[0].substr(0, 14), "/tmp/logofile_");
  EXPECT_EQ(values[1], "my logo.png");
  EXPECT_EQ(file_size(form.root.path() / values[0].substr(1)), 200'000U);
  EXPECT_EQ(form.log.text(), "");
}

TEST(FormReader, RemovesWhatNobodyTook) {
  Form form(part("name=\"f\"; filename=\"a\"", "1") + part("name=\"g\"; filename=\"b\"", "2") +
            part("name=\"h\"; filename=\"c\"", "cut off"));
  {
    UploadFiles uploads(form.root.path());
    uploads.setPattern("/tmp/up_XXXXXX");
    FormReader reader("multipart/form-data; boundary=B", form.body, uploads);
    ASSERT_EQ(reader.fields().all().size(), 2U);
    EXPECT_EQ(form.root.list("tmp").size(), 2U);  // the one that was cut off is gone at once
    std::filesystem::rename(form.root.path() / reader.fields().first("f")->substr(1), form.root.path() / "tmp/taken");
  }
  EXPECT_EQ(form.root.list("tmp"), std::vector<std::string>{"taken"});
  EXPECT_EQ(form.log.text(), "a form was cut off or is broken: what was complete counts\n");
}

TEST(FormReader, RefusesPatternsOutsideTheRoot) {
  for (const char* pattern :
       {"tmp/x_XXXXXX", "/../x_XXXXXX", "/tmp/../../x_XXXXXX", "/tmp/x", "", "/missing/x_XXXXXX"}) {
    Form form(part("name=\"f\"; filename=\"a\"", "1") + "--B--");
    form.uploads.setPattern(pattern);
    EXPECT_EQ(form.reader.fieldsWithFiles().first("f"), nullptr) << pattern;
    EXPECT_NE(form.log.text(), "") << pattern;
  }
}

}  // namespace
}  // namespace host
