// The soft keys of the call states.
#include "tests/support/page_test.h"

namespace {

constexpr char kPage[] = "settings-softkey";
constexpr char kTalk[] = "/config/softkey/Talk.xml";
constexpr char kTalkStates[] =
    "<A><Enable><Key Type='x'/></Enable></A>"
    "<Talk><Default><Key Type='Hold'/><Key Type='park'/><Key Type='End &amp;lt;'/></Default>"
    "<Enable><Key Type='Hold'/><Key Type='Park'/><Other Type='no'/><Key Type='Line'/></Enable>"
    "<Disable><Key Type='Empty'/><Key Type='Swap'/><Key Type='disp CODE'/><Key Type='Empty'/></Disable></Talk>";

class SoftKeys : public PageTest {
 protected:
  SoftKeys() { write(kTalk, kTalkStates); }
  // What a state shows on the screen and what not.
  std::string keys(const std::string& state, FakeSession* own = nullptr) {
    const RecordingResponse page = act("load", "callStates=" + state, own);
    return page.column("enabledLoop", "key") + "; " + page.column("disabledLoop", "key");
  }
  RecordingResponse act(const std::string& action, const std::string& fields, FakeSession* own = nullptr) {
    FakeRequest request;
    request.session = own ? own : &session;
    request.fields = fieldsOf(fields);
    request.fields.emplace("q", action);
    return serve(pageHandler(kPage), request);
  }
  // All that the state has, in the order of the file.
  std::string stored(const std::string& state) {
    setConfig("BSFTActive", "1");
    FakeSession other;
    return keys(state, &other);
  }
};

TEST_F(SoftKeys, DeliveredStatesAreListedAndDialingIsTheFirst) {
  std::filesystem::remove(file(kTalk));
  for (const std::string fields : {"", "callStates=Dialing.xml", "callStates=Dialing.xml:Dialing"}) {
    const RecordingResponse page = load(kPage, fields);
    EXPECT_EQ(columns(page, "statesLoop", "selValue selected"),
              "CallFailed.xml:CallFailed|CallIn.xml:CallIn|CallOut.xml:Connecting|CallOut.xml:RingBack|"
              "Conference.xml:Conference|Dialing.xml:Dialing|Hold.xml:Hold|OnTalk.xml:OnTalk|Transfer.xml:Transfer, "
              "0|0|0|0|0|1|0|0|0");
    EXPECT_EQ(columns(page, "enabledLoop", "key"), "Send|IME|Delete|Cancel");
    EXPECT_EQ(columns(page, "disabledLoop", "key displaykey"),
              "Empty|Line|History|Directory, Empty|Line Selection|History|Directory");
  }
  EXPECT_EQ(log, Messages{"6 search node = Dialing"});
  EXPECT_EQ(keys("OnTalk.xml:OnTalk"), "Transfer|Hold|Conference|EndCall; Empty|NewCall|Swap|Line|Directory");
  EXPECT_EQ(keys("CallOut.xml:RingBack"), "Empty|Empty|Empty|EndCall; Empty|Transfer|Conference|NewCall");
  EXPECT_EQ(act("show", "").status, 404);
}

TEST_F(SoftKeys, StatesThatCannotBeFoundShowAndChangeNothing) {
  write("/config/Talk.xml", kTalkStates);
  write("/config/softkey/Talk.txt", kTalkStates);
  write("/config/softkey/Cut.xml", "<Talk><Enable>");
  write("/config/softkey/Void.xml", "");
  const std::string before = everythingStored();
  for (const std::string state :
       {"", ":Talk", "../Talk.xml:Talk", "/config/softkey/Talk.xml:Talk", "./Talk.xml:Talk", "..", "Talk:Talk",
        "Talk.txt:Talk", "Gone.xml:Talk", "Cut.xml:Talk", "Void.xml", "Talk.xml%s"}) {
    SCOPED_TRACE(state);
    log.clear();
    EXPECT_EQ(columns(load(kPage, "callStates=" + state), "statesLoop", "selValue") + keys(state), "; ");
    const std::string name = state.substr(0, state.find(':'));
    EXPECT_EQ(log[0], "4 load " + name + " error!");
    EXPECT_EQ(log[1], "4 statesLoop is NULL!!");
    act("write", "selectSoftKeys=a&unSelectSoftKeys=b&CustomSoftkeySwitch=0&callStates=" + state);
    act("reset", "callStates=" + state);
  }
  EXPECT_EQ(keys("Talk.xml:talk"), "; ");  // the file is there, the state is not
  EXPECT_EQ(log.back(), "6 search node = talk");
  act("write", "selectSoftKeys=a&unSelectSoftKeys=b&callStates=Talk.xml:talk");
  act("reset", "callStates=Talk.xml:talk");
  setState(R"({"talking":true})");
  for (const char* action : {"write", "reset"}) {
    EXPECT_EQ(act(action, "selectSoftKeys=a&CustomSoftkeySwitch=1&callStates=Talk.xml:Talk").variable("noticeLabel"),
              "setTimeout$notice$Talking, Please wait...");
  }
  EXPECT_EQ(everythingStored(), before);
}

TEST_F(SoftKeys, SavesReplaceTheStateAndTellOfTheSwitch) {
  keys("Talk.xml:Talk");
  announced();
  const std::string fields = "callStates=Talk.xml:Talk&unSelectSoftKeys=Swap,<\",Empty&selectSoftKeys=Line,&";
  EXPECT_EQ(act("write", fields + "CustomSoftkeySwitch=1").redirects,
            Messages{"/servlet?p=settings-softkey&q=load&callStates=Talk.xml:Talk"});
  EXPECT_EQ(announced(), "broadcast 0x10007 36 0");
  EXPECT_EQ(content(kTalk), R"(<?xml version="1.0"?>
<A>
	<Enable>
		<Key Type="x" />
	</Enable>
</A>
<Talk>
	<Default>
		<Key Type="Hold" />
		<Key Type="park" />
		<Key Type="End &amp;lt;" />
	</Default>
	<Enable>
		<Key Type="Line" />
	</Enable>
	<Disable>
		<Key Type="Swap" />
		<Key Type="&lt;&quot;" />
		<Key Type="Empty" />
		<Key Type="disp CODE" />
		<Key Type="Park" />
	</Disable>
</Talk>
)");
  act("write", fields + "CustomSoftkeySwitch=1");
  EXPECT_EQ(announced(), "");
  const std::string before = content(kTalk);
  act("write", "callStates=Talk.xml:Talk&CustomSoftkeySwitch=0");  // by somebody who may not see the lists
  EXPECT_EQ(announced() + content(kTalk), "broadcast 0x10007 36 0" + before);
  act("write", "callStates=Talk.xml&selectSoftKeys=y&unSelectSoftKeys=z");  // "A" has no keys that are off
  EXPECT_EQ(stored("Talk.xml:A"), "y; ");
  const std::string longest(70, 'x'), hostile = "a&q=reset\r\n%:b c:d";
  EXPECT_EQ(act("write", "callStates=" + longest).redirects[0].substr(46), longest.substr(7));
  FakeRequest request{{"q", "reset"}, {"callStates", hostile}};
  EXPECT_EQ(serve(pageHandler(kPage), request).redirects[0].substr(46), "a%26q%3Dreset%0D%0A%25:b%20c%3Ad");
}

// A key that the page does not show is never lost, nor put into another state.
TEST_F(SoftKeys, KeysOfServicesStayHiddenBySession) {
  const std::string post = "selectSoftKeys=Hold&unSelectSoftKeys=Swap&callStates=Talk.xml:Talk";
  EXPECT_EQ(keys("Talk.xml:Talk"), "Hold|Line; Empty|Swap|Empty");
  // Which session loaded what before the first one saves.
  const std::vector<std::pair<int, const char*>> cases[] = {
      {{0, "Talk.xml:Talk"}},
      {},
      {{0, "OnTalk.xml:OnTalk"}},
      {{0, "Talk.xml:Talk"}, {1, "OnTalk.xml:OnTalk"}},
      {{1, "Talk.xml:Talk"}, {0, "Talk.xml:Talk"}, {0, "Talk.xml:A"}},
  };
  for (const auto& loads : cases) {
    write(kTalk, kTalkStates);
    setConfig("BSFTActive", "0");
    FakeSession sessions[2];
    for (const auto& [number, state] : loads) keys(state, &sessions[number]);
    act("write", post, &sessions[0]);
    EXPECT_EQ(stored("Talk.xml:Talk"), "Hold; Swap|disp CODE|Park");
  }
  // What a form showed or did not show counts, whatever the switch is by then.
  write(kTalk, kTalkStates);
  EXPECT_EQ(keys("Talk.xml:Talk"), "Hold|Park|Line; Empty|Swap|disp CODE|Empty");
  setConfig("BSFTActive", "0");
  act("write", post);
  EXPECT_EQ(stored("Talk.xml:Talk"), "Hold; Swap");
  write(kTalk, kTalkStates);
  setConfig("BSFTActive", "0");
  keys("Talk.xml:Talk");
  setConfig("BSFTActive", "1");
  act("write", post);
  EXPECT_EQ(stored("Talk.xml:Talk"), "Hold; Swap|disp CODE|Park");
}

TEST_F(SoftKeys, ResetBringsBackTheDefaultAndKeepsAllOtherKeys) {
  setConfig("CustomSoftkeySwitch", "1");
  announced();
  EXPECT_EQ(act("reset", "callStates=Talk.xml:Talk").redirects,
            Messages{"/servlet?p=settings-softkey&q=load&callStates=Talk.xml:Talk"});
  EXPECT_EQ(announced() + config("CustomSoftkeySwitch"), "1");
  const std::vector<std::string> lines{"6 search node = Talk",
                                       "6 get enable list ...",
                                       "6 get disable list ...",
                                       "6 start to write disable list ...",
                                       "6 start to write Default list ...",
                                       "6 type: Hold",
                                       "6 type: park",
                                       "6 type: End &lt;"};
  EXPECT_EQ(log, lines);
  EXPECT_EQ(stored("Talk.xml:Talk"), "Hold|park|End &amp;lt;; Empty|Park|Line|Swap|disp CODE");
}

}  // namespace
