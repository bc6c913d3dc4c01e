// Transactions and the store file.
#include "base/files.h"
#include "base/text.h"
#include "building_fixture.h"

namespace sim_test {

using simulator::Building;

static std::string Co2Limit(const Building& building, const char* device = kFirstDevice) {
  return building.StoredText(device, "RoofTopObject", 12, "SCPTlimitCO2");
}

static std::string Content(const std::filesystem::path& file) { return base::ReadFile(file, 1 << 20); }

TEST(SimStore, CommitKeepsCancelRestores) {
  const Folder folder;
  Building building(Options(folder.store));
  const Client client(building);
  const automation::Object limit = client.Property("RoofTopObject", 12);
  client.network.Call("BeginTransaction");
  limit.Put("Value", "1000");
  client.Variable("RoofTopObject", "nviHotWater").Put("MvFormatType", "SNVT_lev_disc");
  const automation::Object input = client.LonMark("HardwareInput2");
  input.Put("State", "DISABLED");
  EXPECT_EQ(limit.Text("Value"), "1000") << "a transaction sees its own writes";
  EXPECT_EQ(Co2Limit(building), "900") << "nobody else does";
  EXPECT_EQ(building.StateOfObject(kFirstDevice, "HardwareInput2"), "ENABLED");
  client.network.Call("CancelTransaction");
  EXPECT_EQ(limit.Text("Value"), "900");
  EXPECT_EQ(client.Variable("RoofTopObject", "nviHotWater").Text("MvFormatType"), "SNVT_switch");
  EXPECT_EQ(input.Text("State"), "ENABLED");
  EXPECT_FALSE(std::filesystem::exists(folder.store));

  EXPECT_EQ(RefusalOf([&] { input.Put("State", "off"); }),
            "There is no state \"off\"; the states are ENABLED and DISABLED.");
  client.LonMark("HardwareOutput1").Call("Test");
  client.network.Call("BeginTransaction");
  limit.Put("Value", "1100");
  input.Put("State", "DISABLED");
  client.network.Call("CommitTransaction");
  EXPECT_EQ(Co2Limit(building), "1100");
  client.Property("NodeObject", 2).Put("Value", "Attic");  // outside a transaction: at once
  const automation::Object setpoints = client.Property("RoofTopObject", 3);
  setpoints.Put("formatName", "SCPTsetPnts#US");
  setpoints.Put("Value", "75.123456789 77 81 70 66 60.1");
  setpoints.Put("Precision", 9);
  const std::string precise = setpoints.Text("Value");
  Building again(Options(folder.store));
  EXPECT_EQ(Co2Limit(again), "1100");
  EXPECT_EQ(again.StoredText(kFirstDevice, "NodeObject", 2, "SCPTlocation"), "Attic");
  EXPECT_EQ(Co2Limit(again, kSecondDevice), "900");
  EXPECT_EQ(again.StateOfObject(kFirstDevice, "HardwareInput2"), "DISABLED");
  EXPECT_EQ(again.StateOfObject(kFirstDevice, "HardwareOutput1"), "ENABLED PASSED");
  EXPECT_EQ(again.StateOfObject(kSecondDevice, "HardwareInput2"), "ENABLED");
  EXPECT_EQ(RefusalOf([&] { again.StateOfObject(kFirstDevice, "HardwareInput7"); }),
            "There is no object \"HardwareInput7\".");
  EXPECT_EQ(again.StoredText(kFirstDevice, "RoofTopObject", 3, "SCPTsetPnts#US", 9), precise);
}

TEST(SimStore, AFailedCommitLeavesFileAndValues) {
  const Folder folder;
  const std::filesystem::path file = folder.store;
  Building building(Options(file));
  const Client client(building);
  const automation::Object limit = client.Property("RoofTopObject", 12);
  limit.Put("Value", "1000");
  const std::string content = Content(file);

  std::filesystem::create_directory(folder.Obstacle());
  client.network.Call("BeginTransaction");
  limit.Put("Value", "1200");
  EXPECT_THAT(RefusalOf([&] { client.network.Call("CommitTransaction"); }),
              testing::HasSubstr("store.json cannot be written"));
  EXPECT_EQ(limit.Text("Value"), "1000");
  EXPECT_EQ(Content(file), content);
  EXPECT_EQ(RefusalOf([&] { client.network.Call("CancelTransaction"); }), "No transaction is open.");
  EXPECT_THAT(RefusalOf([&] { limit.Put("Value", "1300"); }), testing::HasSubstr("cannot be written"));
  EXPECT_EQ(limit.Text("Value"), "1000");

  std::filesystem::remove_all(folder.Obstacle());
  limit.Put("Value", "1300");
  EXPECT_EQ(Co2Limit(Building(Options(file))), "1300");
}

TEST_F(OpenBuilding, TransactionsOutOfOrderAreRefused) {
  EXPECT_EQ(RefusalOf([&] { client.network.Call("CommitTransaction"); }), "No transaction is open.");
  client.network.Call("BeginTransaction");
  EXPECT_EQ(RefusalOf([&] { client.network.Call("BeginTransaction"); }), "A transaction is open already.");
  const automation::Object limit = client.Property("RoofTopObject", 12);
  limit.Put("Value", "1000");
  client.network.Child("AppDevices").Call("Item", kSecondDevice);
  EXPECT_EQ(RefusalOf([&] { client.network.Call("BeginTransaction"); }), "A transaction is open already.");
  client.network.Call("CommitTransaction");
  EXPECT_EQ(Co2Limit(building), "1000") << "the device of the transaction, not the one taken since";
  EXPECT_EQ(RefusalOf([&] { client.network.Call("CancelTransaction"); }), "No transaction is open.");
}

TEST_F(OpenBuilding, TransactionsOfTwoDevicesDoNotTouchEachOther) {
  const Client second(building, kSecondDevice);
  for (const auto& [one, limit] : {std::pair{&std::as_const(client), "1000"}, {&second, "2000"}}) {
    one->network.Call("BeginTransaction");
    one->Property("RoofTopObject", 12).Put("Value", limit);
  }
  second.network.Call("CommitTransaction");
  client.network.Call("CancelTransaction");
  EXPECT_EQ(Co2Limit(building, kFirstDevice), "900");
  EXPECT_EQ(Co2Limit(building, kSecondDevice), "2000");
}

TEST(SimStore, AnUnreadableStoreIsNamedAndKept) {
  const Folder folder;
  const std::filesystem::path file = folder.store;
  Building first(Options(file));
  Client(first).Property("RoofTopObject", 12).Put("Value", "1000");
  const std::string good = Content(file);
  const std::string unfit = "RoofTopObject.12 does not fit its type";
  const std::pair<std::string, std::string> kDamages[] = {
      {good.substr(0, good.size() / 2), "is unreadable"},
      {"", "is unreadable"},
      {base::ReplaceAll(good, "\"format\": 1", "\"format\": 9"), "its format is not known"},
      {base::ReplaceAll(good, "1000.0", "\"1000\""), unfit},
      {base::ReplaceAll(good, "1000.0", "99000"), unfit},
  };
  for (const auto& [content, words] : kDamages) {
    base::ReplaceFile(file, content);
    EXPECT_THAT(RefusalOf([&] { Building building(Options(file)); }),
                testing::AllOf(testing::HasSubstr(words), testing::HasSubstr("store.json")));
    EXPECT_EQ(Content(file), content);
  }
}

}  // namespace sim_test
