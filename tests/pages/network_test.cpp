// The network pages.
#include "tests/support/page_test.h"

namespace {

using NetworkPages = PageTest;

TEST_F(NetworkPages, NetworkIsShownAgainAfterASaveAndNeverItsPin) {
  setConfig("NetworkPppoePin", "top secret");
  const RecordingResponse page =
      save("network",
           "ipv4type=2&ipv6type=1&NetworkWanStaticIp=192.0.2.1&NetworkWanType=9&NetworkPppoePin=no PPPoE&reboot=TRUE");
  EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/network.htm"});
  EXPECT_TRUE(page.redirects.empty());
  EXPECT_EQ(page.variable("NetworkWanStaticIp NetworkWanType NetworkIPv6WANType"), "192.0.2.1|2|1");
  for (const auto& [name, value] : page.variables) EXPECT_EQ(value.find("secret"), std::string::npos) << name;
  EXPECT_EQ(config("NetworkPppoePin VlanDhcpSwitch"), "top secret|1");
  EXPECT_EQ(announced(), "");
}

TEST_F(NetworkPages, PppoeSwitchesVlansOffAndKeepsAMaskedPin) {
  setConfig("NetworkPppoePin=old&VlanWanSwitch=1&VlanPcSwitch=1&VlanDhcpSwitch=1");
  for (const auto& [pin, stored] : Values{{"********", "old"}, {"*********", "*********"}}) {
    save("network", "ipv4type=1&NetworkPppoePin=" + pin);
    EXPECT_EQ(config("VlanWanSwitch VlanPcSwitch VlanDhcpSwitch NetworkPppoePin"), "0|0|0|" + stored);
  }
  log.clear();
  save("network", "NetworkPppoeUser=u");
  EXPECT_EQ(log, (Messages{"4 Parameter is null", "4 Parameter is null"}));
}

TEST_F(NetworkPages, PcPort) {
  const RecordingResponse page = save("network-pcport", "NetworkLanRouterIP=10.1.1.1&type=0&NetworkPCPortSwitch=0");
  EXPECT_EQ(page.variable("NetworkLanRouterIP NetworkLanType NetworkPCPortSwitch ShowLevel"),
            "10.1.1.1|0|0|network-pcport=1&network-basic=1&network-advanced=0$");
  EXPECT_EQ(announced(), "");
}

}  // namespace
