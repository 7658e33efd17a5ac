// The phone in software: what tests and the host's main program need of it beyond platform/.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

// Fills `root` from the delivered tree `rootfs` when it is missing or empty, and its "/config" from the factory
// defaults where that is missing. Throws std::runtime_error with a readable text when that fails, when `root` holds
// something else, or ":" is in its path.
void prepareRoot(const std::filesystem::path& root, const std::filesystem::path& rootfs);

// Takes `root` as the phone's root: loads its configuration (a broken file is kept aside and replaced by the factory
// defaults, with a log line), makes the certificate of its web server where that is missing, and starts with a fresh
// device state and an empty journal. `state` is merged into the device's, as setState() does; what is wrong with it is
// answered, and the phone is started without it. A process has one phone at a time; a further start replaces it. Not to
// be called while handlers run.
std::optional<std::string> start(const std::filesystem::path& root, const std::string& state = {});

// Merges a JSON object into the device's state, as the control's PATCH does. The error text names the member that is
// unknown or of a wrong type; the state is unchanged then. Safe from any thread.
std::optional<std::string> setState(const std::string& json);

// True while the phone reboots (state key "rebootSeconds"): no page is to be served then.
bool rebooting();

// How often the phone has begun to reboot since start(); a change means that sessions are gone.
std::uint64_t rebootCount();

// The files with the certificate and the key that the web server is to show, by their real paths: the one that
// "HttpsDevCert" chooses, then the phone's own for when that is missing. Safe from any thread, and never waits.
std::vector<std::string> webCertificates();

// Where log lines go; standard error by default ("log MODULE LEVEL text"), which null brings back. The line has no line
// end. The sink may be called while the phone is locked: it must not call platform/ or control().
void setLogSink(std::function<void(int module, int level, std::string_view line)> sink);

struct ControlReply {
  int status = 200;
  std::string contentType = "application/json";
  std::string body;
};

// One request to the HTTP control: the page for people at "/simulator/" itself, the JSON addresses "journal", "state",
// "config" and "reboot" below it. `path` begins with "/simulator/"; `query` holds decoded fields. A request that is not
// understood is answered with 400, 404 or 405 and {"error":"text"}. Never throws; safe from any thread and never waits
// for a page handler.
ControlReply control(const std::string& method, const std::string& path,
                     const std::map<std::string, std::string>& query, const std::string& body);

}  // namespace simulator
