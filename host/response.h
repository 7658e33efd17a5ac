// The response as handlers see it.
#pragma once

#include <string>

#include "host/answer.h"
#include "host/page_context.h"
#include "host/rights.h"
#include "host/spool_buffer.h"
#include "host/template_renderer.h"

namespace host {

// Collects the answer of one request. A header whose name or value HTTP cannot carry, or that is the host's own
// business (lengths, connection), is dropped with a log line.
class Response final : public HttpResponse {
 public:
  static constexpr std::size_t kMemoryLimit = 256 * 1024;

  // `context` is what templates get; setPhoneType changes it. With `asJson` templates and errors are JSON.
  Response(TemplateRenderer& renderer, PageContext& context, std::string spoolFolder, bool asJson)
      : renderer_(renderer), context_(context), body_(kMemoryLimit, std::move(spoolFolder)), asJson_(asJson) {}

  void setContentType(const char* type) override;
  void setHeader(const char* name, const char* value) override;
  void addHeader(const char* name, const char* value) override;
  void sendRedirect(const char* location) override;
  void sendError(int status) override;
  void print(const char* format, ...) override __attribute__((format(printf, 2, 3)));
  void write(const void* data, int size, int count) override;
  void putChar(int byte) override;
  void renderTemplate(const char* path, TMPL_varlist* list) override;
  void setPhoneType(const char* model) override;

  // From now on, pages show what may be seen. The rights must outlive the response; null takes the limit away.
  void limit(Rights* rights) { rights_ = rights; }

  // The answer; the response is used up.
  Answer finish();

 private:
  bool carries(std::string_view name, std::string_view value) const;
  void fail(int status);

  TemplateRenderer& renderer_;
  PageContext& context_;
  SpoolBuffer body_;
  Answer answer_;
  bool asJson_;
  Rights* rights_ = nullptr;
};

}  // namespace host
