// The one door for credentials: the login form and commands that bring theirs along go through it.
#pragma once

#include <ctime>
#include <string>

#include "framework/orb_hash_map.h"

// What became of a login name and a password.
enum class Entry {
  kGranted,
  kRefused,    // wrong, or the identity is switched off
  kLockedOut,  // the client failed too often: with this attempt or before
};

// Counts the failures of each client by its address, and locks one out for three minutes after the third. Used by the
// handlers' thread alone.
class CredentialsDoor {
 public:
  CredentialsDoor();

  // Checks a name and a password (null counts as empty) that a client gives. `identity` gets the one that the login
  // name belongs to, or an empty text. A client that is locked out is not even asked.
  Entry enter(const std::string& client, const char* user, const char* password, std::string& identity);

  // True while the client is locked out; when its time has passed, its failures are forgotten.
  bool isLockedOut(const std::string& client);
  // The failures of the client since its last success.
  int failuresOf(const std::string& client);

  // Forgets everything.
  void reset();

 private:
  Entry refuse(const std::string& client);

  OrbHashMap<std::string, int> failures_;
  std::time_t lockTime_ = 0;  // when a client was last locked out; shared by all
};

// The door of this process.
CredentialsDoor& credentialsDoor();
