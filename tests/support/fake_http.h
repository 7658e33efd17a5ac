// A request, a session and a response without a web server.
#pragma once

#include <initializer_list>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "framework/servlet_base.h"
#include "template/template_list.h"

using Fields = std::multimap<std::string, std::string>;

// "name=value&name=value" taken apart as it stands.
Fields fieldsOf(const std::string& text);

// The values of words that are divided by blanks, joined by "|".
template <class ValueOf>
std::string joinedValues(const std::string& words, ValueOf valueOf) {
  std::istringstream stream(words);
  std::string joined;
  const char* separator = "";
  for (std::string word; stream >> word; separator = "|") joined += separator + valueOf(word);
  return joined;
}

// Null when there is none.
template <class Map>
const char* textIn(const Map& map, const std::string& name) {
  const auto found = map.find(name);
  return found == map.end() ? nullptr : found->second.c_str();
}

class FakeSession : public HttpSession {
 public:
  void setAttribute(const char* name, char* value) override;
  const char* getAttribute(const char* name) override { return textIn(attributes, name); }
  void invalidate() override { attributes.clear(), invalidated = true; }
  void setMaxInactiveInterval(int seconds) override { maxInactive = seconds; }

  std::map<std::string, std::string> attributes;
  int maxInactive = -1;  // never set
  bool invalidated = false;
};

class FakeRequest : public HttpRequest {
 public:
  FakeRequest() = default;
  // FakeRequest{{"p", "status"}, {"q", "load"}}
  FakeRequest(std::initializer_list<std::pair<const std::string, std::string>> values) : fields(values) {}

  const char* getParameter(const char* name) override { return textIn(fields, name); }
  const char** getParameterValues(const char* name) override;
  const char* getRequestURI() override { return uri.c_str(); }
  const char* getRemoteAddr() override { return address.c_str(); }
  const char* getContentType() override { return contentType.empty() ? nullptr : contentType.c_str(); }
  int getContentLength() override { return contentLength < 0 ? static_cast<int>(body.size()) : contentLength; }
  void setLanguage(const char* name) override { language = name; }
  HttpSession* getSession(int) override { return session; }
  void setUploadFileTemplate(const char* pattern) override { uploadTemplate = pattern; }
  int read(char* buffer, int length) override;

  Fields fields;
  std::string uri = "/servlet?";
  std::string address = "192.0.2.7";
  std::string contentType;  // empty: none
  std::string body;
  int contentLength = -1;   // that of the body
  int pieceSize = 1 << 20;  // bytes that a read gives at the most
  std::string language = "(not set)";
  std::string uploadTemplate;
  FakeSession ownSession;
  FakeSession* session = &ownSession;

 private:
  std::vector<const char*> values_;
  std::size_t bodyRead_ = 0;
};

class RecordingResponse : public HttpResponse {
 public:
  using Row = std::map<std::string, std::string>;

  void setContentType(const char* type) override { contentType = type; }
  void setHeader(const char* name, const char* value) override { headers.emplace_back(name, value); }
  void addHeader(const char* name, const char* value) override { headers.emplace_back(name, value); }
  void sendRedirect(const char* location) override { redirects.emplace_back(location); }
  void sendError(int code) override { status = code; }
  void print(const char* format, ...) override __attribute__((format(printf, 2, 3)));
  void write(const void* data, int size, int count) override;
  void putChar(int byte) override { body += static_cast<char>(byte); }
  void renderTemplate(const char* path, TMPL_varlist* list) override;
  void setPhoneType(const char* model) override { phoneType = model; }

  // Variables of the rendered page, their names divided by blanks, their values joined by "|"; "(absent)" stands for
  // one that was not given.
  std::string variable(const std::string& names) const;
  // One variable of each row of a loop, joined by "|".
  std::string column(const std::string& loop, const std::string& name) const;
  // Nothing was answered at all.
  bool untouched() const { return templates.empty() && redirects.empty() && body.empty() && status == 200; }

  std::string contentType, body, phoneType;
  std::vector<std::pair<std::string, std::string>> headers;
  std::vector<std::string> redirects;
  std::vector<std::string> templates;  // paths, in the order they were rendered
  std::vector<std::string> names;      // of all variables and loops of the last list, in order, repeats included
  Row variables;
  std::map<std::string, std::vector<Row>> loops;
  int status = 200;
};
