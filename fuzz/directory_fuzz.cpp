// The local directory's files: any bytes are read, and what the store makes of them is what it reads again. Input: what
// the file is on a line, then the file.
#include <fstream>
#include <set>

#include "fuzz/phone.h"
#include "simulator/directory/directory.h"
#include "simulator/directory/directory_exchange.h"
#include "simulator/directory/directory_rules.h"

namespace {

using namespace simulator;

constexpr char kContactFile[] = "config/data/contact_list.xml";
constexpr char kGroupFile[] = "config/data/contact_group_list.xml";
constexpr char kExchangeFile[] = "config/data/contact_xported.xml";

void put(const char* path, std::string_view bytes) {
  std::ofstream(fuzzedPhone() / path, std::ios::binary) << bytes;
}

std::string content(const char* path) {
  std::ifstream stream(fuzzedPhone() / path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void checkContents(const DirectoryContents& contents) {
  std::set<std::string> names, groupNames;
  std::set<int> ids;
  for (const DirectoryGroup& group : contents.groups) {
    require(ids.insert(group.id).second && groupNames.insert(group.name).second, "groups are told apart");
  }
  require(ids.contains(kAllContactsId) && ids.contains(kBlacklistId) && ids.size() <= kMaxGroups,
          "groups are in order");
  for (const DirectoryContact& contact : contents.contacts) {
    require(!contact.data.displayName.empty() && names.insert(contact.data.displayName).second, "names are told apart");
    require(ids.contains(contact.group), "a contact has a group");
    require(isPhoto(contact.data.photo), "a contact has a photo");
  }
}

// Makes `next` the directory; one that reads the files finds the same.
void keep(Directory& directory, DirectoryContents next) {
  checkContents(next);
  require(directory.replace(std::move(next)), "the files can be written");
  Directory again;
  again.load();
  require(again.contents().groups == directory.contents().groups, "the groups survive a restart");
  require(again.contents().contacts == directory.contents().contacts, "the contacts survive a restart");
}

void change(Directory& directory) {
  DirectoryContents next = directory.contents();
  addContact(next, "Blacklist", {"Added", "", "1", "", "", "", "", 3, 0});
  addGroup(next, {"Group", ""});
  NS_DIRECTORY::ContactGeneralItemData renamed = next.contacts[0].data;
  renamed.displayName = "Renamed";
  updateContact(next, next.contacts[0].data.displayName, renamed);
  keep(directory, next);
  removeGroup(next, next.groups[2].name);
  keep(directory, next);
}

void exchange(Directory& directory, bool keeping) {
  DirectoryContents next;
  if (keeping) next = directory.contents();
  if (importDirectory(next) != kExchanged) return;
  keep(directory, next);
  if (keeping) return;
  require(exportDirectory(next) == kExchanged, "the directory can be exported");
  const std::string exported = content(kExchangeFile);
  DirectoryContents imported;
  require(importDirectory(imported) == kExchanged, "an export can be imported");
  require(imported.contacts.size() == next.contacts.size(), "an export has all contacts");
  exportDirectory(imported);
  require(content(kExchangeFile) == exported, "an import takes over what was exported");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzzedPhone();
  std::string_view input = inputText(data, size);
  const std::string kind = takeLine(input);
  put(kContactFile,
      kind == "contacts" ? input : "<root_contact><contact display_name='Ann' group_id_name='5'/></root_contact>");
  put(kGroupFile, kind == "groups" ? input : "<root_group><group id='5' display_name='Five'/></root_group>");
  put(kExchangeFile, input);
  Directory directory;
  directory.load();
  checkContents(directory.contents());
  exchange(directory, kind == "keep");
  change(directory);
  return 0;
}
