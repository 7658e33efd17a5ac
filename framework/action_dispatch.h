// From the field "q" of a request to the method that serves it.
#pragma once

#include <cstddef>
#include <string_view>

#include "framework/servlet_base.h"

template <class Page>
struct Action {
  const char* name;
  int (Page::*serve)(HttpRequest*, HttpResponse*);
};

enum class UnknownAction {
  kNotFound,  // status 404
  kIgnored,   // an empty answer
};

// Declares the answer to be HTML and calls the action that "q" names (exact comparison); its result is the result. A
// missing "q" is treated as an unknown action.
template <class Page, std::size_t N>
int dispatch(Page& page, const Action<Page> (&actions)[N], UnknownAction unknown, HttpRequest* request,
             HttpResponse* response) {
  response->setContentType("text/html");
  if (const char* name = request->getParameter("q")) {
    for (const Action<Page>& action : actions) {
      if (std::string_view(action.name) == name) return (page.*action.serve)(request, response);
    }
  }
  if (unknown == UnknownAction::kNotFound) response->sendError(404);
  return 1;
}
