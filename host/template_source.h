// A template's text with the files it pulls in.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// Where a template is wrong: `file` as given, line from 1 on (0: the file as a whole).
struct TemplateFault {
  std::string file;
  std::size_t line = 0;
  std::string text;
};

// The joined text: every {{>NAME}} is replaced by the file include/<name in lower case>.htm beside the template, so
// that values are escaped for the place where they stand in the whole page.
class TemplateSource {
 public:
  static constexpr int kMaxDepth = 8;
  static constexpr std::size_t kMaxBytes = 4 * 1024 * 1024;

  // Reads the file at `path`. When something is wrong, `fault` says what and the text is of no use. Checked are: the
  // AUTOESCAPE pragma at the top, that every marker is closed, that sections nest, that included files are there.
  static bool load(const std::string& path, TemplateSource& source, TemplateFault& fault);

  const std::string& text() const { return text_; }
  // True when one of the files differs from what was read.
  bool changed() const;

  // The first marker up to which the text does not satisfy `parses`; for faults that only the template library sees.
  template <class Parses>
  TemplateFault locate(const Parses& parses) const;

 private:
  struct File {
    std::string path;
    struct stat status;
  };
  struct Mark {
    std::size_t end;  // in the text
    std::size_t file, line;
    std::string closers;  // what would end the sections that are open there
  };
  class Loader;

  std::string text_;
  std::vector<File> files_;
  std::vector<Mark> marks_;
};

template <class Parses>
TemplateFault TemplateSource::locate(const Parses& parses) const {
  std::size_t low = 0, high = marks_.size();
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    if (parses(text_.substr(0, marks_[middle].end) + marks_[middle].closers)) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  if (marks_.empty()) return {files_.front().path, 0, "refused"};
  const Mark& mark = marks_[std::min(low, marks_.size() - 1)];
  return {files_[mark.file].path, mark.line, "refused here or shortly before"};
}

}  // namespace host
