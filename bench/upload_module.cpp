// A module for measuring uploads: a page "raw" that reads the body, and one "form" that takes the file of a form.
#include <cstdlib>

#include "framework/servlet_base.h"

namespace {

class LetAllIn : public HttpListener {
 public:
  int onRequest(HttpRequest*, HttpResponse*) override { return 1; }
};

class RawUpload : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override {
    static char buffer[1024];  // pages read in pieces of this size
    long total = 0;
    while (const int count = request->read(buffer, sizeof buffer)) total += count;
    response->print("%ld", total);
    return 1;
  }
};

class FormUpload : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override {
    request->setUploadFileTemplate("/tmp/bench_XXXXXX");
    const char** file = request->getParameterValues("file");
    response->print("%s", file ? "taken" : "nothing");
    return 1;
  }
};

}  // namespace

#define FACTORY(name, Interface, Handler)                               \
  extern "C" __attribute__((visibility("default"))) Interface* name() { \
    return new Handler;                                                 \
  }

FACTORY(createLoginListener, HttpListener, LetAllIn)
FACTORY(createRawUpload, HttpServlet, RawUpload)
FACTORY(createFormUpload, HttpServlet, FormUpload)
