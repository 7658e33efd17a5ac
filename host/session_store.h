// The sessions of the browsers. Used in a turn alone, by one request at a time, but for the question who is logged in.
#pragma once

#include <chrono>
#include <cstdlib>
#include <memory>
#include <mutex>
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

// The client of a request.
struct Visitor {
  std::string address;
  bool posts = false;   // the request is a POST: who logs in by it is taken for a person
  bool secure = false;  // the request came over TLS
};

// One session. It is worth nothing to a client, and takes no place in the store, before it holds something; and it may
// outlive its place for the length of a request.
class Session final : public HttpSession, public std::enable_shared_from_this<Session> {
 public:
  Session(SessionStore& store, Visitor visitor, SessionTime now);

  // Setting "user" gives the session a new id, so that an id known before the login is worth nothing after it.
  void setAttribute(const char* name, char* value) override;
  const char* getAttribute(const char* name) override;
  void invalidate() override;
  void setMaxInactiveInterval(int seconds) override;  // 0 or less: the default

  // Empty while it has no place in the store.
  const std::string& id() const { return id_; }
  bool valid() const { return valid_; }

 private:
  friend class SessionStore;
  using Text = std::unique_ptr<char, decltype(&std::free)>;
  struct Attribute {
    std::string name;
    Text value;
  };
  // In the order in which they give way.
  enum class Rank { kAnonymous, kCommands, kPerson };

  Attribute* find(std::string_view name);
  Rank rank();
  bool expired(SessionTime now) const { return now - used_ >= idleTime_; }

  SessionStore& store_;
  std::string id_;
  std::vector<Attribute> attributes_;
  std::vector<Text> replaced_;  // a handler may still look at them; freed with the next request
  std::chrono::seconds idleTime_ = kDefaultIdleTime;
  SessionTime used_;
  Visitor visitor_;        // of the request that has the session
  bool isNew_ = true;      // made in that request
  std::string commander_;  // address and name, when a command brought the credentials along
  bool valid_ = true;
  bool hasUser_ = false;  // the attribute "user" is not empty
};

// A client that sends commands with its credentials, and no cookie, logs in with each: such sessions give way to the
// next one of the same address and name, and never take the place of a person's.
class SessionStore {
 public:
  // The session `id`, whose idle time begins again; null when there is none, or it was made over TLS and the visitor
  // does not come over it, or the other way round. One that has expired is given as invalid, and is gone.
  std::shared_ptr<Session> find(const std::string& id, Visitor visitor, SessionTime now);
  // A new session without a place. It gets one, and its id, with its first attribute; in a full store in place of the
  // longest idle of the lowest rank that is no higher than its own. It stays without one when there is none such, or
  // when the system gives no random bytes.
  std::shared_ptr<Session> create(Visitor visitor, SessionTime now);
  void clear();
  // True for the session of somebody who is logged in. It does not count as use of the session. Safe from any thread.
  bool isLoggedIn(const std::string& id, bool secure, SessionTime now) const;
  // Who is logged in, as the session holds it; empty for nobody. It does not count as use of the session either.
  std::string userOf(const std::string& id, bool secure, SessionTime now) const;
  std::size_t size() const { return sessions_.size(); }

 private:
  friend class Session;
  using Lock = std::lock_guard<std::mutex>;
  void place(Session& session);
  void login(Session& session);
  void remove(Session& session);

  // With the mutex held.
  void renewId(Session& session);
  void erase(Session& session);
  template <class Judge>
  void removeIf(const Judge& judge);
  bool makeRoom(Session::Rank rank);

  // Guards the map and what isLoggedIn() looks at in a session: how long it lasts, and whether it has a user.
  mutable std::mutex mutex_;

  std::unordered_map<std::string, std::shared_ptr<Session>> sessions_;
};

}  // namespace host
