#include "framework/account_field.h"

#include "framework/accounts.h"
#include "framework/text_utils.h"

std::optional<int> validAccount(const char* text) {
  const std::optional<int> account = parseInt(text);
  if (!account || *account < 0 || *account >= GetAccountMax()) return std::nullopt;
  return account;
}
