// What the simulator's tests share: short forms of its HTTP control.
#pragma once

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <string>

#include "platform/messaging.h"
#include "simulator/simulator.h"
#include "tests/support/phone_test.h"

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

inline simulator::ControlReply control(const std::string& method, const std::string& path, const std::string& body = "",
                                       const std::map<std::string, std::string>& query = {}) {
  return simulator::control(method, "/simulator/" + path, query, body);
}

inline nlohmann::json state() {
  return nlohmann::json::parse(control("GET", "state").body);
}

inline int ask(const char* thread, unsigned message, int wParam = 0) {
  return msgSendMsgToThread(msgGetThreadByName(thread), message, wParam, 0);
}
