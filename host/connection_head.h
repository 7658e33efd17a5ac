// The head of a request as libmicrohttpd has read it.
#pragma once

#include <microhttpd.h>

#include <string>
#include <string_view>

#include "host/request_head.h"

namespace host {

// What the server notes of a connection.
struct Peer {
  std::string address;
  bool secure = false;  // comes over TLS
  std::string target;   // of the request that has just come in, as received
};

// The header's value; empty when absent. Good until the request ends.
std::string_view headerOf(MHD_Connection* connection, const char* name);

RequestHead readHead(MHD_Connection* connection, const Peer& peer, const char* method, std::string_view version);

}  // namespace host
