// The page of contact files: the directory as a CSV file.
#include <map>
#include <string>

#include "framework/encoding.h"
#include "framework/file_utils.h"
#include "framework/text_utils.h"
#include "framework/xml_file.h"
#include "platform/local_directory.h"
#include "platform/log.h"
#include "servlet/contacts/contacts_photo_store.h"
#include "servlet/contacts/contacts_preview_fields.h"
#include "servlet/contacts/contacts_preview_servlet.h"

using namespace NS_DIRECTORY;

namespace {

constexpr char kContactFile[] = "/config/data/contact_list.xml";

// The names of groups by the ids that contacts name, each asked for once.
class GroupNames {
 public:
  const std::string& operator[](const std::string& id) {
    const auto [found, isNew] = names_.try_emplace(id);
    CContactLocalManager* directory = isNew ? CContactLocalManager::GetInstance() : nullptr;
    ContactGroupData group;
    if (directory && directory->GetGroupDataByID(group, parseInt(id).value_or(-1))) found->second = group.name;
    return found->second;
  }

 private:
  std::map<std::string, std::string> names_;
};

// The picture of a user photo; empty for any other photo, and where it cannot be read.
std::string GetBase64EncData(const std::string& photo) {
  if (!photo.starts_with(kUserPhotoSource)) {
    log_log(kWebLog, kLogWarning, "pDefaultPhoto is null\n");
    return {};
  }
  const std::string name = photo.substr(std::string_view(kUserPhotoSource).size());
  std::string picture, text;
  if (!isFileName(name) || !readFile(userPhotoPath(name).c_str(), picture) || picture.empty()) return {};
  const int size = Base64Enc(text, picture.data(), static_cast<int>(picture.size()));
  log_log(kWebLog, kLogInfo, "base64 enc size = %d\n", size);
  if (size < 1) log_log(kWebLog, kLogWarning, "Fail to encode %s to Base64\n", name.c_str());
  return text;
}

std::string valueOf(const pugi::xml_node& contact, int index, const char* name, GroupNames& groups) {
  if (index == kPhotoData) return GetBase64EncData(contact.attribute("default_photo").value());
  const char* value = contact.attribute(name).value();
  return index == kGroupName ? groups[value] : value;
}

// One line of the fields that this phone has, each as `valueOf(index, name)` gives it.
template <class ValueOf>
void sendLine(HttpResponse* response, int phoneType, ValueOf valueOf) {
  std::string line;
  for (int i = kDisplayName; i < kContactFields; ++i) {
    const char* name = "";
    if (!hasContactField(phoneType, i) || !GetParaNameByIndex(i, &name)) continue;
    if (i > kDisplayName) line += ',';
    line += valueOf(i, name);
  }
  line += "\r\n";
  response->write(line.data(), 1, static_cast<int>(line.size()));
}

}  // namespace

int ContactsFileOperatorServlet::downloadContactCSVFile(HttpRequest*, HttpResponse* response) {
  sendAsFile(response, "text/xml;charset=UTF-8", "attachment; filename=contact.csv");
  for (const int byte : {0xEF, 0xBB, 0xBF}) response->putChar(byte);
  pugi::xml_document document;
  loadXml(kContactFile, document);
  const pugi::xml_node root = document.first_child();
  if (!root) return 1;
  sendLine(response, phoneType_, [](int, const char* name) { return std::string(name); });
  GroupNames groups;
  for (const pugi::xml_node contact : root.children()) {
    if (contact.type() != pugi::node_element) continue;
    sendLine(response, phoneType_, [&](int index, const char* name) { return valueOf(contact, index, name, groups); });
  }
  return 1;
}
