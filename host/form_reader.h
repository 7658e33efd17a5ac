// The fields of a form in a request's body, parsed when they are first asked for.
#pragma once

#include <string>
#include <string_view>

#include "host/body.h"
#include "host/fields.h"
#include "host/multipart_reader.h"
#include "host/upload_files.h"

namespace host {

// File fields are stored when the uploads have a pattern by the time they are met. In a body that can be read again
// they are fetched later, when somebody looks at a field that was not stored; in a streamed one they are absent then.
//
// A broken or cut-off form keeps what was complete (log line). A field with a NUL or too many fields make the whole
// form count as empty; error() says so.
class FormReader {
 public:
  FormReader(std::string contentType, Body& body, UploadFiles& uploads)
      : contentType_(std::move(contentType)), body_(body), uploads_(uploads) {}

  // The fields, as far as the body is readable by now.
  const Fields& fields();
  // The same, with the files that a first parse had to leave out.
  const Fields& fieldsWithFiles();
  FieldResult error() const { return error_; }
  // True when a parse used up the bytes of a stream.
  bool consumedStream() const { return consumed_; }

 private:
  friend class FormCollector;
  void parse();
  void parseUrlEncodedBody();
  void parseMultipartBody();
  void fail(FieldResult error);

  std::string contentType_;
  Body& body_;
  UploadFiles& uploads_;
  Fields fields_;
  Fields retired_;  // of an earlier parse: handlers may still hold their texts
  FieldResult error_ = FieldResult::kOk;
  bool parsed_ = false;
  bool consumed_ = false;
  bool filesLeftOut_ = false;
};

}  // namespace host
