// The network pages.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

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

class AdvancedNetwork : public PageTest {
 protected:
  // A host stores a file of a form when it is first asked for it.
  struct UploadRequest : FakeRequest {
    void setUploadFileTemplate(const char*) override { store(); }
    std::function<void()> store;
  };
  // What the answer to an upload says; the files of its folder are then those that are named.
  std::string upload(const std::string& action, const std::string& folder, std::string_view bytes,
                     const std::string& fields, const std::string& left) {
    UploadRequest request;
    request.session = &session;
    request.fields = fieldsOf("q=" + action + "&pemFile=" + folder + "fileupload_aB3-_9" + fields);
    request.store = [&] { write(folder + "fileupload_aB3-_9", bytes); };
    const RecordingResponse page = serve(pageHandler("network-adv"), request);
    EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/upload-result.htm"});
    std::vector<std::string> names = list(folder);
    std::sort(names.begin(), names.end());
    std::string all;
    for (const std::string& name : names) all += name + " ";
    EXPECT_EQ(all, left) << fields;
    return page.variable("result");
  }
  // A tar archive of what a shell makes in an empty folder.
  std::string archive(const std::string& commands, const std::string& options = ".") {
    const std::string folder = file("/tmp/packed").string();
    const std::string run = "mkdir -p '" + folder + "' && cd '" + folder + "' && { " + commands +
                            "; } && tar -cf ../a.tar " + options + " && rm -rf '" + folder + "'";
    EXPECT_EQ(std::system(run.c_str()), 0) << commands;
    return content("/tmp/a.tar");
  }
};

TEST_F(AdvancedNetwork, IsShownAgainAfterASaveAndNeverItsPassword) {
  setConfig("Network802_1XMD5Passwd=top secret&NetworkWanType=2");
  const RecordingResponse page =
      save("network-adv", "VlanWanVid=7&NetworkWanType=9&Network802_1XMD5Passwd=********&reboot=no");
  EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/network-adv.htm"});
  EXPECT_EQ(page.variable("VlanWanVid NetworkWanType VPNEnable VPNFileShowName Network802_1CA_FileName"),
            "7|2|false|(absent)|(absent)");
  for (const auto& [name, value] : page.variables) EXPECT_EQ(value.find("secret"), std::string::npos) << name;
  EXPECT_EQ(announced(), "");
  save("network-adv", "VlanWanSwitch=0");
  EXPECT_EQ(config("Network802_1XMD5Passwd"), "top secret");
  const RecordingResponse notice = save("network-adv", "Network802_1XMD5Passwd=new&reboot=true");
  EXPECT_EQ(notice.variable("noticeLabel"), "setInterval$network-adv$Rebooting , please wait ...");
  EXPECT_EQ(config("Network802_1XMD5Passwd"), "new");
  EXPECT_EQ(announced(), "broadcast 0x10007 9 0");
}

TEST_F(AdvancedNetwork, KeepsTheCertificatesOf8021xUnderTheirOwnNames) {
  const std::string folder = "/config/dot1x/";
  std::filesystem::remove_all(file("/config/dot1x"));
  EXPECT_EQ(run("network-adv", "uploadCaFile", "type=ca").variable("result"), "(absent)");
  EXPECT_EQ(upload("uploadCaFile", folder, "CA", "&pemFile=C:\\certs\\net.pem&type=ca", "ca.pem "), "success");
  EXPECT_EQ(upload("uploadCaFile", folder, "own", "&pemFile=/home/me/phone.pem&type=client", "ca.pem client.pem "),
            "success");
  for (const char* type : {"", "&type=", "&type=CA", "&type=../ca"}) {
    EXPECT_EQ(upload("uploadCaFile", folder, "x", std::string("&pemFile=x.pem") + type, "ca.pem client.pem "),
              "(absent)");
  }
  EXPECT_EQ(content(folder + "ca.pem") + content(folder + "client.pem"), "CAown");
  EXPECT_EQ(load("network-adv").variable("Network802_1CA_FileName Network802_1Device_FileName"), "net.pem|phone.pem");
  std::filesystem::remove(file(folder + "ca.pem"));
  EXPECT_EQ(load("network-adv").variable("Network802_1CA_FileName"), "(absent)");

  setState(R"({"talking":true})");
  const RecordingResponse talking = run("network-adv", "uploadCaFile", "pemFile=/config/dot1x/client.pem&type=ca");
  EXPECT_EQ(talking.variable("noticeLabel"), "setTimeout$notice$Talking, Please wait...");
}

TEST_F(AdvancedNetwork, PutsAVpnArchiveInThePlaceOfTheStoredOneOrNothing) {
  const std::string folder = "/config/openvpn/";
  const auto unpack = [&](const std::string& bytes, const std::string& left) {
    write(folder + "old.cnf", "old");
    return upload("upload", folder, bytes, "", left);
  };
  EXPECT_EQ(unpack(archive("echo client >vpn.cnf; mkdir keys; echo k >keys/ca.crt"), "keys vpn.cnf "), "success");
  EXPECT_EQ(content(folder + "keys/ca.crt"), "k\n");
  EXPECT_EQ(load("network-adv").variable("VPNEnable VPNFileShowName"), "true|vpn.cnf");
  EXPECT_EQ(unpack(archive("echo client >OTHER.CNF", "OTHER.CNF"), "OTHER.CNF "), "success");
  EXPECT_EQ(load("network-adv").variable("VPNEnable VPNFileShowName"), "true|(absent)");
  for (const std::string& bytes : {
           archive("echo a >vpn.cnf; ln -s /etc/passwd ca.crt"),
           archive("echo a >vpn.cnf; ln vpn.cnf two.cnf"),
           archive("echo a >vpn.cnf; mkfifo pipe"),
           archive("echo a >../evil.cnf", "-P ../evil.cnf"),
           archive("echo a >vpn.cnf", "vpn.cnf").substr(0, 700),
           std::string("client\nremote vpn.example\n"),
           std::string(),
       }) {
    EXPECT_EQ(unpack(bytes, ""), "(absent)");
    EXPECT_FALSE(std::filesystem::exists(file("/config/evil.cnf")));
    EXPECT_EQ(load("network-adv").variable("VPNEnable"), "false");
  }
}

}  // namespace
