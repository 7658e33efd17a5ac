// The request filter: decides for every request whether its page may have it.
#pragma once

#include "framework/servlet_base.h"

class LoginListener : public HttpListener {
 public:
  // 1: the request goes on to its page. 0: it was answered here, by the way to the login form or a refusal.
  int onRequest(HttpRequest* request, HttpResponse* response) override;
};
