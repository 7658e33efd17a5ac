// The page "login": logging in and out, and the lock-out of clients that guess passwords.
#pragma once

#include <ctime>
#include <string>

#include "framework/orb_hash_map.h"
#include "framework/servlet_base.h"

// One object serves all clients, one request at a time.
class LoginServlet : public HttpServlet {
 public:
  LoginServlet();

  int init() override;
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loginForm(HttpRequest* request, HttpResponse* response);
  int login(HttpRequest* request, HttpResponse* response);
  int logout(HttpRequest* request, HttpResponse* response);

  int refuse(HttpRequest* request, HttpResponse* response);
  bool isLockedOut(HttpRequest* request);
  std::string loginTarget(HttpRequest* request);

  OrbHashMap<std::string, int> failures_;  // failed attempts by client address
  std::time_t lockTime_ = 0;               // when a client was last locked out; shared by all
  bool failed_ = false;                    // the next form shows the error notice
  std::string savedUri_;                   // the Action URI to go on with after the login
};
