// Date and time: zones and their rules, what a save announces, and the clock.
#include <pugixml.hpp>
#include <regex>
#include <set>

#include "servlet/settings/settings_datetime_daylight.h"
#include "tests/support/page_test.h"

namespace {

constexpr char kZones[] = "/config/data/AutoDST.xml";
constexpr char kFactoryZones[] = "/phone/factory/data/AutoDST.xml";
constexpr char kTestZones[] =
    "<x><!-- --><z szTime='+1' szZone='Rome &amp; Bari' iType='1' szStart='3/5/7/2' szEnd='10/5/7/3' szOffset='60'/>"
    "<z szTime='+1' szZone='Berlin' iType='0' szStart='3/25/2' szEnd='10/28/3' szOffset='60'/>text<z szTime='+2'/>"
    "<z szTime='+2' szZone='Cairo'/><z szTime='+1' szZone='Late' iType=''/><z szZone='Nowhere' iType='2'/>"
    "<z szTime='+3' szZone='Odd' iType='1' szStart='123456789/1234/&lt;/&quot;' szEnd='1//3/4' szOffset='301'/>"
    "<z szTime='+3' szZone='Short' iType='0' szStart='2/30/2' szEnd='' szOffset='x'/></x>";

class DateAndTime : public PageTest {
 protected:
  // The answer on a zone that was chosen.
  std::string ruleOf(const std::string& zone) { return run("settings-datetime", "TimeZoneChanged", "z=" + zone).body; }
  std::string selectedZones(const std::string& offset, const std::string& zone) {
    setConfig("CurrentTimeZoneTime", offset);
    setConfig("CurrentTimeZoneZone", zone);
    return load("settings-datetime").column("timezoneLoop", "selected");
  }
  std::string shownRule() {
    return load("settings-datetime")
        .variable("DSTTimeType sSMonth sSWeek sSDay sSHour sEMonth sEWeek sEDay sEHour DSTOffSetTime");
  }
  // The clock as it was set since the last look.
  std::string clock() {
    std::string set;
    for (const std::string& message : messages()) {
      if (message.starts_with("system setClock")) set += message.substr(16);
    }
    return set;
  }
};

TEST_F(DateAndTime, BoundariesOfRules) {
  for (const auto& [kind, right, wrong] : std::vector<std::array<std::string, 3>>{
           {"0", "2/29/2 12/31/23 4/30/0 03/09/07 3/25/2x 3/25/2/ +3/25/2",
            "2/30/2 4/31/1 11/31/0 13/1/1 0/1/1 1/0/1 1/32/1 1/1/24 1/1/-1 1/1 1/1/1/1 // x 1/99999999999/1 1//1"},
           {"1", "3/5/7/2 1/1/1/0 12/5/7/23/9", "3/6/7/2 3/0/7/2 3/5/8/2 3/5/0/2 13/5/7/2 3/5/7/24 3/5/7 3/5/7/x"},
           {"2", "", "3/25/2 3/5/7/2"}}) {
    for (const bool isRight : {true, false}) {
      std::istringstream texts(isRight ? right : wrong);
      for (std::string text; texts >> text;)
        EXPECT_EQ(CheckDSTTime(kind.c_str(), text.c_str()), isRight) << kind << text;
    }
  }
  EXPECT_TRUE(CheckDSTTime("0", " 3/ 25/\t2"));
  EXPECT_FALSE(CheckDSTTime("0", nullptr) || CheckDSTTime(nullptr, "3/25/2") || CheckDSTTime("0", ""));
}

TEST_F(DateAndTime, ZonesAreOfferedAndOneIsSelected) {
  write(kZones, kTestZones);
  EXPECT_EQ(load("settings-datetime").column("timezoneLoop", "selName"),
            "+1 Rome & Bari|+1 Berlin|+2 Cairo|+1 Late|+3 Odd|+3 Short");
  EXPECT_EQ(selectedZones("+1", "Berlin"), "|selected||||");
  EXPECT_EQ(selectedZones("+1", "Rome & Bari"), "selected|||||");
  EXPECT_EQ(selectedZones("+1", "Late"), "selected|||||");  // not beside the others of its offset
  EXPECT_EQ(selectedZones("+2", "Paris"), "||selected|||");
  EXPECT_EQ(selectedZones("+9", "Berlin") + selectedZones("", "Nowhere") + selectedZones("", ""), "|||||||||||||||");
  std::string many = "<x>";
  for (int i = 0; i < 400; ++i)
    many += "<z szTime='" + std::string(i % 4 ? "+1" : "") + "' szZone='" + std::string(200, 'z') + "'/>";
  write(kZones, many + "</x>");
  const std::string names = load("settings-datetime").column("timezoneLoop", "selName");
  EXPECT_EQ(names.size(), 300u * 127 + 299);
}

TEST_F(DateAndTime, AListThatCannotBeReadIsThatOfTheFactory) {
  const std::string row = "<x><z szTime='+1' szZone='Berlin'/></x>", stored = shownRule();
  const std::string noConfig = "4 Can't load timezone from config [/config/data/AutoDST.xml] !";
  for (const char* broken : {"", "<x>", "<x/"}) {
    write(kZones, broken);
    write(kFactoryZones, row);
    EXPECT_EQ(load("settings-datetime").column("timezoneLoop", "selValue"), "+1 Berlin");
    EXPECT_EQ(log.back(), noConfig);
    EXPECT_EQ(shownRule(), "(absent)|(absent)|(absent)|(absent)|(absent)|(absent)|(absent)|(absent)|(absent)|(absent)");
    EXPECT_EQ(ruleOf("+1 Berlin"), "");
    EXPECT_EQ(log.back(), "4 SettingsDateTimeServlet::getTimeZoneAndName End error to get root element");
    std::filesystem::remove(file(kFactoryZones));
    log.clear();
    EXPECT_EQ(load("settings-datetime").column("timezoneLoop", "selValue"), "");
    EXPECT_EQ(log, (Messages{noConfig, "4 Can't load timezone from factory config [/phone/factory/data/AutoDST.xml] !",
                             "4 SettingsDateTimeServlet::getTimeZoneAndName End error to get root element"}));
  }
}

TEST_F(DateAndTime, RuleOfAChosenZone) {
  write(kZones, kTestZones);
  for (const auto& [zone, rule] : Values{
           {"+1 Berlin", "{Type:'0',sMonth:'3',sDay:'25',sHour:'2',eMonth:'10',eDay:'28',eHour:'3',offset:'60'}"},
           {"x Rome & Bari",
            "{Type:'1',sMonth:'3',sWeek:'5',sDay:'7',sHour:'2',eMonth:'10',eWeek:'5',eDay:'7',eHour:'3',offset:'60'}"},
           {"+2 Cairo", "{Type:3}"},
           {" Late", "{Type:3}"},
           {"+3 Odd",
            "{Type:'1',sMonth:'1234567',sWeek:'123',sDay:'',sHour:'',eMonth:'1',eWeek:'',eDay:'',eHour:'',offset:''}"},
           {"+3 Short", "{Type:'0',sMonth:'2',sDay:'30',sHour:'2',eMonth:'',eDay:'',eHour:'',offset:''}"},
           {"+1 Nowhere", ""},
           {"+1 Paris", ""},
           {"Berlin", ""},
           {"+1 ", ""},
           {"", ""},
           {"+1 Berlin" + std::string(4096, ' '), ""}}) {
    FakeRequest request{{"q", "TimeZoneChanged"}, {"z", zone}};
    EXPECT_EQ(serve(pageHandler("settings-datetime"), request).body, rule) << zone;
  }
  EXPECT_TRUE(run("settings-datetime", "TimeZoneChanged").untouched());
}

TEST_F(DateAndTime, RuleThatIsShown) {
  write(kZones, kTestZones);
  setConfig("LocalTimeDaylightSaving=1&DSTTimeType=0&DSTStartTime=3/25/2&DSTEndTime=2/30/1&DSTOffSetTime=-300");
  EXPECT_EQ(shownRule(), "byDate|3|(absent)|25|2||(absent)|||-300");
  setConfig("DSTTimeType=1&DSTStartTime=3/5/7/<b>&DSTEndTime=10/5/7/3&DSTOffSetTime=301");
  EXPECT_EQ(shownRule(), "byWeek|0|0|0||10|5|7|3|");
  setConfig("LocalTimeDaylightSaving=2&CurrentTimeZoneZone=Paris");
  EXPECT_EQ(shownRule(), "byWeek|0|0|0||10|5|7|3|");
  for (const auto& [zone, rule] : Values{{"Berlin", "byDate|3|(absent)|25|2|10|(absent)|28|3|60"},
                                         {"Cairo", "byDate||(absent)||||(absent)|||"},
                                         {"Odd", "byWeek|0|0|0||0|0|0||"}}) {
    setConfig("CurrentTimeZoneZone", zone);
    EXPECT_EQ(shownRule(), rule) << zone;
  }
}

TEST_F(DateAndTime, SavesAndWhatTheyAnnounce) {
  const std::string servers = "LocalTimeType=1&LocalTimeServer1=a&LocalTimeServer2=b&TimeInterval=60&TimeZoneAndName=";
  const std::string formats = "&LocalTimeTimeFormatType=1&LocalTimeDateFormatType=2";
  const std::string long64(70, 'z');
  expectSaves(
      {{"settings-datetime", servers + "+5:30 India (New Delhi, Mumbai)" + formats,
        "broadcast 0x10007 22 0; broadcast 0x10007 27 1",
        "LocalTimeServer1=a&LocalTimeServer2=b&TimeInterval=60&CurrentTimeZoneTime=+5:30&"
        "CurrentTimeZoneZone=India (New Delhi, Mumbai)"},
       {"settings-datetime", servers + std::string(20, '1') + " " + long64,
        "broadcast 0x10007 22 0; broadcast 0x10007 27 1",
        "CurrentTimeZoneTime=111111111111111&CurrentTimeZoneZone=" + long64.substr(0, 63)},
       {"settings-datetime", servers + "Berlin", "broadcast 0x10007 22 0; broadcast 0x10007 27 1",
        "CurrentTimeZoneTime=&CurrentTimeZoneZone="},
       {"settings-datetime",
        "LocalTimeType=1&LocalTimeDaylightSaving=1&DSTTimeType=0&sDateSMonth=3&sDateSDay=25&sDateSHour=2&sDateEMonth="
        "10&"
        "sDateEDay=28&DSTOffSetTime=30",
        "broadcast 0x10007 22 0; broadcast 0x10007 27 1",
        "DSTTimeType=0&DSTStartTime=3/25/2&DSTEndTime=10/5/7/2&DSTOffSetTime=30&LocalTimeDaylightSaving=1"},
       {"settings-datetime",
        "LocalTimeType=1&LocalTimeDaylightSaving=1&DSTTimeType=1&sWeekSMonth=9&sWeekSWeek=1&sWeekSDay=7&sWeekSHour=2&"
        "sWeekEMonth=4&sWeekEWeek=" +
            std::string(400, '1') + "&sWeekEDay=7&sWeekEHour=3",
        "broadcast 0x10007 22 0; broadcast 0x10007 27 1", "DSTStartTime=9/1/7/2&DSTEndTime=4/" + std::string(253, '1')},
       {"settings-datetime",
        "LocalTimeType=1&LocalTimeDaylightSaving=2&DSTTimeType=0&sDateSMonth=1&sDateSDay=1&sDateSHour=1&DSTOffSetTime="
        "9",
        "broadcast 0x10007 22 0; broadcast 0x10007 27 1", "DSTStartTime=9/1/7/2&DSTOffSetTime=30"},
       {"settings-datetime",
        "LocalTimeType=0&LocalTimeServer1=x&TimeZoneAndName=+1 x&LocalTimeTimeFormatType=1&LocalTimeDateFormatType=3",
        "broadcast 0x10007 27 2; broadcast 0x10007 27 0",
        "LocalTimeServer1=a&LocalTimeType=0&LocalTimeDateFormatType=3"},
       {"settings-datetime", "LocalTimeDateFormatType=2", "broadcast 0x10007 27 1", "LocalTimeDateFormatType=2"}});
}

TEST_F(DateAndTime, TheClockIsSetToTimesThatThereAre) {
  const auto set = [&](const std::string& time) {
    std::istringstream parts(time);
    std::string fields = "LocalTimeType=0", value;
    for (const char* part : {"Year", "Month", "Day", "Hour", "Minute", "Second"}) {
      if (std::getline(parts, value, ',') && value != "-") fields += std::string("&Manual") + part + "=" + value;
    }
    EXPECT_EQ(save("settings-datetime", fields).redirects.size(), 1u);
    return clock();
  };
  EXPECT_EQ(set("2026,11,23,04,05,06"), "2026-11-23 04:05:06");
  const RecordingResponse page = load("settings-datetime");
  EXPECT_EQ(page.variable("ManualYear ManualMonth ManualDay ManualHour ManualMinute"), "2026|11|23|4|5");
  EXPECT_EQ(set("2028,2,29,23,59,59"), "2028-02-29 23:59:59");
  for (const char* none :
       {"2026,2,30,1,1,1", "2026,2,29,1,1,1", "2026,4,31,1,1,1", "2026,1,1,25,1,1",  "2026,1,1,24,0,0",
        "2026,1,1,1,60,1", "2026,1,1,1,1,60", "2026,13,1,1,1,1", "2026,0,1,1,1,1",   "2026,1,0,1,1,1",
        "2026,1,1,-1,1,1", "0,1,1,1,1,1",     "1969,1,1,1,1,1",  "2026,260,1,1,1,1", "99999999999,1,1,1,1,1",
        "2026,1,1,1,1,x",  "2026,1,1,1,1,",   "2026,1,1,1,1,-",  "2026,1,1,1,1,1;2", "-,-,-,-,-,-"})
    EXPECT_EQ(set(none), "") << none;
}

// What a phone is delivered with.
TEST_F(DateAndTime, ZonesOfTheWorld) {
  EXPECT_EQ(shownRule(), "byWeek|3|5|7|1|10|5|7|2|60");
  EXPECT_EQ(ruleOf("-5 United States (Eastern, New York)"),
            "{Type:'1',sMonth:'3',sWeek:'2',sDay:'7',sHour:'2',eMonth:'11',eWeek:'1',eDay:'7',eHour:'2',offset:'60'}");
  EXPECT_EQ(ruleOf("+10:30 Australia (Lord Howe)"),
            "{Type:'1',sMonth:'10',sWeek:'1',sDay:'7',sHour:'2',eMonth:'4',eWeek:'1',eDay:'7',eHour:'2',offset:'30'}");
  pugi::xml_document document;
  ASSERT_TRUE(document.load_string(content(kZones).c_str()));
  std::set<std::string> names;
  int last = -12 * 60, rules = 0;
  for (const pugi::xml_node zone : document.document_element()) {
    const std::string name = zone.attribute("szZone").value(), offset = zone.attribute("szTime").value();
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(offset, parts, std::regex(R"(0|([+-])(\d+)(?::(\d\d))?)"))) << name;
    const int minutes = 60 * std::stoi("0" + parts[2].str()) + std::stoi("0" + parts[3].str());
    EXPECT_LE(last, parts[1] == "-" ? -minutes : minutes) << name;
    last = parts[1] == "-" ? -minutes : minutes;
    EXPECT_TRUE(names.insert(name).second && name.size() < 64) << name;
    const char* kind = zone.attribute("iType").value();
    if (!*kind) continue;
    ++rules;
    for (const char* boundary : {"szStart", "szEnd"})
      EXPECT_TRUE(CheckDSTTime(kind, zone.attribute(boundary).value())) << name;
  }
  EXPECT_TRUE(names.size() >= 200 && names.size() <= 300 && rules >= 70) << names.size() << " " << rules;
}

}  // namespace
