// Connecting, sessions, look-up, self-tests and registration: the host around the devices.
#include "automation/local_object.h"
#include "building_fixture.h"

namespace sim_test {

using simulator::Building;

TEST(SimHost, ConnectsToItsOwnNetworkOnly) {
  Building building(Options());
  const automation::Object server = building.ObjectServer();
  EXPECT_TRUE(server.Call("RefreshCatalog", "QVR").AsBool());
  EXPECT_FALSE(server.Call("RefreshCatalog", "XYZ").AsBool());
  const std::string name = building.NetworkName(), address = building.IpAddress();
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

TEST_F(OpenBuilding, ItemsAreFoundByNumberAndName) {
  const automation::Object devices = client.network.Child("AppDevices");
  EXPECT_EQ(devices.Call("Item", 2).AsObject().Text("Name"), kSecondDevice);
  EXPECT_EQ(devices.Get("Item", "rtu-3 LABORATORY").AsObject().Text("Location"), "Laboratory plant room");
  const automation::Object properties = client.LonMark("RoofTopObject").Child("ConfigProperties");
  EXPECT_EQ(properties.Call("Item", "UCPTfanAlarmTime").AsObject().Text("Name"), "UCPTfanAlarmTime");
  const std::int32_t count = properties.Whole("Count");
  const std::string none = "ConfigProperties of RoofTopObject has no item ";
  for (const std::int32_t wanted : {0, count + 1, -1}) {
    std::uint32_t code = 0;
    EXPECT_EQ(RefusalOf([&] { properties.Call("Item", wanted); }, &code),
              none + std::to_string(wanted) + "; it has " + std::to_string(count) + ".");
    EXPECT_EQ(code, automation::kBadIndex);
  }
  EXPECT_EQ(RefusalOf([&] { properties.Call("Item", "UCPTnothing"); }), none + "\"UCPTnothing\".");
}

TEST_F(OpenBuilding, TheSelfTestFindsAFunctionWithoutASensor) {
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"SPACE_TEMP", "STD_THERMISTOR", "PASSED"},
      {"SPACE_TEMP", "DISCONNECTED", "FAILED: no sensor for SPACE_TEMP"},
      {"UNUSED", "DISCONNECTED", "PASSED"}};
  const automation::Object input = client.LonMark("HardwareInput1");
  EXPECT_EQ(input.Text("TestResult"), "");
  for (const auto& [function, sensor, result] : cases) {
    client.Property("HardwareInput1", 2).Put("Value", sensor);
    client.Property("HardwareInput1", 3).Put("Value", function);
    input.Call("Test");
    EXPECT_EQ(input.Text("TestResult"), result);
  }
}

TEST(SimHost, PlugInsRegisterReplaceAndLeave) {
  const Folder folder;
  const auto describe = [](const automation::Object& registration, const char* version) {
    const automation::Object description = registration.Child("NewDescription");
    description.Put("ServerProgId", "QVRKvTARNCfg.LNSPlugInAPI");
    description.Put("Version", version);
    return description;
  };
  Building building(Options(folder.store));
  const automation::Object registration = building.Registration();
  for (const char* version : {"1.0.0", "1.0.1"})
    registration.Call("Register", describe(registration, version));
  EXPECT_EQ(RefusalOf([&] { registration.Call("Register", registration.Child("NewDescription")); }),
            "The description has no ServerProgId.");
  Building again(Options(folder.store));
  ASSERT_EQ(again.PlugIns().size(), 1U);
  EXPECT_EQ(again.PlugIns().front().records.at(0).second.at(1),
            (std::pair<std::string, std::string>("Version", "1.0.1")));
  again.Registration().Call("Deregister", describe(again.Registration(), "1.0.1"));
  EXPECT_TRUE(again.PlugIns().empty());
}

}  // namespace sim_test
