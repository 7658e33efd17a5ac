// What a reader makes of a multipart body.
#pragma once

#include <string>
#include <string_view>

#include "host/multipart_reader.h"

// The parts as one text: "<NAME>BYTES</>" for each, "<NAME@FILE NAME>" for a file; "!" at the end when the body was not
// whole. The body comes in pieces of `size` bytes.
inline std::string partsOf(std::string_view body, std::string_view boundary, std::size_t size) {
  struct Sink final : host::PartSink {
    void beginPart(const host::PartHead& head) override {
      text += "<" + head.name + (head.isFile ? "@" + head.fileName : "") + ">";
    }
    void partData(std::string_view bytes) override { text += bytes; }
    void endPart() override { text += "</>"; }
    std::string text;
  } parts;
  host::MultipartReader reader(boundary, parts);
  for (; !body.empty(); body.remove_prefix(std::min(size, body.size()))) reader.feed(body.substr(0, size));
  return parts.text + (reader.complete() ? "" : "!");
}
