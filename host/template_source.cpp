#include "host/template_source.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <utility>

namespace host {
namespace {
constexpr std::string_view kPragma = "{{%AUTOESCAPE ";

bool sameFile(const struct stat& a, const struct stat& b) {
  return a.st_ino == b.st_ino && a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
         a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

// The file's content and status; false when it is no readable file of bearable size.
bool readFile(const std::string& path, std::string& content, struct stat& status) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return false;
  bool sound = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
               static_cast<std::size_t>(status.st_size) <= TemplateSource::kMaxBytes;
  if (sound) {
    content.resize(static_cast<std::size_t>(status.st_size));
    const ssize_t count = ::read(file, content.data(), content.size());
    sound = count == static_cast<ssize_t>(content.size());
  }
  ::close(file);
  return sound;
}

bool isMarkerName(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(),
                                      [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; });
}

std::string lowerCase(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
  return out;
}
}  // namespace

// Joins the files. The first fault ends it.
class TemplateSource::Loader {
 public:
  Loader(TemplateSource& source, const std::string& path, TemplateFault& fault)
      : source_(source), path_(path), fault_(fault) {}

  bool failed() const { return !fault_.text.empty(); }

  void add(const std::string& path, int depth) {
    File file{path, {}};
    std::string content;
    if (!readFile(path, content, file.status)) {
      fault_ = {path, 0, "cannot be read"};
      return;
    }
    source_.files_.push_back(file);
    const std::size_t outer = std::exchange(file_, source_.files_.size() - 1);
    if (depth == 0 && !content.starts_with(kPragma)) fail(1, "does not begin with the AUTOESCAPE pragma");
    join(content, depth);
    file_ = outer;
  }

 private:
  void fail(std::size_t line, std::string text) {
    if (!failed()) fault_ = {source_.files_[file_].path, line, std::move(text)};
  }

  void append(std::string_view text) {
    if (source_.text_.size() + text.size() > kMaxBytes) return fail(0, "is too large with what it includes");
    source_.text_ += text;
  }

  void join(std::string_view rest, int depth) {
    const std::size_t sections = sections_.size();
    std::size_t line = 1;
    const auto take = [&](std::size_t count) {
      const std::string_view part = rest.substr(0, count);
      line += static_cast<std::size_t>(std::count(part.begin(), part.end(), '\n'));
      rest.remove_prefix(part.size());
      return part;
    };
    for (std::size_t open; !failed() && (open = rest.find("{{")) != std::string_view::npos;) {
      append(take(open));
      const std::size_t close = rest.find("}}");
      if (close == std::string_view::npos) return fail(line, "a marker is not closed");
      const std::size_t markerLine = line;
      marker(take(close + 2), markerLine, depth);
    }
    append(rest);
    if (sections_.size() > sections)
      return fail(sections_.back().second, "section " + sections_.back().first + " is not closed");
  }

  void marker(std::string_view whole, std::size_t line, int depth) {
    const std::string_view inner = whole.substr(2, whole.size() - 4);
    const char kind = inner.empty() ? '\0' : inner.front();
    const std::string name(inner.substr(std::min<std::size_t>(1, inner.size())));
    if (kind == '=') return fail(line, "changes the delimiters");
    if (kind == '>') return include(name, line, depth);
    if (kind == '%' && depth > 0) return;  // the page's own pragma counts
    if (kind == '#') openSection(name, line);
    if (kind == '/') closeSection(name, line);
    append(whole);
    if (kind != '!') source_.marks_.push_back({source_.text_.size(), file_, line, closers()});
  }

  void openSection(const std::string& name, std::size_t line) {
    if (!isMarkerName(name)) return fail(line, "section " + name + " has no valid name");
    sections_.emplace_back(name, line);
  }

  void closeSection(const std::string& name, std::size_t line) {
    if (sections_.empty() || sections_.back().first != name) {
      return fail(line, "section " + name + " is not the one to close here");
    }
    sections_.pop_back();
  }

  void include(const std::string& name, std::size_t line, int depth) {
    if (!isMarkerName(name)) return fail(line, "include " + name + " has no valid name");
    if (depth >= kMaxDepth) return fail(line, "includes nest too deeply");
    const auto file = std::filesystem::path(path_).parent_path() / "include" / (lowerCase(name) + ".htm");
    if (::access(file.c_str(), R_OK) != 0) return fail(line, "include " + name + " is missing");
    add(file.string(), depth + 1);
  }

  std::string closers() const {
    std::string out;
    for (auto section = sections_.rbegin(); section != sections_.rend(); ++section) {
      out += "{{/" + section->first + "}}";
    }
    return out;
  }

  TemplateSource& source_;
  const std::string& path_;
  TemplateFault& fault_;
  std::size_t file_ = 0;
  std::vector<std::pair<std::string, std::size_t>> sections_;  // those open, with their lines
};

bool TemplateSource::load(const std::string& path, TemplateSource& source, TemplateFault& fault) {
  source = {};
  fault = {};
  Loader loader(source, path, fault);
  loader.add(path, 0);
  return !loader.failed();
}

bool TemplateSource::changed() const {
  return std::any_of(files_.begin(), files_.end(), [](const File& file) {
    struct stat now;
    return ::stat(file.path.c_str(), &now) != 0 || !sameFile(file.status, now);
  });
}

}  // namespace host
