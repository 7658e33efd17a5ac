// The request as handlers see it.
#pragma once

#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/body.h"
#include "host/form_reader.h"
#include "host/page_context.h"
#include "host/request_head.h"
#include "host/rights.h"
#include "host/session_store.h"
#include "host/upload_files.h"

namespace host {

// Fields come from the query and then from the form. Texts given out live as long as the request.
class Request final : public HttpRequest {
 public:
  // A session of the browser's cookie is looked up (and kept alive) at once.
  Request(const RequestHead& head, Body& body, SessionStore& sessions, PageContext& context,
          const std::filesystem::path& root);

  const char* getParameter(const char* name) override;
  const char** getParameterValues(const char* name) override;
  const char* getRequestURI() override { return head_.target.c_str(); }
  const char* getRemoteAddr() override { return head_.remoteAddress.c_str(); }
  const char* getContentType() override { return head_.contentType ? head_.contentType->c_str() : nullptr; }
  int getContentLength() override;
  void setLanguage(const char* name) override { context_.language = name ? name : ""; }
  HttpSession* getSession(int create) override;
  void setUploadFileTemplate(const char* pattern) override { uploads_.setPattern(pattern ? pattern : ""); }
  int read(char* buffer, int length) override;

  // From now on, fields that may not be read are as good as absent. The rights must outlive the request; null takes the
  // limit away.
  void limitFields(Rights* rights) { rights_ = rights; }

  // Reads a gathered form, and says whether it can be had.
  bool formIsSound() { return !body_.rewindable() || (form_.fields(), formError() == FieldResult::kOk); }
  // What was wrong with the form, as far as it was looked at.
  FieldResult formError() const { return form_.error(); }

 private:
  Visitor visitor() const { return {head_.remoteAddress, head_.method == "POST", head_.secure}; }

  bool hides(const char* name) { return rights_ && !rights_->mayRead(name); }

  const RequestHead& head_;
  Body& body_;
  SessionStore& sessions_;
  PageContext& context_;
  UploadFiles uploads_;
  FormReader form_;
  Rights* rights_ = nullptr;
  std::size_t readAt_ = 0;
  std::vector<std::shared_ptr<Session>> held_;       // sessions whose texts a handler may hold
  std::deque<std::vector<const char*>> valueLists_;  // given out by getParameterValues
};

}  // namespace host
