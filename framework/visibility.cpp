#include "framework/visibility.h"

#include <string_view>

#include "framework/config_operate.h"
#include "framework/session.h"
#include "framework/text_utils.h"
#include "platform/device.h"
#include "platform/log.h"

namespace {
constexpr std::size_t kLevelSize = 16;
constexpr std::size_t kLoginNameSize = 64;
constexpr std::size_t kNoteSize = 128;

struct LoginName {
  const char* identity;
  const char* key;
};
constexpr LoginName kLoginNames[] = {{"admin", "UserNameAdmin"}, {"var", "UserNameVar"}, {"user", "UserNameUser"}};
}  // namespace

void showString(SHOWTYPE type, const char* const* keys, int count, std::string* buffer, std::size_t size) {
  if (!keys || !buffer) {
    log_log(kWebLog, kLogWarning, "readConfigOperate() para error\n");
    return;
  }
  for (int i = 0; i < count; ++i) {
    if (!keys[i]) continue;
    buffer->append(keys[i]).append("=").append(readConfigText(keys[i], kLevelSize));
    if (i < count - 1) {
      *buffer += '&';
    } else if (type == SHOWTYPE_MENU) {
      *buffer += '$';
    }
  }
  cutText(*buffer, size);
}

TMPL_varlist* addVisibility(TMPL_varlist* list, HttpRequest* request, const Visibility& visibility) {
  const auto& [menu, items, size] = visibility;
  std::string levels;
  if (!menu.empty()) showString(SHOWTYPE_MENU, menu.data(), static_cast<int>(menu.size()), &levels, size);
  if (!items.empty()) showString(SHOWTYPE_ITEM, items.data(), static_cast<int>(items.size()), &levels, size);
  list = TMPL_add_var(list, "ShowLevel", levels.c_str(), "Identity", sessionIdentity(request).c_str(), nullptr);
  return AddDevType(list);
}

TMPL_varlist* AddDevType(TMPL_varlist* list) {
  std::string series;
  GetDevSeries(GetPhoneType(), &series);
  return TMPL_add_var(list, "devseries", series.c_str(), "devtypeInfo",
                      readConfigText("DevtypeLoginNote", kNoteSize).c_str(), nullptr);
}

void GetDevSeries(int phoneType, std::string* series) {
  switch (phoneType) {
    case 41:
    case 42:
      *series = "alpha_series";
      return;
    case 19:
    case 21:
      *series = "beta_series";
      return;
    default:
      series->clear();
  }
}

void GetIdentityByName(const char* name, std::string* identity) {
  if (!name || !identity) {
    log_log(kWebLog, kLogWarning, "GetIdentityByName para error\n");
    return;
  }
  for (const LoginName& login : kLoginNames) {
    if (readConfigPlain(login.key, kLoginNameSize) == name) {
      *identity = login.identity;
      return;
    }
  }
}

void GetNameByIdentity(std::string* name, const char* identity) {
  if (!name || !identity) {
    log_log(kWebLog, kLogWarning, "GetIdentityByName para error\n");
    return;
  }
  for (const LoginName& login : kLoginNames) {
    if (std::string_view(login.identity) == identity) *name = readConfigPlain(login.key, kLoginNameSize);
  }
}

TMPL_varlist* GetTR069Supported(TMPL_varlist* list) {
  return TMPL_add_var(list, "supportTR069", "true", nullptr);
}
