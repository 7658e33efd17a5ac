// What the requests of a server share.
#pragma once

#include <atomic>
#include <string>

#include "host/admission.h"
#include "host/server_settings.h"
#include "host/serving_threads.h"
#include "host/servlet_runner.h"
#include "host/static_files.h"

namespace host {

class PageTable;

struct ServerCore {
  ServerCore(PageTable& pages, ServerSettings serverSettings);

  bool rebooting() const { return settings.device.rebooting && settings.device.rebooting(); }

  const ServerSettings settings;
  const AdmissionRules rules;
  const std::string spoolFolder;
  const StaticFiles files;
  ServletRunner runner;
  ServingThreads threads;
  std::atomic<bool> stopping = false;
};

}  // namespace host
