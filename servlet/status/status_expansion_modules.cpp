#include "servlet/status/status_expansion_modules.h"

#include <cstdint>
#include <optional>
#include <string>

#include "platform/expansion_module.h"

namespace {

constexpr int kHeadsetAdapter = 2;

// The opened driver; each query is one request on its record.
class ExpansionModules {
 public:
  ExpansionModules() : handle_(expansionOpen(kExpansionDevice)) {}
  ~ExpansionModules() {
    if (handle_ >= 0) expansionClose(handle_);
  }
  ExpansionModules(const ExpansionModules&) = delete;
  ExpansionModules& operator=(const ExpansionModules&) = delete;

  std::optional<int> count() const {
    if (handle_ < 0) return std::nullopt;
    ExpansionRequest record{};
    if (expansionControl(handle_, kExpansionCount, &record, nullptr) != 0) return std::nullopt;
    return record.result;
  }

  int type(int module) const {
    number(module, kExpansionSelect);
    number(module, kExpansionRefresh);
    return number(module, kExpansionType);
  }

  std::string version(int module, std::uint32_t request) const {
    char text[128] = "";
    ExpansionRequest record{};
    record.module = static_cast<std::uint16_t>(module);
    record.textLength = sizeof text - 1;
    expansionControl(handle_, request, &record, text);
    text[sizeof text - 1] = '\0';
    return text;
  }

 private:
  int number(int module, std::uint32_t request) const {
    ExpansionRequest record{};
    record.module = static_cast<std::uint16_t>(module);
    expansionControl(handle_, request, &record, nullptr);
    return record.result;
  }

  int handle_;
};

const char* moduleName(int type) {
  switch (type) {
    case 0:
      return "XMOD1";
    case 1:
      return "XMOD2";
    case 5:
      return "XMOD3";
    case kHeadsetAdapter:
      return "EHS";
    default:
      return "EXP";
  }
}

}  // namespace

TMPL_loop* GetEXPInfo(TMPL_varlist* list) {
  const ExpansionModules modules;
  const int count = modules.count().value_or(0);
  TMPL_add_var(list, "extNum", std::to_string(count).c_str(), nullptr);
  TMPL_loop* rows = nullptr;
  int firstType = 0;
  for (int i = 0; i < count; ++i) {
    const int type = modules.type(i);
    const bool adapter = type == kHeadsetAdapter;
    if (i == 0) firstType = type;
    if (!adapter && type != firstType) break;  // one line of modules is of one type
    rows = TMPL_add_varlist(
        rows, TMPL_add_var(nullptr, "extName", moduleName(type), "index", adapter ? "" : std::to_string(i + 1).c_str(),
                           "hardware", modules.version(i, kExpansionHardwareVersion).c_str(), "firmware",
                           modules.version(i, kExpansionFirmwareVersion).c_str(), nullptr));
  }
  return rows;
}
