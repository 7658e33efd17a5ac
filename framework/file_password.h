// The login names and password hashes of the web interface.
#pragma once

#include <string>
#include <utility>
#include <vector>

inline constexpr char kPasswordFile[] = "/config/data/htpasswd";

// The entries of a password file, one "name:hash" a line, in the file's order. Made for one request: changes reach the
// file through SaveToFile() only. Names are compared byte for byte; of equal names the first counts.
class filePassword {
 public:
  // Loads the file at the phone's path; one that cannot be read gives no entries. Seeds rand() with the time.
  explicit filePassword(const char* path);

  // True when the entry exists and the password is its own; an empty hash is nobody's. A null name or password counts
  // as empty.
  bool IsRightUserPassword(const char* user, const char* password) const;

  // Sets the password, adding an entry at the end for an unknown name. False when it is the one already set, or cannot
  // be hashed (logged).
  bool SetUserPassword(const char* user, const char* password);

  // Removes the first entry of that name; false when there is none.
  bool RemoveUser(const char* user);

  // Writes all entries, replacing the file whole.
  void SaveToFile(const char* path) const;

  // The hash: one 13-character traditional crypt(3) result per started block of 8 characters. `salt` is a stored hash,
  // whose salts are taken again, or null or empty for new random ones. A block that crypt(3) refuses is left out.
  static std::string GetEncryptedText(const char* password, const char* salt);

  // The hash of a new password with the salts of the old hash, or with new ones where crypt(3) refuses those. Empty
  // (logged) when it makes none at all.
  static std::string newHash(const char* password, const std::string& old);

 private:
  using Entry = std::pair<std::string, std::string>;
  std::vector<Entry>::const_iterator find(const char* user) const;

  std::vector<Entry> entries_;
};

// The same hash, appended to `output`.
void EncryptString(const char* plain, std::string& output, const char* salt);
