// The phone's configuration service: every setting by its logical key.
#pragma once

#include <string>

// A setting is a secret when its name holds one of these, in any letter case.
inline constexpr const char* kSecretWords[] = {"password", "passwd", "pswd", "pwd", "pin", "aeskey", "secret"};

// The current value; empty when the key has none or is null.
std::string configParser_GetConfigString(const char* key);

// The same as a decimal number, 0 when it is none.
int configParser_GetConfigInt(const char* key);

// Stores a value, byte for byte and on disk before it returns. Non-zero when the stored value changed, 0 when it was
// already equal or an argument is null.
int configParser_SetConfigString(const char* key, const char* value);

// The name under which a per-account key is kept for an account (from 0). Any index gives a name; the value of a name
// that holds nothing is the empty text.
std::string configParser_GetAccountConfigName(const char* key, int account);
