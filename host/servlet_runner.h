// What happens in a request's turn: the filter, then the page.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "host/answer.h"
#include "host/body.h"
#include "host/device.h"
#include "host/request_head.h"
#include "host/rights.h"
#include "host/rights_table.h"
#include "host/session_store.h"
#include "host/template_renderer.h"

namespace host {

class PageTable;
class Request;
class Response;
struct PageContext;

inline constexpr const char* kHomePage = "/servlet?p=status&q=load";

class ServletRunner {
 public:
  struct Settings {
    std::filesystem::path root;
    std::string spoolFolder;
    bool rights = true;  // what the templates say of who may see what holds
    Device device;
  };

  ServletRunner(PageTable& pages, Settings settings);

  // Answers one request to "/servlet". To be called in its turn alone; lets no exception out.
  Answer run(const RequestHead& head, Body& body);
  // Answers with the words of all settings that the client sees (host/settings_index.h), 403 when he is not logged in.
  // As above.
  Answer settings(const RequestHead& head);
  // True when the client is logged in. Safe from any thread.
  bool isLoggedIn(const RequestHead& head) const;

 private:
  template <class Serve>
  Answer guarded(const RequestHead& head, const Serve& serve);
  Answer serve(const RequestHead& head, Body& body);
  Answer serveSettings(const RequestHead& head);
  bool hasRights() const;
  std::optional<Rights> rightsOf(const PageContext& context, const char* action);
  bool runPage(const RequestHead& head, Body& body, Request& request, PageContext& context, Response& response);
  void forgetSessionsAfterReboot();
  void addSessionCookie(const RequestHead& head, const PageContext& context, Answer& answer) const;

  PageTable& pages_;
  Settings settings_;
  SessionStore sessions_;
  TemplateRenderer renderer_;
  RightsTable rights_;
  std::atomic<std::uint64_t> reboots_ = 0;
};

}  // namespace host
