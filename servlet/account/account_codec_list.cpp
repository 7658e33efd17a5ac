#include "servlet/account/account_codec_list.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "framework/config_operate.h"
#include "framework/text_utils.h"
#include "platform/config_parser.h"

namespace {

constexpr int kSlots = 19;
constexpr std::size_t kNameSize = 64;

std::string slotKey(int slot, const char* what) {
  return "AccountAudio" + std::to_string(slot) + what;
}

int slotNumber(int slot, const char* what, int account) {
  return parseInt(readAccountConfigPlain(slotKey(slot, what).c_str(), account, kNameSize)).value_or(0);
}

}  // namespace

bool GetCodecConfigData(OrbList<Codec_Info>* codecs, int account) {
  if (!codecs || account < 0) return false;
  const bool withoutILBC = configParser_GetConfigInt("ILBCEnable") == 0;
  for (int slot = 0; slot < kSlots; ++slot) {
    std::string name;
    readConfigOperate(ACCOUNT_FILE, slotKey(slot, "Type").c_str(), name, kNameSize, account);
    if (name.empty() || (withoutILBC && name.starts_with("iLBC"))) continue;
    const bool enabled = slotNumber(slot, "Switch", account) == 1;
    codecs->push_back({slot, enabled, std::move(name), slotNumber(slot, "Priority", account)});
  }
  return true;
}

bool SortAudioByPriority(OrbList<Codec_Info>* codecs) {
  if (!codecs) return false;
  OrbList<Codec_Info> sorted;
  while (!codecs->empty()) {
    auto first = codecs->begin();
    for (auto codec = codecs->begin(); codec != codecs->end(); ++codec) {
      if (codec->priority < first->priority) first = codec;
    }
    sorted.push_back(std::move(*first));
    codecs->erase(first);
  }
  codecs->swap(sorted);
  return true;
}

bool PutCodecData2List(OrbList<Codec_Info>& codecs, const OrbList<std::string>& entries, bool enabled) {
  int next = 1;
  for (const std::string& entry : entries) {
    const int priority = enabled ? next++ : 0;
    const std::size_t colon = entry.find(':');
    if (colon == std::string::npos) continue;
    const int slot = parseInt(std::string_view(entry).substr(colon + 1)).value_or(-1);
    if (colon != 0 && slot != -1) codecs.push_back({slot, enabled, entry.substr(0, colon), priority});
  }
  return true;
}

void StoreCodecs(const OrbList<Codec_Info>& codecs, int account) {
  std::array<const Codec_Info*, kSlots> last{};
  for (const Codec_Info& codec : codecs) {
    if (codec.index >= 0 && codec.index < kSlots) last[static_cast<std::size_t>(codec.index)] = &codec;
  }
  for (const Codec_Info& codec : codecs) {
    if (std::ranges::find(last, &codec) == last.end()) continue;
    writeConfigOperate(ACCOUNT_FILE, slotKey(codec.index, "Switch").c_str(), codec.enabled ? "1" : "0", account);
    if (!codec.enabled) continue;
    writeConfigOperate(ACCOUNT_FILE, slotKey(codec.index, "Priority").c_str(), std::to_string(codec.priority).c_str(),
                       account);
  }
}
