// The contract between the page handlers and the web server that loads them (the host).
//
// Text that crosses it is `const char*` owned by the giver for the length of the call. Paths are paths of the phone
// ("/phone/www/...", "/tmp/..."). Request, response and session belong to the host and live for one call of onRequest.
// The host runs one handler at a time. No exception crosses any of these functions.
#pragma once

// Template data: ordered lists of text variables and of loops, whose rows are lists again. They live until the host has
// ended the request; names and values are copied. Nobody frees them one by one.
struct TMPL_varlist;
struct TMPL_loop;

extern "C" {
// Appends text variables, given as name, value, name, value, ..., nullptr, to the list (a new one when `list` is null)
// and returns it. A null value counts as an empty text; a name added twice shows its later value.
TMPL_varlist* TMPL_add_var(TMPL_varlist* list, const char* name, const char* value, ...) __attribute__((sentinel));
// Appends a row to the loop (a new one when `loop` is null) and returns it.
TMPL_loop* TMPL_add_varlist(TMPL_loop* loop, TMPL_varlist* row);
// Appends the loop under `name` to the list (a new one when `list` is null) and returns the list. A null loop is one
// without rows.
TMPL_varlist* TMPL_add_loop(TMPL_varlist* list, const char* name, TMPL_loop* loop);
}

class HttpSession {
 public:
  virtual void setAttribute(const char* name, char* value) = 0;  // takes over the malloc'ed value
  virtual const char* getAttribute(const char* name) = 0;        // null when absent
  virtual void invalidate() = 0;
  virtual void setMaxInactiveInterval(int seconds) = 0;

 protected:
  ~HttpSession() = default;
};

class HttpRequest {
 public:
  virtual const char* getParameter(const char* name) = 0;         // null when absent
  virtual const char** getParameterValues(const char* name) = 0;  // ended by a null; null when absent
  virtual const char* getRequestURI() = 0;                        // as received: "/servlet?" and the query
  virtual const char* getRemoteAddr() = 0;
  virtual const char* getContentType() = 0;  // null when the request has none
  virtual int getContentLength() = 0;        // bytes; 0 without a body
  virtual void setLanguage(const char* name) = 0;
  virtual HttpSession* getSession(int create) = 0;
  // Where file fields are stored: a path ending in "XXXXXX". To be set before the first look at a file field, whose
  // values are then {path, the name the browser sent, null}.
  virtual void setUploadFileTemplate(const char* pattern) = 0;
  virtual int read(char* buffer, int length) = 0;  // raw body; 0 at its end or on failure

 protected:
  ~HttpRequest() = default;
};

class HttpResponse {
 public:
  virtual void setContentType(const char* type) = 0;
  virtual void setHeader(const char* name, const char* value) = 0;
  virtual void addHeader(const char* name, const char* value) = 0;
  virtual void sendRedirect(const char* location) = 0;
  virtual void sendError(int status) = 0;  // keeps a body that was already written
  virtual void print(const char* format, ...) __attribute__((format(printf, 2, 3))) = 0;
  virtual void write(const void* data, int size, int count) = 0;
  virtual void putChar(int byte) = 0;
  virtual void renderTemplate(const char* path, TMPL_varlist* list) = 0;
  virtual void setPhoneType(const char* model) = 0;

 protected:
  ~HttpResponse() = default;
};

// A page. The host calls init() once, then onRequest() per request, destory() at the end; it never deletes the object.
class HttpServlet {
 public:
  virtual int init() { return 0; }
  virtual int onRequest(HttpRequest* request, HttpResponse* response) = 0;
  virtual int destory() { return 0; }

 protected:
  ~HttpServlet() = default;
};

// A request filter, run before every page: 0 when it has answered the request, non-zero to let the page have it.
class HttpListener {
 public:
  virtual int init() { return 0; }
  virtual int onRequest(HttpRequest* request, HttpResponse* response) = 0;
  virtual int destory() { return 0; }

 protected:
  ~HttpListener() = default;
};
