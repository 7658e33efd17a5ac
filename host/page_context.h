// What templates learn of the request beside the handler's list.
#pragma once

#include <memory>
#include <string>

#include "host/session_store.h"

namespace host {

struct PageContext {
  std::string language;
  std::string phoneType;
  std::string page;                  // the value of p
  std::shared_ptr<Session> session;  // of the browser; null when it has none
  bool sessionEnded = false;         // by the request, which has had no new one since

  // Who is logged in; empty when nobody is.
  std::string user() const {
    const char* name = session ? session->getAttribute("user") : nullptr;
    return name ? name : "";
  }
};

}  // namespace host
