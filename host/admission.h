// What is let in and where it goes, judged by a request's head alone.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/answer.h"
#include "host/request_head.h"

namespace host {

inline constexpr std::size_t kMaxTarget = 8 * 1024;           // of a request; 414 beyond
inline constexpr std::size_t kMaxGatheredBody = 1024 * 1024;  // received before the handler's turn

enum class Route { kStatic, kServlet, kSimulator, kHome, kUserFile, kSettings };

struct AdmissionRules {
  std::size_t maxUpload = 0;  // bytes of the longest body
  bool hasSimulator = false;
  std::vector<std::string> names = {};         // of the phone, as hostName() gives them, beside those it always goes by
  std::vector<std::string> userPrefixes = {};  // of the addresses of users' files
};

struct Refusal {
  int status = 0;
  std::vector<Header> headers;  // beside those of every answer
};

struct Admission {
  Route route = Route::kStatic;
  std::optional<Refusal> refusal;
  std::size_t maxBody = 0;  // bytes; a body that turns out longer is answered 413
};

// `rebooting`: no page is to be had now.
Admission admit(const RequestHead& head, const AdmissionRules& rules, bool rebooting);

// What pages answer while the device reboots.
Refusal rebootRefusal();

Answer answerTo(const Refusal& refusal, bool asJson);

}  // namespace host
