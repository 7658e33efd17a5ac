// What families of keys offer and what types of keys have there.
#include <algorithm>

#include "dsskey/dsskey_types.h"
#include "tests/dsskey/key_model_test.h"

namespace {

using RulesTest = KeyModelTest;

TEST_F(RulesTest, TypesInTheOrderOfThePicker) {
  const std::string others = "0 15 13 16 12 9 23 10 14 11 40 45 22 27 38 1 2 3 4 5 7 8 25 35 24 18 34 42 41 17 50 61 ";
  const std::string othersWithServices =
      "0 15 13 16 39 12 9 23 10 14 11 40 45 22 27 38 46 1 2 3 4 5 7 8 25 35 24 18 20 34 42 41 17 50 55 56 57 58 60 59 "
      "61 ";
  const struct {
    const char* services;
    int family;
    std::string types;
  } kRows[] = {
      {"0", 0, others},
      {"0", 1, others},
      {"0", 2, "0 13 9 23 40 45 22 27 28 30 31 38 2 5 7 8 32 47 33 43 34 50 61 "},
      {"0", 3, others},
      {"1", 0, othersWithServices},
      {"1", 1, othersWithServices},
      {"1", 2, "0 13 9 23 40 45 22 27 28 30 31 38 46 2 5 7 8 32 47 33 43 44 34 50 55 61 "},
      {"1", 3, othersWithServices},
      {"", 1, othersWithServices},
      {"1", 4, ""},
      {"1", -1, ""},
  };
  for (const auto& row : kRows) {
    setConfig("BSFTActive", row.services);
    OrbList<DssKey_Type> types;
    model.GetDKtypeList(&types, static_cast<DSSK_MODEL_TYPE>(row.family));
    std::string text;
    for (const DssKey_Type type : types) text += std::to_string(type) + " ";
    EXPECT_EQ(text, row.types) << row.services << " " << row.family;
  }
  EXPECT_FALSE(model.CheckSupportDKtype(DSSK_LINE, 62) || model.CheckSupportDKtype(DSSK_LINE, -1));
}

// The numbers of the types that a parameter belongs to.
std::string typesWith(Dsskey_K7X_Model& model, int parameter, int family, int keyIndex) {
  std::string text;
  for (int type = 0; type <= 61; ++type) {
    if (model.EnableParamer(static_cast<DSSK_PARA_TYPE>(parameter), static_cast<DSSK_MODEL_TYPE>(family), type,
                            keyIndex)) {
      text += std::to_string(type) + " ";
    }
  }
  return text;
}

TEST_F(RulesTest, ParametersOfTypes) {
  const std::string lines = "9 10 12 13 14 15 16 22 23 28 39 45 46 49 54 55 56 ";
  const std::string values = "1 2 3 9 10 11 12 13 14 16 17 23 24 27 35 40 55 56 59 60 ";
  const struct {
    int parameter, family;
    std::string types;
  } kRows[] = {
      {0, 0, values},
      {0, 1, "1 2 3 9 10 11 12 13 14 15 16 17 21 23 24 27 35 40 55 56 59 60 "},
      {0, 2, "1 3 9 10 11 12 13 14 16 17 23 24 27 35 40 55 56 59 60 "},
      {0, 3, values},
      {1, 1, lines},
      {1, 2, lines},
      {3, 1, "16 55 "},
      {3, 3, "16 55 "},
      {4, 1, ""},
      {0, 4, ""},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(typesWith(model, row.parameter, row.family, -1), row.types) << row.parameter << " " << row.family;
  }
  EXPECT_TRUE(model.CheckSupportParamer(DSSK_PARA_LABEL, DSSK_EXT));
  EXPECT_FALSE(model.CheckSupportParamer(DSSK_PARA_LABEL, DSSK_MEMORY));
}

TEST_F(RulesTest, LabelsDependOnPhoneModuleAndKey) {
  const struct {
    int phone, modules, family, keyIndex, labelled;  // how many types; type 0 is never one of them
  } kRows[] = {
      {46, 0, 0, 1, 0}, {46, 0, 1, 1, 59}, {46, 0, 1, -1, 59}, {20, 0, 1, 1, 0}, {65, 0, 1, 1, 0}, {46, 0, 2, 4, 61},
      {46, 0, 2, 5, 0}, {46, 0, 2, 0, 0},  {46, 0, 2, -1, 0},  {46, 0, 3, 1, 0}, {46, 1, 3, 1, 0}, {46, 2, 3, 1, 60},
  };
  for (const auto& row : kRows) {
    setState("{\"phoneType\":" + std::to_string(row.phone) +
             ",\"answers\":{\"app_hostapp 0x3000e\":" + std::to_string(row.modules << 4 | 1) + "}}");
    Dsskey_K7X_Model fresh;
    Key_Display display;
    if (row.modules != 0) fresh.GetKeyIndexList(&display, DSSK_EXT, 1);
    const std::string types = typesWith(fresh, DSSK_PARA_LABEL, row.family, row.keyIndex);
    EXPECT_EQ(std::ranges::count(types, ' '), row.labelled) << row.phone << " " << row.family << " " << row.keyIndex;
  }
}

TEST_F(RulesTest, NamesOfTypes) {
  const struct {
    int type;
    DSSK_MODEL_TYPE family;
    const char* name;
  } kRows[] = {{40, DSSK_PROGRAM, "PTT"},        {40, DSSK_EXT, "Prefix"},    {0, DSSK_LINE, "N/A"},
               {-1, DSSK_LINE, "N/A"},           {62, DSSK_LINE, "N/A"},      {15, DSSK_LINE, "Line"},
               {41, DSSK_LINE, "zero sp touch"}, {61, DSSK_LINE, "Favorites"}};
  for (const auto& row : kRows) EXPECT_STREQ(dsskey::typeName(row.type, row.family), row.name) << row.type;
}

TEST_F(RulesTest, PagesOfKeys) {
  const struct {
    const char* state;
    DSSK_MODEL_TYPE family;
    int page;
    const char* shown;  // status, page, pages: keys
  } kRows[] = {
      {"{}", DSSK_LINE, 1, "1 1 3: 1 9"},
      {"{}", DSSK_LINE, 3, "1 3 3: 19 27"},
      {"{}", DSSK_LINE, 4, "0 4 3:"},
      {"{}", DSSK_LINE, 0, "0 0 3:"},
      {"{}", DSSK_LINE, 2147483647, "0 2147483647 3:"},
      {"{}", DSSK_PROGRAM, 1, "2 1 1: 1 2 3 4 5 6 7 8 9 10 12 13 14"},
      {"{}", DSSK_MEMORY, 1, "0 -1 0:"},
      {"{}", static_cast<DSSK_MODEL_TYPE>(9), 1, "0 -1 0:"},
      {"{}", DSSK_EXT, 1, "0 1 0:"},
      {R"({"expansionModules":[{"type":0},{"type":5}]})", DSSK_EXT, 2, "1 2 2: 0 37"},
      {R"({"expansionModules":[{"type":5},{"type":0}]})", DSSK_EXT, 1, "1 1 2: 0 39"},
      {"{}", DSSK_EXT, 3, "0 3 2:"},
      {"{}", DSSK_EXT, -2147483648, "0 -2147483648 2:"},
      {R"({"answers":{"app_hostapp 0x3000e":-1}})", DSSK_EXT, 1, "0 1 0:"},
  };
  for (const auto& row : kRows) {
    setState(row.state);
    Key_Display display;
    model.GetKeyIndexList(&display, row.family, row.page);
    std::string text = std::to_string(display.status) + " " + std::to_string(display.page) + " " +
                       std::to_string(display.pageCount) + ":";
    for (const int index : display.keyIndexList) text += " " + std::to_string(index);
    EXPECT_EQ(text, row.shown);
  }
}

TEST_F(RulesTest, ChoicesOfLines) {
  const std::string accounts = "0=Line 1, 1=Line 2, 2=Line 3, 3=Line 4, 4=Line 5, 5=Line 6";
  const struct {
    int type;
    std::string settings, choices;
  } kRows[] = {
      {13, "", accounts},
      {49, "", accounts},
      {22, "", "0=Friends, 1=A & B"},
      {28, "BSFTActive=1", "0=Local History"},
      {28, "NetworkCalllogSwitch=1", "0=Local History, 1=Network CallLog"},
      {45, "", "0=All Contacts, 1=Team <1>"},
      {46, "", "0=N/A"},
      {46, "AccountBroadsoftXSIHostAddr@0=xsi&AccountBroadsoftXSIPassword@0=p", "0=All Contacts"},
      {46, "BsftEnterprise=1&BsftCustom=1&NetworkDirectoryEnterpriseDisplayname=Firm&BsftCustomListUse=Sales,Support",
       "0=All Contacts, 1=Firm, 2=Sales, 3=Support"},
      {46, "BsftGroup=1&NetworkDirectoryGroupDisplayname=Ours", "0=All Contacts, 1=Ours, 2=Firm, 3=Sales, 4=Support"},
      {54, "", "0=NetCalllog"},
  };
  write("/config/data/contact_group_list.xml",
        "<root_group><group id='0' display_name='All Contacts'/><group id='1' display_name='Blacklist'/><group id='2'/>"
        "<group id='3' display_name='Team &lt;1>'/></root_group>");
  write("/config/data/remote_phonebook_list.xml",
        "<root_phonebook><item name='Friends'/><item name=''/><other name='x'/><item name='A &amp; "
        "B'/></root_phonebook>");
  for (const auto& row : kRows) {
    setConfig(row.settings);
    OrbList<KeyValue> list;
    EXPECT_TRUE(model.GetAttrListByDKtype(&list, row.type, DSSK_PARA_LINE, true));
    EXPECT_EQ(choices(list), row.choices) << row.type << " " << row.settings;
  }
  log.clear();
  OrbList<KeyValue> disabled, value, groups, phonebooks;
  EXPECT_TRUE(model.GetLineListByDKtype(&disabled, 13, false) && model.GetValueListByDKtype(&value, 21));
  EXPECT_FALSE(model.GetValueListByDKtype(&value, 16) || model.GetAttrListByDKtype(&value, 15, DSSK_PARA_EXT, true));
  EXPECT_EQ(choices(disabled) + " " + choices(value), "0=N/A 0=default, 1=float, 2=lock");
  write("/config/data/contact_group_list.xml", "<root_group><gro");
  std::filesystem::remove(file("/config/data/remote_phonebook_list.xml"));
  EXPECT_FALSE(model.GetLocalGroupList(&groups) || model.GetXMLGroupList(&phonebooks));
  EXPECT_EQ(choices(groups) + "|" + choices(phonebooks), "|0=N/A");
  EXPECT_EQ(log, (std::vector<std::string>{"4 DSSKeyInterface::getLocalGroupLineData End.root element is null",
                                           "4 remote_phonebook_list.xml open error!"}));
}

}  // namespace
