#include "host/session_store.h"

#include <sys/random.h>

#include <algorithm>
#include <array>

#include "host/log.h"

namespace host {
namespace {
// 128 random bits as hex digits; empty when the system has none.
std::string randomId() {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::array<unsigned char, 16> bytes;
  if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    logLine({"no random bytes for a session"});
    return {};
  }
  std::string id;
  for (unsigned char byte : bytes) {
    id += kDigits[byte >> 4];
    id += kDigits[byte & 15];
  }
  return id;
}
}  // namespace

Session::Attribute* Session::find(std::string_view name) {
  const auto at = std::find_if(attributes_.begin(), attributes_.end(), [&](const auto& a) { return a.name == name; });
  return at == attributes_.end() ? nullptr : &*at;
}

void Session::setAttribute(const char* name, char* value) {
  Text text(value, &std::free);
  if (!name || !valid_) return;
  if (Attribute* attribute = find(name)) {
    replaced_.push_back(std::exchange(attribute->value, std::move(text)));
  } else {
    attributes_.push_back({name, std::move(text)});
  }
  if (std::string_view(name) == "user") store_.renewId(*this);
}

const char* Session::getAttribute(const char* name) {
  if (!name || !valid_) return nullptr;
  const Attribute* attribute = find(name);
  return attribute ? attribute->value.get() : nullptr;
}

void Session::invalidate() {
  store_.remove(*this);
}

void Session::setMaxInactiveInterval(int seconds) {
  idleTime_ = seconds > 0 ? std::chrono::seconds(seconds) : kDefaultIdleTime;
}

std::shared_ptr<Session> SessionStore::find(const std::string& id, SessionTime now) {
  const auto at = sessions_.find(id);
  if (at == sessions_.end()) return nullptr;
  const std::shared_ptr<Session> session = at->second;
  if (session->expired(now)) {
    remove(*session);
    return nullptr;
  }
  session->used_ = now;
  session->replaced_.clear();
  return session;
}

std::shared_ptr<Session> SessionStore::create(SessionTime now) {
  std::string id = randomId();
  if (id.empty()) return nullptr;
  removeExpired(now);
  if (sessions_.size() >= kMaxSessions) makeRoom();
  auto session = std::make_shared<Session>(*this, id);
  session->used_ = now;
  sessions_.emplace(std::move(id), session);
  return session;
}

void SessionStore::clear() {
  for (auto& [id, session] : sessions_) session->valid_ = false;
  sessions_.clear();
}

void SessionStore::renewId(Session& session) {
  std::string id = randomId();
  auto node = sessions_.extract(session.id_);
  if (node.empty()) return;
  if (id.empty()) {  // better no session than one whose id may be known
    session.valid_ = false;
    return;
  }
  session.id_ = id;
  node.key() = std::move(id);
  sessions_.insert(std::move(node));
}

void SessionStore::remove(Session& session) {
  session.valid_ = false;
  sessions_.erase(session.id_);  // whoever asked for the removal still holds the session
}

void SessionStore::removeExpired(SessionTime now) {
  for (auto at = sessions_.begin(); at != sessions_.end();) {
    const std::shared_ptr<Session> session = at->second;
    ++at;
    if (session->expired(now)) remove(*session);
  }
}

void SessionStore::makeRoom() {
  const auto rank = [](const auto& entry) {
    return std::pair(entry.second->getAttribute("user") != nullptr, entry.second->used_);
  };
  const auto victim = std::min_element(sessions_.begin(), sessions_.end(),
                                       [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
  const std::shared_ptr<Session> session = victim->second;
  remove(*session);
}

}  // namespace host
