// Running the actions of pages in a session.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/support/phone_test.h"

using Messages = std::vector<std::string>;

// The pages of the page list and their factories.
const std::map<std::string, std::string>& pageList();
// The handler of a page, from the module; as in a host it lives as long as the process.
HttpServlet& pageHandler(const std::string& page);
// The request filter, from the module.
HttpListener& pageFilter();

// A save, the messages that it sends and what is stored then. Fields and stored values are "name=value&name=value".
struct Save {
  std::string page, fields = "", messages = "", stored = "";
};

class PageTest : public PhoneTest {
 protected:
  PageTest() { session.attributes["user"] = "admin"; }

  RecordingResponse run(const std::string& page, const std::string& action, const std::string& fields = "");
  RecordingResponse load(const std::string& page, const std::string& fields = "") { return run(page, "load", fields); }
  RecordingResponse save(const std::string& page, const std::string& fields = "") { return run(page, "write", fields); }
  // The messages since the last look, joined by "; "; the question whether a call is in progress is left out.
  std::string announced();
  // Expects each save to lead back to the form, of the account that was saved, and to do what its row says.
  void expectSaves(const std::vector<Save>& saves);
  void expectStored(const std::string& values);

  FakeSession session;
};
