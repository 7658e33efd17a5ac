// One line a request.
#pragma once

#include <chrono>
#include <string>

#include "host/request_head.h"

namespace host {

// "127.0.0.1 GET /servlet?p=status&q=load 200 4711 1.3ms". Of a query only p and q are named: the others may be secret.
std::string accessLine(const RequestHead& head, int status, std::size_t bytes, std::chrono::microseconds duration);

}  // namespace host
