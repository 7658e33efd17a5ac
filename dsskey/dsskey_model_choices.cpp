// What the line of a key is chosen from.
#include "dsskey/dsskey_model_base.h"
#include "dsskey/dsskey_types.h"
#include "dsskey/page_files.h"
#include "framework/accounts.h"
#include "framework/config_operate.h"
#include "framework/text_list.h"
#include "platform/log.h"

namespace {

using dsskey::LineChoices;

constexpr char kGroupFile[] = "/config/data/contact_group_list.xml";
constexpr char kPhonebookFile[] = "/config/data/remote_phonebook_list.xml";
constexpr char kNotAvailable[] = "N/A";

// A directory of the network and the key that has its name.
struct NetworkDirectory {
  const char* enabled;
  const char* name;
};
constexpr NetworkDirectory kNetworkDirectories[] = {
    {"BsftGroup", "NetworkDirectoryGroupDisplayname"},
    {"BsftEnterprise", "NetworkDirectoryEnterpriseDisplayname"},
    {"BsftGroupCommon", "NetworkDirectoryGroupCommonDisplayname"},
    {"BsftEnterpriseCommon", "NetworkDirectoryEnterpriseCommonDisplayname"},
    {"BsftPersonal", "NetworkDirectoryPersonalDisplayname"},
};

// Adds a choice under the next number.
void addNext(OrbList<KeyValue>& choices, int& number, std::string text) {
  choices.push_back({number++, std::move(text)});
}

pugi::xml_node rootOf(const XmlDocument& document) {
  return document ? document->first_child() : pugi::xml_node();
}

bool isOn(const char* key) {
  return readConfigPlain(key, kConfigValueSize) == "1";
}

bool hasDirectoryServer() {
  return !readAccountConfigPlain("AccountBroadsoftXSIHostAddr", 0, 512).empty() &&
         !readAccountConfigPlain("AccountBroadsoftXSIPort", 0, 128).empty() &&
         !readAccountConfigPlain("AccountBroadsoftXSIPassword", 0, 32).empty();
}

void addNetworkDirectories(OrbList<KeyValue>& choices, int number) {
  for (const NetworkDirectory& directory : kNetworkDirectories) {
    if (isOn(directory.enabled)) addNext(choices, number, readConfigPlain(directory.name, 128));
  }
  if (!isOn("BsftCustom")) return;
  OrbList<std::string> names;
  String2List(names, readConfigPlain("BsftCustomListUse", 256), ',');
  for (const std::string& name : names) addNext(choices, number, name);
}

}  // namespace

bool DssKey_Model_Base::GetAttrListByDKtype(OrbList<KeyValue>* choices, int type, DSSK_PARA_TYPE parameter,
                                            bool enabled) {
  if (parameter == DSSK_PARA_VALUE) return GetValueListByDKtype(choices, type);
  if (parameter == DSSK_PARA_LINE) return GetLineListByDKtype(choices, type, enabled);
  return false;
}

bool DssKey_Model_Base::GetValueListByDKtype(OrbList<KeyValue>*, int) {
  return false;
}

bool DssKey_Model_Base::GetLineListByDKtype(OrbList<KeyValue>* choices, int type, bool enabled) {
  if (!choices) return false;
  if (!enabled) {
    choices->push_back({0, kNotAvailable});
    return true;
  }
  switch (dsskey::keyType(type).lineChoices) {
    case LineChoices::kPhonebooks:
      return GetXMLGroupList(choices);
    case LineChoices::kHistory:
      GetHistoryList(choices);
      return true;
    case LineChoices::kLocalGroups:
      return GetLocalGroupList(choices);
    case LineChoices::kNetworkGroups:
      GetBsftGroupList(choices);
      return true;
    case LineChoices::kNetworkCalls:
      return GetNetworkCalllogList(choices);
    default:
      return GetAccoutList(choices, false);
  }
}

void DssKey_Model_Base::GetBsftGroupList(OrbList<KeyValue>* choices) {
  if (!choices) return;
  if (!hasDirectoryServer()) {
    choices->push_back({0, kNotAvailable});
    return;
  }
  choices->push_back({0, "All Contacts"});
  addNetworkDirectories(*choices, 1);
}

bool DssKey_Model_Base::GetXMLGroupList(OrbList<KeyValue>* choices) {
  if (!choices) return false;
  const XmlDocument document = PageFiles::xml(kPhonebookFile);
  const pugi::xml_node root = rootOf(document);
  if (!root) log_log(kWebLog, kLogWarning, "remote_phonebook_list.xml open error!\n");
  int number = 0;
  for (const pugi::xml_node item : root.children("item")) {
    const std::string name = item.attribute("name").value();
    if (!name.empty()) addNext(*choices, number, name);
  }
  if (number == 0) choices->push_back({0, kNotAvailable});
  return !root.empty();
}

bool DssKey_Model_Base::GetLocalGroupList(OrbList<KeyValue>* choices) {
  if (!choices) return false;
  const XmlDocument document = PageFiles::xml(kGroupFile);
  const pugi::xml_node root = rootOf(document);
  if (!root) {
    log_log(kWebLog, kLogWarning, "DSSKeyInterface::getLocalGroupLineData End.root element is null\n");
    return false;
  }
  int number = 0;
  for (const pugi::xml_node group : root.children()) {
    const std::string name = group.attribute("display_name").value();
    if (!name.empty() && name != "Blacklist") addNext(*choices, number, name);
  }
  return true;
}

void DssKey_Model_Base::GetHistoryList(OrbList<KeyValue>* choices) {
  if (!choices) return;
  choices->push_back({0, "Local History"});
  if (isOn("BSFTActive") && isOn("NetworkCalllogSwitch")) choices->push_back({1, "Network CallLog"});
}

bool DssKey_Model_Base::GetNetworkCalllogList(OrbList<KeyValue>* choices) {
  if (!choices) return false;
  choices->push_back({0, "NetCalllog"});
  return true;
}

bool DssKey_Model_Base::GetAccoutList(OrbList<KeyValue>* choices, bool withAuto) {
  if (!choices) return false;
  if (withAuto) choices->push_back({-1, "Auto"});
  const int accounts = GetAccountMax();
  for (int i = 0; i < accounts; ++i) choices->push_back({i, "Line " + std::to_string(i + 1)});
  return true;
}
