// What the tests of the page of configuration archives share.
#pragma once

#include <gmock/gmock.h>

#include "tests/support/page_test.h"
#include "tests/support/tar.h"

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

inline constexpr char kUpdating[] = "setInterval$Configuration updating ...";
inline constexpr char kRefused[] = "setTimeout$Error:Import config error!";

class SettingsConfigTest : public PageTest {
 protected:
  RecordingResponse act(const std::string& action, const std::string& fields = "") {
    return run("settings-config", action, fields);
  }
  // The notice that an upload ends in; nothing temporary is left, whatever it was.
  std::string upload(const std::string& action, const std::string& archive) {
    write("/tmp/fileupload_aB3-_9", archive);
    const std::string field = action == "import" ? "ConfigFileName" : "FactoryConfig";
    const std::string label = act(action, field + "=/tmp/fileupload_aB3-_9").variable("noticeLabel");
    expectNothingLeft();
    return label.substr(0, label.find("$settings-config$")) + label.substr(std::min(label.size(), label.rfind('$')));
  }
  std::string import(const Tar& archive) { return upload("import", archive.text()); }
  void expectNothingLeft() const {
    for (const char* path : {"/tmp/fileupload_aB3-_9", "/tmp/importfile.tar", "/tmp/config.tar", "/tmp/unpacked",
                             "/tmp/export", "/config/.import", "/data/customfactory.new"})
      EXPECT_FALSE(fs::exists(file(path))) << path;
  }
  // What an archive of the page holds: names, "=" and contents of plain files.
  std::map<std::string, std::string> unpacked(const std::string& archive) {
    write("/tmp/x/a.tar", archive);
    EXPECT_EQ(std::system(("tar -xf " + file("/tmp/x/a.tar").string() + " -C " + file("/tmp/x").string()).c_str()), 0);
    fs::remove(file("/tmp/x/a.tar"));
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(file("/tmp/x"))) {
      const std::string path = entry.path().lexically_relative(file("/tmp/x")).string();
      files[path] = entry.is_regular_file() ? content("/tmp/x/" + path) : "";
    }
    fs::remove_all(file("/tmp/x"));
    return files;
  }
  std::string configTree() {
    std::string all;
    for (const auto& entry : fs::recursive_directory_iterator(file("/config"))) {
      const std::string path = entry.path().lexically_relative(file("/config")).string();
      all += path + "\n" + (entry.is_regular_file() ? content("/config/" + path) : "");
    }
    return all;
  }
};
