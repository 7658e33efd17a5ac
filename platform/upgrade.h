// The upgrade library: puts a firmware image in the place of the one that runs.
#pragma once

// Where the library takes an image from, and whom it tells how far it has come.
class IUpgrader {
 public:
  virtual ~IUpgrader() = default;
  // Non-zero when the stream can be read.
  virtual int OpenStream() = 0;
  // Reads up to `length` bytes, as many unless the stream ends: their number, 0 at the end.
  virtual int ReadStream(char* buffer, int length) = 0;
  virtual void CloseStream() = 0;
  virtual void OnRomBegin() {}
  virtual void OnDoneRomJudge() {}
  virtual void OnDownload(int /*received*/, int /*size*/) {}
  virtual void OnRomEnd() {}
  virtual void OnPrevInstall(const char* /*name*/, const char* /*version*/) {}
  virtual void OnSyncInstall() {}
  virtual void OnDoneInstall(const char* /*name*/, const char* /*version*/, bool /*done*/) {}
};

// Reads the image, checks it, installs it and restarts the phone. 0 when it was installed; anything else when it was
// not: the phone then keeps the firmware it has. The number asks for a restart when it is 1. Keeps the shared texts
// "romTranStat" ("preparing", "receiving", "done", "failed") and "romRecvSize" up to date.
int upui_Upgrade(IUpgrader* upgrader, int restart);
