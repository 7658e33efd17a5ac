// Running the actions of pages in a session.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/support/phone_test.h"

using Messages = std::vector<std::string>;

// The pages of the page list and their factories.
const std::map<std::string, std::string>& pageList();
// What the walks over all pages need to know of a page beside its name: tests/pages/walk_records.json. What stands
// there for "*" holds for all pages.
struct WalkRecord {
  std::string action = "load";  // that opens the page
  std::string save = "write";   // that a form of the page stores with; empty when it stores nothing
  std::string noForm;           // why the page has no form of its own; empty when it has one
  std::string storedElsewhere;  // where its forms are stored; empty when that is the configuration
  Fields open;                  // further fields to open it
  Fields post;                  // fields that a save needs beside those of the form
  Values settings;              // configuration with which all of the form shows
  Values files;                 // files of the phone, hostile texts in them, before it is opened
  Values unstored;              // fields that are not stored under their own names, each with the reason
  Values ungiven;               // variables of the template that the page does not give, each with the reason
  Values unused;                // variables that the template does not use, each with the reason
};
WalkRecord walkRecord(const std::string& page);
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
  // Columns of a loop, their names divided by blanks: "1|2|3, 0|1|0".
  static std::string columns(const RecordingResponse& page, const std::string& loop, const std::string& names);
  static std::string columns(TMPL_loop* loop, const std::string& names);

  FakeSession session;
};
