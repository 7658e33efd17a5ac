// JSON that a browser keeps and asks for again.
#pragma once

#include <string>

#include "host/answer.h"
#include "host/request_head.h"

namespace host {

// 200 with an ETag, compressed where the browser takes that, or 304 when the browser has it.
Answer jsonAnswer(std::string json, const RequestHead& head);

}  // namespace host
