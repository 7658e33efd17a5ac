// The head of a request as libmicrohttpd has read it.
#pragma once

#include <microhttpd.h>

#include <string_view>

#include "host/exchange.h"
#include "host/request_head.h"

namespace host {

// The header's value; empty when absent. Good until the request ends.
std::string_view headerOf(MHD_Connection* connection, const char* name);

// `queryError` says what is wrong with the query's fields.
RequestHead readHead(MHD_Connection* connection, const Peer& peer, const char* method, FieldResult& queryError);

}  // namespace host
