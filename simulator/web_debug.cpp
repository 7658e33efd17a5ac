#include "platform/web_debug.h"

WebDebug& WebDebug::getInstance() {
  static WebDebug instance;
  return instance;
}

void WebDebug::setDebugLevel(LEVER level) {
  level_ = level;
}
