#include "host/server_core.h"

#include <filesystem>
#include <utility>

namespace host {
namespace {
// What is too long for memory goes to the phone's own folder for such things.
std::string makeSpoolFolder(const std::filesystem::path& root) {
  std::error_code ignored;
  std::filesystem::create_directories(root / "tmp", ignored);
  return (root / "tmp").string();
}

AdmissionRules rulesFor(const ServerSettings& settings) {
  AdmissionRules rules{settings.maxUpload, static_cast<bool>(settings.simulator), settings.names};
  for (const UserFolder& folder : settings.userFolders) rules.userPrefixes.push_back(folder.prefix);
  return rules;
}
}  // namespace

ServerCore::ServerCore(PageTable& pages, ServerSettings serverSettings)
    : settings(std::move(serverSettings)),
      rules(rulesFor(settings)),
      spoolFolder(makeSpoolFolder(settings.root)),
      files(settings.root / "phone/www/htdocs"),
      runner(pages, {settings.root, spoolFolder, settings.rights, settings.device}) {}

}  // namespace host
