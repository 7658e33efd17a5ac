// A text message on its way from the form to the SIP client of an account.
#pragma once

#include <pugixml.hpp>
#include <string>

#include "framework/servlet_base.h"

struct TextMessage {
  std::string text;
  std::string user, server;  // of the recipient, both empty when it is not of the form user@server
  const char* fault;         // the notice that says why it cannot be sent; null when it can

  std::string address() const { return "sip:" + user + "@" + server; }
};

// The message that the form holds. What it may take in all is what a message to the SIP client holds: nothing is cut.
TextMessage messageOf(HttpRequest* request);

// Adds a message as one that an account (its index) sends now.
void addMessage(pugi::xml_node list, const TextMessage& message, int account);

// Hands it to the account's SIP client; false when that does not take it.
bool handOver(const TextMessage& message, int account);
