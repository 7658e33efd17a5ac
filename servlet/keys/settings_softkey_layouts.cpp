#include "servlet/keys/settings_softkey_layouts.h"

#include <strings.h>

#include <algorithm>
#include <list>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/text_utils.h"
#include "framework/xml_file.h"
#include "platform/log.h"

namespace softkey {
namespace {

constexpr char kFolder[] = "/config/softkey/";
constexpr char kEnding[] = ".xml";
constexpr char kEmpty[] = "Empty";  // leaves a place on the screen free
constexpr std::size_t kServiceSwitchSize = 4;

// Keys of the call server's services.
constexpr const char* kServiceTypes[] = {"Gpark", "PriHold",   "Park",      "Emergcy",
                                         "Trace", "Disp Code", "Call Info", "Retrieve"};

bool isServiceType(const std::string& type) {
  return std::ranges::any_of(kServiceTypes,
                             [&type](const char* service) { return strcasecmp(service, type.c_str()) == 0; });
}

bool contains(const Names& names, const std::string& name) {
  return std::ranges::find(names, name) != names.end();
}

// An address comes from the browser: nothing but a file of the folder may be read or written.
bool isLayoutFile(const std::string& name) {
  return isFileName(name) && name.ends_with(kEnding);
}

void appendTypes(pugi::xml_node element, Names& types) {
  for (const pugi::xml_node key : element.children("Key")) types.emplace_back(key.attribute("Type").as_string());
}

void appendKey(pugi::xml_node element, const std::string& type) {
  if (element) element.append_child("Key").append_attribute("Type").set_value(type.c_str());
}

}  // namespace

bool getXmlFileNameAndRoot(const char* address, Names& names) {
  if (!address) return false;
  const std::string text = address;
  const std::size_t colon = text.find(':');
  names = {text.substr(0, colon)};
  if (colon != std::string::npos && colon + 1 < text.size()) names.push_back(text.substr(colon + 1));
  return true;
}

bool getRootNodeByXml(pugi::xml_document& document, const Names& names, pugi::xml_node& element) {
  if (names.empty()) {
    log_log(kWebLog, kLogWarning, "soft key size = 0\n");
    return false;
  }
  const std::string& file = names.front();
  if (isLayoutFile(file)) loadXml((kFolder + file).c_str(), document);
  element = document.document_element();
  if (!element) {
    log_log(kWebLog, kLogWarning, "load %s error!\n", file.c_str());
    return false;
  }
  if (names.size() > 1) {
    log_log(kWebLog, kLogInfo, "search node = %s\n", names[1].c_str());
    element = document.child(names[1].c_str());
  }
  return true;
}

bool findState(const std::string& address, pugi::xml_document& document, pugi::xml_node& state) {
  Names names;
  return getXmlFileNameAndRoot(address.c_str(), names) && getRootNodeByXml(document, names, state);
}

bool getDataByNode(pugi::xml_node element, Names& types, Names& hidden) {
  if (!element) return false;
  const bool isServiceOff = readConfigText("BSFTActive", kServiceSwitchSize) == "0";
  Names all;
  appendTypes(element, all);
  for (std::string& type : all) {
    Names& list = isServiceOff && isServiceType(type) ? hidden : types;
    list.push_back(std::move(type));
  }
  return true;
}

Names hiddenTypes(pugi::xml_node state) {
  Names shown, hidden;
  for (const char* child : {"Disable", "Enable"}) getDataByNode(state.child(child), shown, hidden);
  return hidden;
}

void XMLData2TMPLData(TMPL_loop*& loop, const Names& types) {
  for (const std::string& type : types) {
    const std::string shown = type == "Line" ? "Line Selection" : templateText(type);
    loop = TMPL_add_varlist(
        loop, TMPL_add_var(nullptr, "key", templateText(type).c_str(), "displaykey", shown.c_str(), nullptr));
  }
}

TMPL_loop* getCallStatesLoop(const std::string& address) {
  const std::string shown = fullAddress(address);
  std::list<std::string> files;
  ReadFiles::FindFiles(files, kFolder, kEnding, false, false);
  files.sort();
  TMPL_loop* rows = nullptr;
  for (const std::string& name : files) {
    const std::string file = name + kEnding;
    pugi::xml_document document;
    if (!isLayoutFile(file) || !loadXml((kFolder + file).c_str(), document)) continue;
    for (const pugi::xml_node state : document.children()) {
      if (state.type() != pugi::node_element) continue;
      const std::string value = file + ":" + state.name();
      rows = TMPL_add_varlist(rows, TMPL_add_var(nullptr, "selValue", templateText(value).c_str(), "selName",
                                                 state.name(), "selected", value == shown ? "1" : "0", nullptr));
    }
  }
  return rows;
}

std::string fullAddress(const std::string& address) {
  return address == kDefaultState ? "Dialing.xml:Dialing" : address;
}

void arrange(pugi::xml_node state, const Names& enabled, const Names& disabled, const Names& hidden) {
  pugi::xml_node disable = state.child("Disable"), enable = state.child("Enable");
  disable.remove_children();
  enable.remove_children();
  for (const std::string& type : disabled) appendKey(disable, type);
  for (const std::string& type : hidden) appendKey(disable, type);
  for (const std::string& type : enabled) appendKey(enable, type);
}

void restore(pugi::xml_node state) {
  Names standard, present, others{kEmpty};
  appendTypes(state.child("Default"), standard);
  log_log(kWebLog, kLogInfo, "get enable list ...\n");
  appendTypes(state.child("Enable"), present);
  log_log(kWebLog, kLogInfo, "get disable list ...\n");
  appendTypes(state.child("Disable"), present);
  for (const std::string& type : present) {
    if (type != kEmpty && !contains(standard, type)) others.push_back(type);
  }
  log_log(kWebLog, kLogInfo, "start to write disable list ...\n");
  log_log(kWebLog, kLogInfo, "start to write Default list ...\n");
  for (const std::string& type : standard) log_log(kWebLog, kLogInfo, "type: %s\n", type.c_str());
  arrange(state, standard, others, {});
}

void save(const std::string& address, const pugi::xml_document& document) {
  Names names;
  getXmlFileNameAndRoot(address.c_str(), names);
  if (!saveXml((kFolder + names.front()).c_str(), document))
    log_log(kWebLog, kLogError, "SettingsSoftkeyServlet:: cannot save %s\n", names.front().c_str());
}

}  // namespace softkey
