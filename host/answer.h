// What goes back to a client, before HTTP gets hold of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/file_handle.h"

namespace host {

struct Header {
  std::string name, value;
};

struct Answer {
  int status = 200;
  std::vector<Header> headers;
  std::string body;
  FileHandle file;  // when open: the body instead
  std::size_t fileSize = 0;

  std::size_t size() const { return file ? fileSize : body.size(); }
  // Null when there is no such header.
  const std::string* header(std::string_view name) const;
  // Sets the header, in place of any of that name.
  void setHeader(std::string_view name, std::string value);
};

// The reason phrase of a status ("Not Found").
const char* reasonOf(int status);

// A small page of the host's own, or {"error":404,"message":"Not Found"}.
Answer errorAnswer(int status, bool asJson);

// Adds what every answer carries, where it is not set already; more to `secure` ones, which go over TLS.
void addCommonHeaders(Answer& answer, bool secure);

}  // namespace host
