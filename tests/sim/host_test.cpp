// Connecting, sessions, look-up, faults, registration and language: the host around the devices.
#include <chrono>

#include "automation/local_object.h"
#include "building_fixture.h"

namespace sim_test {
namespace {

using simulator::Building;

TEST(SimHost, ConnectsToItsOwnNetworkOnly) {
  Building building(Options());
  const automation::Object server = building.ObjectServer();
  EXPECT_TRUE(server.Call("RefreshCatalog", "QVR").AsBool());
  EXPECT_FALSE(server.Call("RefreshCatalog", "XYZ").AsBool());
  EXPECT_FALSE(server.Call("Connect", "Elsewhere", building.IpAddress(), building.Port()).AsObject());
  EXPECT_FALSE(server.Call("Connect", building.NetworkName(), "10.0.0.1", building.Port()).AsObject());
  EXPECT_FALSE(
      server.Call("Connect", building.NetworkName(), building.IpAddress(), building.Port() + 1).AsObject());
  EXPECT_FALSE(server.Get("Device").AsObject());
  EXPECT_TRUE(Connect(building, server));
}

TEST(SimHost, SessionsAreLimitedAndEndWithTheirNetworkObject) {
  Building building(Options());
  building.Limits() = {3, 2, ""};
  const auto connect = [&] { return Connect(building, building.ObjectServer()); };
  const auto open = [&](const automation::Object& network, int lmoIndex) {
    return network.Call("OpenSession", building.NetworkName(), false, "LON1", lmoIndex, "8000").AsText();
  };
  automation::Object first = connect();
  const automation::Object second = connect();
  const automation::Object third = connect();
  const automation::Object fourth = connect();
  EXPECT_EQ(open(first, 1), "OK");
  EXPECT_EQ(open(first, 1), "ERROR_PLUGIN_INSTANCE");
  EXPECT_EQ(open(second, 1), "OK");
  EXPECT_EQ(open(third, 1), "ERROR_PLUGIN_INSTANCE");
  EXPECT_EQ(open(third, 2), "OK");
  EXPECT_EQ(open(fourth, 2), "ERROR_MAX_CLIENTS");
  first = {};
  EXPECT_EQ(open(fourth, 1), "OK");
  building.Limits().answer = "ERROR_STACK";
  EXPECT_EQ(open(connect(), 3), "ERROR_STACK");
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

TEST(SimHost, ItemsAreFoundByNumberAndName) {
  Building building(Options());
  const Client client(building);
  const automation::Object devices = client.network.Child("AppDevices");
  EXPECT_EQ(devices.Call("Item", 2).AsObject().Text("Name"), kSecondDevice);
  EXPECT_EQ(devices.Get("Item", "rtu-3 LABORATORY").AsObject().Text("Location"), "Laboratory plant room");
  const automation::Object properties = client.LonMark("RoofTopObject").Child("ConfigProperties");
  EXPECT_EQ(properties.Call("Item", "UCPTfanAlarmTime").AsObject().Text("Name"), "UCPTfanAlarmTime");
  const std::pair<automation::Value, const char*> kWrong[] = {
      {0, "ConfigProperties of RoofTopObject has no item 0; it has 52."},
      {53, "ConfigProperties of RoofTopObject has no item 53; it has 52."},
      {-1, "ConfigProperties of RoofTopObject has no item -1; it has 52."},
      {"UCPTnothing", "ConfigProperties of RoofTopObject has no item \"UCPTnothing\"."},
  };
  for (const auto& [wanted, sentence] : kWrong) {
    try {
      properties.Call("Item", wanted);
      ADD_FAILURE() << sentence;
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Code(), automation::kBadIndex);
      EXPECT_EQ(error.Description(), sentence);
    }
  }
}

TEST(SimHost, TheDevicesDifferAsInARealBuilding) {
  Building building(Options());
  const Client first(building);
  EXPECT_EQ(first.device.Child("interface").Text("ProgramId"), "8000AB0C12340001");
  EXPECT_EQ(first.device.Child("interface").Text("Version"), "3.1");
  EXPECT_EQ(first.Property("HardwareOutput6", 3).Text("Value"), "FRESH_AIR_DAMPER_MOD");
  const Client second(building, kSecondDevice);
  EXPECT_EQ(second.Property("NodeObject", 2).Text("Value"), "");
  second.Property("NodeObject", 2).Put("Value", second.device.Text("Location"));
  EXPECT_EQ(second.Property("NodeObject", 2).Text("Value"), second.device.Text("Location"));
  for (int i = 1; i <= 7; ++i) {
    EXPECT_EQ(second.Property("HardwareOutput" + std::to_string(i), 3).Text("Value"), "UNASSIGNED");
  }
}

TEST(SimHost, FaultsComeAtTheCallAskedFor) {
  Building building(Options());
  const Client client(building);
  simulator::Faults& faults = building.Faults();
  const automation::Object limit = client.Property("RoofTopObject", 12);
  faults.StartCounting();
  faults.Fail({.member = "property.value", .call = 2, .code = 0x80010108, .text = "The object is gone."});
  limit.Put("Value", "1000");
  try {
    limit.Put("Value", "1100");
    ADD_FAILURE();
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Code(), 0x80010108);
    EXPECT_EQ(error.Description(), "The object is gone.");
  }
  EXPECT_EQ(limit.Text("Value"), "1000");
  EXPECT_EQ(faults.Count("Property.Value"), 3U);
  EXPECT_EQ(faults.Count("Property.Name"), 0U);

  faults.Fail({.call = 2, .once = false, .code = 0x800706BA, .text = "The server is gone."});
  EXPECT_EQ(limit.Text("Name"), "SCPTlimitCO2");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(RefusalOf([&] { client.device.Get("Name"); }), "The server is gone.");
  faults.Clear();
  const std::uint64_t total = faults.Total();
  EXPECT_EQ(limit.Text("Value"), "1000");
  EXPECT_EQ(faults.Total(), total + 1);

  faults.Delay(std::chrono::milliseconds(3));
  const auto start = std::chrono::steady_clock::now();
  limit.Text("Value");
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(3));
}

TEST(SimHost, ACommitWhoseAnswerIsLostIsCarriedOut) {
  Building building(Options());
  const Client client(building);
  building.Faults().Fail({.member = "Network.CommitTransaction", .loseAnswer = true, .text = "No answer."});
  client.network.Call("BeginTransaction");
  client.Property("RoofTopObject", 12).Put("Value", "1000");
  EXPECT_EQ(RefusalOf([&] { client.network.Call("CommitTransaction"); }), "No answer.");
  EXPECT_EQ(building.StoredText(kFirstDevice, "RoofTopObject", 12, "SCPTlimitCO2"), "1000");
}

TEST(SimHost, PlugInsRegisterReplaceAndLeave) {
  const Folder folder;
  const std::filesystem::path file = folder.path / "store.json";
  const auto describe = [](const automation::Object& registration, const char* version) {
    const automation::Object description = registration.Child("NewDescription");
    description.Put("DisplayName", "KV-TARN Configuration");
    description.Put("ServerProgId", "QVRKvTARNCfg.LNSPlugInAPI");
    description.Put("Version", version);
    description.Child("BlockCommand").Put("BlockNumber", 8030);
    return description;
  };
  {
    Building building(Options(file));
    const automation::Object registration = building.Registration();
    registration.Call("Register", describe(registration, "1.0.0"));
    registration.Call("Register", describe(registration, "1.0.1"));
    EXPECT_EQ(RefusalOf([&] { registration.Call("Register", registration.Child("NewDescription")); }),
              "The description has no ServerProgId.");
    EXPECT_EQ(RefusalOf([&] { registration.Call("Register", registration); }),
              "This is no description made by NewDescription.");
  }
  Building again(Options(file));
  ASSERT_EQ(again.PlugIns().size(), 1U);
  const simulator::RegisteredPlugIn plugIn = again.PlugIns().front();
  EXPECT_EQ(plugIn.id, "QVRKvTARNCfg.LNSPlugInAPI");
  ASSERT_EQ(plugIn.records.size(), 4U);
  EXPECT_EQ(plugIn.records[0].second[2], (std::pair<std::string, std::string>("Version", "1.0.1")));
  EXPECT_EQ(plugIn.records[2].second[0], (std::pair<std::string, std::string>("BlockNumber", "8030")));
  const automation::Object registration = again.Registration();
  registration.Call("Deregister", describe(registration, "1.0.1"));
  EXPECT_TRUE(again.PlugIns().empty());
  EXPECT_EQ(RefusalOf([&] { registration.Call("Deregister", describe(registration, "1.0.1")); }),
            "\"QVRKvTARNCfg.LNSPlugInAPI\" is not registered.");
}

TEST(SimHost, LanguageChoiceIsKeptWithItsTime) {
  Building building(Options());
  const automation::Object language = building.Language();
  EXPECT_EQ(language.Text("Language"), "English");
  EXPECT_EQ(language.Child("Languages").Call("Item", 1).AsText(), "English");
  EXPECT_EQ(language.Call("Section", "RoofTopConfiguration").AsObject().Whole("Count"), 0);
  EXPECT_EQ(RefusalOf([&] { language.Put("Language", "Klingon"); }), "There is no language \"Klingon\".");
  EXPECT_EQ(language.Get("LastChange").AsReal(), 0.0);
  language.Put("Language", "English");
  // Days since 30 December 1899: 45000 is in March 2023.
  EXPECT_GT(language.Get("LastChange").AsReal(), 45000.0);
}

TEST(SimHost, MembersRefuseWhatTheyAreNotFor) {
  Building building(Options());
  const Client client(building);
  EXPECT_EQ(RefusalOf([&] { client.device.Put("Location", "x"); }), "\"Location\" cannot be written.");
  EXPECT_EQ(RefusalOf([&] { client.network.Call("Explode"); }), "Unknown member \"Explode\".");
  EXPECT_EQ(RefusalOf([&] { client.device.Call("AddLmo", 1, "", "t.bin"); }), "Argument 4 is missing.");
  EXPECT_EQ(client.Property("RoofTopObject", 12).Call("NAME").AsText(), "SCPTlimitCO2");
}

}  // namespace
}  // namespace sim_test
