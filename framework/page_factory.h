// How a page is handed to the host.
#pragma once

#include <exception>
#include <new>

#include "framework/servlet_base.h"
#include "platform/log.h"

// A handler whose onRequest() lets no exception out: it is logged, and the answer is status 500.
template <class Handler>
class Guarded final : public Handler {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override {
    try {
      return Handler::onRequest(request, response);
    } catch (const std::exception& error) {
      log_log(kWebLog, kLogError, "onRequest() failed: %s\n", error.what());
    } catch (...) {
      log_log(kWebLog, kLogError, "onRequest() failed\n");
    }
    response->sendError(500);
    return 0;
  }
};

// Defines the exported factory of a handler class; the host owns what it returns (null without memory).
#define PHONE_FACTORY(function, Interface, Handler)                         \
  extern "C" __attribute__((visibility("default"))) Interface* function() { \
    try {                                                                   \
      return new Guarded<Handler>;                                          \
    } catch (...) {                                                         \
      return nullptr;                                                       \
    }                                                                       \
  }                                                                         \
  static_assert(true)
