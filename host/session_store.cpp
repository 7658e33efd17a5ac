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

template <class Judge>
void SessionStore::removeIf(const Judge& judge) {
  std::erase_if(sessions_, [&](const auto& entry) {
    if (!judge(*entry.second)) return false;
    entry.second->valid_ = false;
    return true;
  });
}

Session::Session(SessionStore& store, Visitor visitor, SessionTime now)
    : store_(store), used_(now), visitor_(std::move(visitor)) {}

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
  if (std::string_view(name) == "user") store_.login(*this);
  if (id_.empty() && getAttribute(name)) store_.place(*this);
}

Session::Rank Session::rank() {
  if (!getAttribute("user")) return Rank::kAnonymous;
  return commander_.empty() ? Rank::kPerson : Rank::kCommands;
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
  const SessionStore::Lock lock(store_.mutex_);
  idleTime_ = seconds > 0 ? std::chrono::seconds(seconds) : kDefaultIdleTime;
}

std::shared_ptr<Session> SessionStore::find(const std::string& id, Visitor visitor, SessionTime now) {
  const Lock lock(mutex_);
  const auto at = sessions_.find(id);
  if (at == sessions_.end() || at->second->visitor_.secure != visitor.secure) return nullptr;
  std::shared_ptr<Session> session = at->second;
  if (session->expired(now)) {
    erase(*session);
    return session;
  }
  session->used_ = now;
  session->visitor_ = std::move(visitor);
  session->isNew_ = false;
  session->replaced_.clear();
  return session;
}

std::shared_ptr<Session> SessionStore::create(Visitor visitor, SessionTime now) {
  return std::make_shared<Session>(*this, std::move(visitor), now);
}

void SessionStore::clear() {
  const Lock lock(mutex_);
  removeIf([](const Session&) { return true; });
}

bool SessionStore::isLoggedIn(const std::string& id, bool secure, SessionTime now) const {
  const Lock lock(mutex_);
  const auto at = sessions_.find(id);
  if (at == sessions_.end() || at->second->visitor_.secure != secure) return false;
  return at->second->hasUser_ && !at->second->expired(now);
}

std::string SessionStore::userOf(const std::string& id, bool secure, SessionTime now) const {
  return isLoggedIn(id, secure, now) ? sessions_.find(id)->second->getAttribute("user") : std::string();
}

void SessionStore::login(Session& session) {
  const Lock lock(mutex_);
  const char* user = session.getAttribute("user");
  session.hasUser_ = user && *user;
  if (session.visitor_.posts) {
    session.commander_.clear();
  } else if (session.isNew_) {
    session.commander_ = session.visitor_.address + " " + (user ? user : "");
    removeIf([&](const Session& other) { return &other != &session && other.commander_ == session.commander_; });
  }
  if (!session.id_.empty()) renewId(session);
}

void SessionStore::place(Session& session) {
  const Lock lock(mutex_);
  removeIf([&](const Session& other) { return other.expired(session.used_); });
  if (sessions_.size() >= kMaxSessions && !makeRoom(session.rank())) return;
  session.id_ = randomId();
  if (!session.id_.empty()) sessions_.emplace(session.id_, session.shared_from_this());
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
  const Lock lock(mutex_);
  erase(session);
}

void SessionStore::erase(Session& session) {
  session.valid_ = false;
  sessions_.erase(session.id_);  // whoever asked for the removal still holds the session
}

bool SessionStore::makeRoom(Session::Rank rank) {
  const auto order = [](const auto& entry) { return std::pair(entry.second->rank(), entry.second->used_); };
  const auto victim = std::min_element(sessions_.begin(), sessions_.end(),
                                       [&](const auto& a, const auto& b) { return order(a) < order(b); });
  if (victim->second->rank() > rank) return false;
  victim->second->valid_ = false;
  sessions_.erase(victim);
  return true;
}

}  // namespace host
