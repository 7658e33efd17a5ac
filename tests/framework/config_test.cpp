// Settings between the configuration service and a page.
#include "framework/config_operate.h"
#include "framework/visibility.h"
#include "tests/support/phone_test.h"

namespace {

using ConfigTest = PhoneTest;
using VisibilityTest = PhoneTest;
using Lines = std::vector<std::string>;

constexpr const char* kKeys[] = {"KeyA", nullptr, "KeyB"};

std::string shown(TMPL_varlist* list, const std::string& names) {
  RecordingResponse response;
  response.renderTemplate("x", list);
  return response.variable(names);
}

TEST_F(ConfigTest, ReadsEscapedAndBounded) {
  setConfig("KeyA", "<a href=\"x\">&amp;</a>");
  setConfig("KeyB", std::string(2000, 'b'));
  EXPECT_EQ(shown(readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0), "KeyA KeyB"),
            "&lt;a href=&quot;x&quot;&gt;&amp;amp;&lt;/a&gt;|" + std::string(1023, 'b'));
  std::string buffer = "old";
  readConfigOperate(GLOBAL_FILE, "KeyB", buffer, 16, 0);
  EXPECT_EQ(buffer, std::string(15, 'b'));
  setConfig("AccountLabel@2", "third");
  EXPECT_EQ(shown(readConfigOperate(ACCOUNT_FILE, "AccountLabel", nullptr, 2), "AccountLabel"), "third");
  EXPECT_EQ(shown(readConfigOperate(ACCOUNT_FILE, "AccountLabel", nullptr, '"', 1), "AccountLabel"), "");
}

TEST_F(ConfigTest, StoresPresentFieldsAndTellsWhetherOneChanged) {
  setConfig("KeyA=1&KeyB=2");
  FakeRequest same{{"KeyA", "1"}}, other{{"KeyA", "x\n\"=;"}, {"KeyB", "2"}}, none;
  EXPECT_EQ(writeConfigOperate(GLOBAL_FILE, kKeys, &same, 0), 0);
  EXPECT_EQ(writeConfigOperate(GLOBAL_FILE, kKeys, &other, 0), 1);
  EXPECT_EQ(writeConfigOperate(GLOBAL_FILE, kKeys, &none, 0), 0);
  EXPECT_EQ(writeConfigOperate(ACCOUNT_FILE, "AccountLabel", "a", 1), 1);
  EXPECT_EQ(config("KeyA KeyB AccountLabel@1 AccountLabel@2"), "x\n\"=;|2|a|");
}

TEST_F(ConfigTest, BadArgumentsAreLoggedAndStoreNothing) {
  FakeRequest request;
  std::string buffer = "kept";
  TMPL_varlist* list = TMPL_add_var(nullptr, "x", "y", nullptr);
  const char* const* noTable = nullptr;
  const char* noText = nullptr;
  EXPECT_EQ(readConfigOperate(GLOBAL_FILE, kKeys, 0, list, 0), list);
  EXPECT_EQ(readConfigOperate(GLOBAL_FILE, noTable, 2, list, 0), nullptr);
  EXPECT_EQ(readConfigOperate(GLOBAL_FILE, noText, list, 0), nullptr);
  readConfigOperate(GLOBAL_FILE, noText, buffer, 16, 0);
  EXPECT_EQ(buffer, "kept");
  EXPECT_EQ(writeConfigOperate(GLOBAL_FILE, noTable, 2, &request, 0), -1);
  EXPECT_EQ(writeConfigOperate(GLOBAL_FILE, "KeyA", static_cast<HttpRequest*>(nullptr), 0), -1);
  EXPECT_EQ(writeConfigOperate(GLOBAL_FILE, "KeyA", &request, 0), -1);
  EXPECT_EQ(writeConfigOperate(GLOBAL_FILE, "KeyA", noText, 0), -1);
  const std::string read = "4 readConfigOperate() para error", null = "4 Parameter is null";
  EXPECT_EQ(log, (Lines{read, read, read, null, "4 writeConfigOperate() para error.",
                        "4 writeConfigOperate() get KeyA =NULL.", null}));
}

std::string levels(SHOWTYPE type, std::initializer_list<const char*> keys, std::string text = "",
                   std::size_t size = 1024) {
  showString(type, std::data(keys), static_cast<int>(keys.size()), &text, size);
  return text;
}

TEST_F(VisibilityTest, ListsKeysWithTheirLevels) {
  setConfig("k1=a&k2=b&k3=c&i1=x&i2=0123456789abcdefg");
  const std::string menu = levels(SHOWTYPE_MENU, {"k1", "k2", "k3"});
  EXPECT_EQ(levels(SHOWTYPE_ITEM, {"i1", "i2"}, menu), "k1=a&k2=b&k3=c$i1=x&i2=0123456789abcde");
  EXPECT_EQ(levels(SHOWTYPE_MENU, {"k1", nullptr}), "k1=a&");
  EXPECT_EQ(levels(SHOWTYPE_MENU, {"k1", "k2"}, "", 8), "k1=a&k2");
  std::string text = "same";
  showString(SHOWTYPE_ITEM, nullptr, 1, &text, 1024);
  EXPECT_EQ(text, "same");
}

TEST_F(VisibilityTest, TellsTheDeviceSeries) {
  const auto series = [](const std::string& type) {
    setState("{\"phoneType\":" + type + "}");
    return shown(AddDevType(nullptr), "devseries");
  };
  EXPECT_EQ(joinedValues("41 42 19 21 20", series), "alpha_series|alpha_series|beta_series|beta_series|");
}

TEST_F(VisibilityTest, LoginNamesMapToIdentities) {
  setConfig("UserNameVar", "a&b");
  const auto identityOf = [](const std::string& name, std::string identity = "-") {
    GetIdentityByName(name.c_str(), &identity);
    return identity;
  };
  const auto nameOf = [](const std::string& identity, std::string name = "-") {
    GetNameByIdentity(&name, identity.c_str());
    return name;
  };
  EXPECT_EQ(joinedValues("nobody a&b admin", identityOf) + " " + joinedValues("root var", nameOf), "-|var|admin -|a&b");
  setConfig("UserNameVar", "admin");
  EXPECT_EQ(identityOf("admin"), "admin");
  std::string text;
  GetIdentityByName(nullptr, &text);
  GetNameByIdentity(&text, nullptr);
  EXPECT_EQ(log, (Lines{"4 GetIdentityByName para error", "4 GetIdentityByName para error"}));
}

}  // namespace
