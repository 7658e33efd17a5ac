// What happens in a request's turn: the filter, then the page.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "host/answer.h"
#include "host/body.h"
#include "host/page_table.h"
#include "host/request_head.h"
#include "host/session_store.h"
#include "host/template_renderer.h"

namespace host {

// What the host asks about the device it runs on.
struct Device {
  std::function<bool()> rebooting;             // true: every page is answered with 503
  std::function<std::uint64_t()> rebootCount;  // a change means that all sessions are gone
};

class ServletRunner {
 public:
  struct Settings {
    std::filesystem::path root;
    std::string spoolFolder;
    bool secureCookies = false;  // clients come over TLS
    Device device;
  };

  ServletRunner(PageTable& pages, Settings settings);

  // Answers one request to "/servlet". To be called by the handler thread alone; lets no exception out.
  Answer run(const RequestHead& head, Body& body);

  // The answer while the device reboots.
  static Answer rebootAnswer(bool asJson);

 private:
  Answer serve(const RequestHead& head, Body& body);
  void forgetSessionsAfterReboot();
  void addSessionCookie(const RequestHead& head, const PageContext& context, Answer& answer) const;

  PageTable& pages_;
  Settings settings_;
  SessionStore sessions_;
  TemplateRenderer renderer_;
  std::uint64_t reboots_ = 0;
};

inline constexpr const char* kSessionCookie = "PHONESESSION";

}  // namespace host
