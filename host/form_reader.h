// The fields of a form in a request's body, parsed when they are first asked for.
#pragma once

#include <string>
#include <string_view>

#include "host/body.h"
#include "host/fields.h"
#include "host/upload_files.h"

namespace host {

// File fields are stored when the uploads have a pattern by the time they are met. In a body that can be read again
// they are fetched later, when somebody looks at a field that was not stored. A streamed body is read only once there
// is a pattern: a form that long is of use to nobody who wants no file, and must not keep him waiting.
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
  FieldResult error() const;
  // True when a parse used up the bytes of a stream.
  bool consumedStream() const { return consumed_; }

 private:
  friend class FormCollector;
  bool isMultipart() const;
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
  bool unwanted_ = false;  // a streamed form was asked for fields by somebody who wants no files
};

}  // namespace host
