#include "servlet/contacts/contacts_favorite_groups.h"

#include <algorithm>
#include <utility>

#include "framework/text_utils.h"
#include "framework/xml_file.h"
#include "platform/log.h"

namespace favorite {
namespace {

constexpr std::size_t kShownGroups = 10;

constexpr std::pair<std::string_view, const char*> kDisplayNames[] = {
    {"history", "History"},
    {"networkcalllog", "Network Calllog"},
    {"broadsoftcalllog", "Network Calllog"},
    {"localdirectory", "Local Contacts"},
    {"remotedirectory", "Remote Phone Book"},
    {"ldap", "LDAP"},
    {"broadsoftdirectory", "Network Directories"},
    {"local_directory_search", "Local Contacts"},
    {"calllog_search", "History"},
    {"remote_directory_search", "Remote Phonebook"},
    {"ldap_search", "LDAP"},
};

constexpr const char* kFavoritesOfService[] = {"broadsoftcalllog", "broadsoftdirectory", "networkcalllog"};
constexpr const char* kSearchOfService[] = {"BroadSoft_directory_search"};

bool isOff(const std::string& serviceSwitch) {
  return parseInt(serviceSwitch).value_or(0) == 0;
}

_contactGroup groupOf(pugi::xml_node item) {
  _contactGroup group;
  group.idName = item.attribute("id_name").as_string();
  group.displayName = item.attribute("display_name").as_string();
  if (group.displayName.empty()) group.displayName = GetDisplayNameByID(group.idName);
  group.priority = item.attribute("priority").as_string();
  group.enabled = std::string_view(item.attribute("enable").as_string()) == "1";
  return group;
}

TMPL_loop* addRow(TMPL_loop* loop, const _contactGroup& group) {
  return TMPL_add_varlist(loop, TMPL_add_var(nullptr, "selValue", templateText(group.idName).c_str(), "selName",
                                             templateText(group.displayName).c_str(), nullptr));
}

}  // namespace

const File kFavoriteFile{"/config/data/favorite_setting.xml", "root_favorite_set", kFavoritesOfService,
                         &HeldBack::favorites};
const File kSearchFile{"/config/data/super_search.xml", "root_super_search", kSearchOfService, &HeldBack::search};

bool getContactGroupLists(Groups* groups, const File& file, const std::string& serviceSwitch, HeldBack& heldBack) {
  if (!groups) {
    log_log(kWebLog, kLogWarning, "list is empty\n");
    return false;
  }
  groups->clear();
  heldBack = {};
  pugi::xml_document document;
  if (!loadXml(file.path, document)) {
    log_log(kWebLog, kLogWarning, "load XML file failed!!!\n");
    return false;
  }
  const pugi::xml_node root = document.first_child();
  if (!root) {
    log_log(kWebLog, kLogWarning, "load favorite_setting.xml error!\n");
    return false;
  }
  for (const pugi::xml_node item : root.children("item")) {
    _contactGroup group = groupOf(item);
    const bool isOfService = std::ranges::find(file.ofService, group.idName) != file.ofService.end();
    Groups& list = isOfService && isOff(serviceSwitch) ? heldBack.*file.heldBack : *groups;
    list.push_back(std::move(group));
  }
  return true;
}

void setContactGroupLists(const Groups& groups, const File& file, const std::string& serviceSwitch,
                          const HeldBack& heldBack) {
  if (groups.empty()) {
    log_log(kWebLog, kLogWarning, "list is empty\n");
    return;
  }
  pugi::xml_document document;
  const pugi::xml_node root = document.append_child(file.root);
  if (!root) {
    log_log(kWebLog, kLogWarning, "ContactsFavoriteServlet:: error to get xml root element\n");
    return;
  }
  addNewNode(root, groups);
  if (isOff(serviceSwitch)) addNewNode(root, heldBack.*file.heldBack);
  if (!saveXml(file.path, document))
    log_log(kWebLog, kLogError, "ContactsFavoriteServlet:: cannot save %s\n", file.path);
}

void addNewNode(pugi::xml_node parent, const Groups& groups) {
  if (!parent) {
    log_log(kWebLog, kLogWarning, "ContactsFavoriteServlet::addNewNode para error\n");
    return;
  }
  for (const _contactGroup& group : groups) {
    pugi::xml_node item = parent.append_child("item");
    item.append_attribute("id_name").set_value(group.idName.c_str());
    item.append_attribute("display_name").set_value(group.displayName.c_str());
    item.append_attribute("priority").set_value(group.priority.c_str());
    item.append_attribute("enable").set_value(group.enabled ? "1" : "0");
  }
}

std::string GetDisplayNameByID(std::string_view id) {
  for (const auto& [known, name] : kDisplayNames) {
    if (known == id) return name;
  }
  return {};
}

std::string GetDisplayNameByID(const Groups& groups, std::string_view id) {
  const auto group = std::ranges::find(groups, id, &_contactGroup::idName);
  if (group == groups.end()) return {};
  return group->displayName.empty() ? GetDisplayNameByID(id) : group->displayName;
}

void getLoops(const Groups& groups, TMPL_loop*& disabled, TMPL_loop*& enabled) {
  Groups inUse;
  for (const _contactGroup& group : std::span(groups).first(std::min(groups.size(), kShownGroups))) {
    if (group.enabled) {
      inUse.push_back(group);
    } else {
      disabled = addRow(disabled, group);
    }
  }
  std::ranges::stable_sort(inUse, {}, &_contactGroup::priority);
  for (const _contactGroup& group : inUse) enabled = addRow(enabled, group);
}

Groups getListFromPage(const std::vector<std::string>& disabled, const std::vector<std::string>& enabled,
                       const Groups& known) {
  Groups groups;
  for (const std::string& id : disabled) groups.push_back({GetDisplayNameByID(known, id), false, "", id});
  int priority = 0;
  for (const std::string& id : enabled) {
    groups.push_back({GetDisplayNameByID(known, id), true, std::to_string(++priority), id});
  }
  return groups;
}

}  // namespace favorite
