// Running the actions of a page in a session.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/phone_test.h"

using Messages = std::vector<std::string>;
using Fields = std::multimap<std::string, std::string>;

class PageTest : public PhoneTest {
 protected:
  PageTest() { session.attributes["user"] = "admin"; }

  template <class Page>
  RecordingResponse run(const std::string& action, Fields fields = {}) {
    Page page;
    FakeRequest request;
    request.session = &session;
    request.fields = std::move(fields);
    request.fields.emplace("q", action);
    return serve(page, request);
  }

  // What a save sends beside the question whether a call is in progress.
  Messages announced() {
    Messages all = messages();
    std::erase(all, "send app_hostapp 0x30007 0 1");
    return all;
  }

  // Saves a form; what it announced, or its answer when that is not the way back to the page.
  template <class Page>
  Messages saved(const std::string& page, Fields fields) {
    announced();
    const RecordingResponse answer = run<Page>("write", std::move(fields));
    EXPECT_EQ(answer.redirects, Messages{"/servlet?p=" + page + "&q=load"});
    return announced();
  }

  FakeSession session;
};
