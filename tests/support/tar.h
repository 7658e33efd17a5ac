// A tar archive, member by member.
#pragma once

#include <cstdio>
#include <string>

class Tar {
 public:
  Tar& file(const std::string& path, const std::string& content = "", int mode = 0644) {
    return member('0', path, "", static_cast<long>(content.size()), mode).bytes(content);
  }
  Tar& folder(const std::string& path, int mode = 0755) { return member('5', path, "", 0, mode); }
  // '1' hard link, '2' symbolic link, '3' and '4' devices, '6' pipe.
  Tar& special(char type, const std::string& path, const std::string& target = "") {
    return member(type, path, target, 0, 0644);
  }
  Tar& member(char type, const std::string& path, const std::string& target, long size, int mode) {
    if (path.size() > 100) member('L', "././@LongLink", "", static_cast<long>(path.size()) + 1, 0).bytes(path + '\0');
    std::string header(512, '\0');
    const auto put = [&header](std::size_t place, const std::string& text) {
      header.replace(place, text.size(), text);
    };
    put(0, path.substr(0, 100));
    put(100, octal(mode, 7));
    put(108, octal(0, 7));
    put(116, octal(0, 7));
    put(124, octal(size, 11));
    put(136, octal(0, 11));
    put(148, "        ");
    put(156, std::string(1, type) + target.substr(0, 100));
    put(257, "ustar  ");
    long sum = 0;
    for (const char c : header) sum += static_cast<unsigned char>(c);
    put(148, octal(sum, 6) + '\0');
    text_ += header;
    return *this;
  }
  Tar& bytes(const std::string& content) {
    text_ += content;
    text_.append((512 - content.size() % 512) % 512, '\0');
    return *this;
  }
  std::string text() const { return text_ + std::string(1024, '\0'); }

 private:
  static std::string octal(long number, int digits) {
    char text[24];
    std::snprintf(text, sizeof text, "%0*lo", digits, static_cast<unsigned long>(number));
    return text;
  }

  std::string text_;
};
