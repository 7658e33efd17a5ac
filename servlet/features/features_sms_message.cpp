#include "servlet/features/features_sms_message.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "framework/accounts.h"
#include "framework/config_operate.h"
#include "framework/phone_messages.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "platform/os_services.h"

namespace {

constexpr std::size_t kNameSize = 128;
constexpr std::size_t kRecipientSize = 256;
constexpr std::size_t kPayloadSize = 1024;

std::string fieldOf(HttpRequest* request, const char* name) {
  const char* value = request->getParameter(name);
  return value ? value : "";
}

std::string accountText(const char* key, int account) {
  std::string text = readAccountConfigPlain(key, account, kConfigValueSize);
  cutUtf8(text, kNameSize);
  return text;
}

bool holdsControlCharacter(std::string_view text, std::string_view allowed) {
  return std::ranges::any_of(text, [&](char c) {
    return (static_cast<unsigned char>(c) < ' ' || c == '\x7f') && allowed.find(c) == std::string_view::npos;
  });
}

const char* faultOf(const TextMessage& message, std::string_view recipient) {
  if (recipient.size() >= kRecipientSize) return "Error:The recipient is too long!";
  if (message.text.size() + message.address().size() >= kPayloadSize) return "Error:The message is too long!";
  const bool isClean = !holdsControlCharacter(recipient, "") && !holdsControlCharacter(message.text, "\t\r\n");
  return isClean ? nullptr : "Error:The message holds control characters!";
}

}  // namespace

TextMessage messageOf(HttpRequest* request) {
  TextMessage message{fieldOf(request, "editMsgTxt"), "", "", nullptr};
  const std::string recipient = fieldOf(request, "editMsgTarget");
  OrbList<std::string> parts;
  String2List(parts, recipient, '@');
  if (parts.size() == 2) {
    message.user = parts.front();
    message.server = *std::next(parts.begin());
  }
  message.fault = faultOf(message, recipient);
  return message;
}

void addMessage(pugi::xml_node list, const TextMessage& message, int account) {
  std::string server = message.server, port;
  if (server.empty()) GetSipServerHost(server, port, account);
  pugi::xml_node item = list.append_child("item");
  const auto add = [&](const char* name, const std::string& value) {
    item.append_attribute(name).set_value(value.c_str());
  };
  add("from_name", accountText("AccountDisplayName", account));
  add("from_user_name", accountText("AccountUserName", account));
  add("from_server", server);
  add("text", message.text);
  add("to_name", message.user);
  add("to_user_name", message.user);
  add("to_server", message.server);
  add("status_type", "2");
  add("group_type", "3");
  add("time", std::to_string(osTime()));
}

bool handOver(const TextMessage& message, int account) {
  const std::string address = message.address();
  return postText((kSipClient + std::to_string(account)).c_str(), kSendTextMessage, message.text + address,
                  static_cast<int>(message.text.size()), static_cast<int>(address.size()));
}
