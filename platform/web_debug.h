// The web server's debug output.
#pragma once

class WebDebug {
 public:
  enum LEVER { kDetail = 0, kNormal = 1, kErrors = 2 };

  static WebDebug& getInstance();
  void setDebugLevel(LEVER level);
  LEVER debugLevel() const { return level_; }

 private:
  LEVER level_ = kErrors;
};
