// The sessions of the browsers. Used by the handler thread alone.
#pragma once

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "framework/servlet_base.h"

namespace host {

inline constexpr std::size_t kMaxSessions = 64;
inline constexpr std::chrono::seconds kDefaultIdleTime{15 * 60};

using SessionTime = std::chrono::steady_clock::time_point;

class SessionStore;

// One session. It may outlive its place in the store for the length of a request.
class Session final : public HttpSession {
 public:
  Session(SessionStore& store, std::string id) : store_(store), id_(std::move(id)) {}

  // Setting "user" gives the session a new id, so that an id known before the login is worth nothing after it.
  void setAttribute(const char* name, char* value) override;
  const char* getAttribute(const char* name) override;
  void invalidate() override;
  void setMaxInactiveInterval(int seconds) override;  // 0 or less: the default

  const std::string& id() const { return id_; }
  bool valid() const { return valid_; }

 private:
  friend class SessionStore;
  using Text = std::unique_ptr<char, decltype(&std::free)>;
  struct Attribute {
    std::string name;
    Text value;
  };

  Attribute* find(std::string_view name);
  bool expired(SessionTime now) const { return now - used_ >= idleTime_; }

  SessionStore& store_;
  std::string id_;
  std::vector<Attribute> attributes_;
  std::vector<Text> replaced_;  // a handler may still look at them; freed with the next request
  std::chrono::seconds idleTime_ = kDefaultIdleTime;
  SessionTime used_;
  bool valid_ = true;
};

class SessionStore {
 public:
  // The session `id`, whose idle time begins again; null when there is none.
  std::shared_ptr<Session> find(const std::string& id, SessionTime now);
  // A new session. In a full store the longest idle session that nobody is logged in to gives way, else the longest
  // idle of all. Null when the system gives no random bytes.
  std::shared_ptr<Session> create(SessionTime now);
  void clear();
  std::size_t size() const { return sessions_.size(); }

 private:
  friend class Session;
  void renewId(Session& session);
  void remove(Session& session);
  void removeExpired(SessionTime now);
  void makeRoom();

  std::unordered_map<std::string, std::shared_ptr<Session>> sessions_;
};

}  // namespace host
