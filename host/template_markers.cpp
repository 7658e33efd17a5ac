#include "host/template_markers.h"

#include <algorithm>
#include <cctype>

namespace host {
namespace {

bool isNameCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

class MarkerHider {
 public:
  MarkerHider(std::string_view text, std::size_t maxTags) : text_(text), maxTags_(maxTags) {}

  // Nothing when there are too many tags.
  std::optional<std::string> run() {
    while (at_ < text_.size()) {
      if (text_.substr(at_).starts_with("{{")) {
        takeMarker();
      } else {
        takeCharacter();
      }
      if (tags_ > maxTags_) return std::nullopt;
    }
    return std::move(out_);
  }

 private:
  void takeMarker() {
    const std::string_view marker = nextMarker(text_, at_);
    const std::string_view name = markerName(marker);
    at_ = marker.empty() ? text_.size() : at_ + marker.size();
    if (name.empty()) return;
    if (quote_ != '\0') {
      out_ += marker;
    } else if (inTag_) {
      out_.append(" m").append(std::to_string(++attributes_)).append("=\"{{").append(name).append("}}\" ");
    } else {
      out_.append("<!--{{").append(name).append("}}-->");
    }
  }

  void takeCharacter() {
    const char c = text_[at_++];
    out_ += c;
    if (quote_ != '\0') {
      if (c == quote_) quote_ = '\0';
    } else if (inTag_) {
      if (c == '"' || c == '\'') quote_ = c;
      if (c == '>') inTag_ = false;
    } else if (c == '<' && at_ < text_.size()) {
      inTag_ = std::isalpha(static_cast<unsigned char>(text_[at_])) || text_[at_] == '/';
      tags_ += inTag_ ? 1 : 0;
    }
  }

  std::string_view text_;
  std::size_t maxTags_;
  std::size_t at_ = 0, tags_ = 0, attributes_ = 0;
  bool inTag_ = false;
  char quote_ = '\0';
  std::string out_;
};

}  // namespace

std::string_view nextMarker(std::string_view text, std::size_t at) {
  const std::size_t open = text.find("{{", at);
  const std::size_t close = open == std::string_view::npos ? open : text.find("}}", open);
  return close == std::string_view::npos ? std::string_view() : text.substr(open, close + 2 - open);
}

std::string_view markerName(std::string_view marker) {
  std::string_view name = marker.substr(2, marker.size() - 4);
  if (!name.empty() && (name.front() == '#' || name.front() == '/')) name.remove_prefix(1);
  const auto end = std::find_if_not(name.begin(), name.end(), isNameCharacter);
  return name.substr(0, static_cast<std::size_t>(end - name.begin()));
}

std::optional<std::string> markersAsHtml(std::string_view text, std::size_t maxTags) {
  return MarkerHider(text, maxTags).run();
}

}  // namespace host
