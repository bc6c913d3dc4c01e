// Connecting, sessions, look-up, faults and registration: the host around the devices.
#include "automation/local_object.h"
#include "building_fixture.h"

namespace sim_test {
namespace {

using simulator::Building;
using SimHostOpen = OpenBuilding;

TEST(SimHost, ConnectsToItsOwnNetworkOnly) {
  Building building(Options());
  const automation::Object server = building.ObjectServer();
  EXPECT_TRUE(server.Call("RefreshCatalog", "QVR").AsBool());
  EXPECT_FALSE(server.Call("RefreshCatalog", "XYZ").AsBool());
  const std::string name = building.NetworkName();
  const std::string address = building.IpAddress();
  EXPECT_FALSE(server.Call("Connect", "Elsewhere", address, building.Port()).AsObject());
  EXPECT_FALSE(server.Call("Connect", name, "10.0.0.1", building.Port()).AsObject());
  EXPECT_FALSE(server.Call("Connect", name, address, building.Port() + 1).AsObject());
  EXPECT_FALSE(server.Get("Device").AsObject());
  EXPECT_TRUE(Connect(building, server));
}

TEST(SimHost, SessionsAreLimitedAndEndWithTheirNetworkObject) {
  Building building(Options());
  building.Limits() = {3, 2, ""};
  std::vector<automation::Object> networks;
  for (int i = 0; i < 4; ++i) networks.push_back(Connect(building, building.ObjectServer()));
  const auto open = [&](std::size_t network, int block) {
    return networks[network]
        .Call("OpenSession", building.NetworkName(), false, "LON1", block, "8000")
        .AsText();
  };
  const std::tuple<std::size_t, int, const char*> sessions[] = {{0, 1, "OK"}, {0, 1, "ERROR_PLUGIN_INSTANCE"},
                                                                {1, 1, "OK"}, {2, 1, "ERROR_PLUGIN_INSTANCE"},
                                                                {2, 2, "OK"}, {3, 2, "ERROR_MAX_CLIENTS"}};
  for (const auto& [network, block, answer] : sessions) EXPECT_EQ(open(network, block), answer) << network;
  networks[0] = {};
  EXPECT_EQ(open(3, 1), "OK");
}

TEST(SimHost, ADeviceIsOpenInOneSessionAtATime) {
  Building building(Options());
  Client first(building);
  EXPECT_EQ(first.server.Get("Device").AsObject().Text("Name"), kFirstDevice);
  const automation::Object other = Connect(building, building.ObjectServer());
  EXPECT_EQ(RefusalOf([&] { other.Get("AppDevices"); }), "No session is open on the network.");
  ASSERT_EQ(OpenSession(building, other), "OK");
  const automation::Object devices = other.Child("AppDevices");
  EXPECT_EQ(RefusalOf([&] { devices.Call("Item", kFirstDevice); }),
            "The device \"RTU-1 North wing\" is open in another session.");
  EXPECT_EQ(RefusalOf([&] { other.Call("BeginTransaction"); }),
            "A transaction needs a device; take one from AppDevices first.");

  first.network.Call("BeginTransaction");
  first.Property("RoofTopObject", 12).Put("Value", "1000");
  first.network = {};
  EXPECT_FALSE(first.server.Get("Device").AsObject());
  EXPECT_EQ(devices.Call("Item", kFirstDevice).AsObject().Text("Name"), kFirstDevice);
  EXPECT_EQ(building.StoredText(kFirstDevice, "RoofTopObject", 12, "SCPTlimitCO2"), "900");
  ASSERT_EQ(building.Log().size(), 1U);
  EXPECT_EQ(building.Log()[0],
            "A session ended within a transaction of \"RTU-1 North wing\"; the transaction was cancelled.");
}

TEST_F(SimHostOpen, ItemsAreFoundByNumberAndName) {
  const automation::Object devices = client.network.Child("AppDevices");
  EXPECT_EQ(devices.Call("Item", 2).AsObject().Text("Name"), kSecondDevice);
  EXPECT_EQ(devices.Get("Item", "rtu-3 LABORATORY").AsObject().Text("Location"), "Laboratory plant room");
  const automation::Object properties = client.LonMark("RoofTopObject").Child("ConfigProperties");
  EXPECT_EQ(properties.Call("Item", "UCPTfanAlarmTime").AsObject().Text("Name"), "UCPTfanAlarmTime");
  const std::int32_t count = properties.Whole("Count");
  const std::string has = "; it has " + std::to_string(count) + ".";
  const std::pair<automation::Value, std::string> wrong[] = {{0, "0" + has},
                                                             {count + 1, std::to_string(count + 1) + has},
                                                             {-1, "-1" + has},
                                                             {"UCPTnothing", "\"UCPTnothing\"."}};
  for (const auto& [wanted, end] : wrong) {
    std::uint32_t code = 0;
    EXPECT_EQ(RefusalOf([&, item = wanted] { properties.Call("Item", item); }, &code),
              "ConfigProperties of RoofTopObject has no item " + end);
    EXPECT_EQ(code, automation::kBadIndex);
  }
}

TEST_F(SimHostOpen, FaultsComeAtTheCallAskedFor) {
  simulator::Faults& faults = building.Faults();
  const automation::Object limit = client.Property("RoofTopObject", 12);
  faults.StartCounting();
  faults.Fail({.member = "property.value", .call = 2, .text = "The object is gone."});
  limit.Put("Value", "1000");
  EXPECT_EQ(RefusalOf([&] { limit.Put("Value", "1100"); }), "The object is gone.");
  EXPECT_EQ(limit.Text("Value"), "1000");
  EXPECT_EQ(faults.Count("Property.Value"), 3U);
  EXPECT_EQ(faults.Count("Property.Name"), 0U);

  faults.Fail({.call = 2, .once = false, .text = "The server is gone."});
  EXPECT_EQ(limit.Text("Name"), "SCPTlimitCO2");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(RefusalOf([&] { client.device.Get("Name"); }), "The server is gone.");
  faults.Clear();
  const std::uint64_t total = faults.Total();
  EXPECT_EQ(limit.Text("Value"), "1000");
  EXPECT_EQ(faults.Total(), total + 1);
}

TEST(SimHost, PlugInsRegisterReplaceAndLeave) {
  const Folder folder;
  const auto describe = [](const automation::Object& registration, const char* version) {
    const automation::Object description = registration.Child("NewDescription");
    description.Put("ServerProgId", "QVRKvTARNCfg.LNSPlugInAPI");
    description.Put("Version", version);
    return description;
  };
  {
    Building building(Options(folder.path / "store.json"));
    const automation::Object registration = building.Registration();
    for (const char* version : {"1.0.0", "1.0.1"})
      registration.Call("Register", describe(registration, version));
    EXPECT_EQ(RefusalOf([&] { registration.Call("Register", registration.Child("NewDescription")); }),
              "The description has no ServerProgId.");
  }
  Building again(Options(folder.path / "store.json"));
  ASSERT_EQ(again.PlugIns().size(), 1U);
  EXPECT_EQ(again.PlugIns().front().records.at(0).second.at(1),
            (std::pair<std::string, std::string>("Version", "1.0.1")));
  again.Registration().Call("Deregister", describe(again.Registration(), "1.0.1"));
  EXPECT_TRUE(again.PlugIns().empty());
}

}  // namespace
}  // namespace sim_test
