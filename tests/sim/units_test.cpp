// Units that a person adds to the building or takes away.
#include "building_fixture.h"

namespace sim_test {

using simulator::Building;

constexpr char kNew[] = "RTU-9 Annex";

static std::string Names(const Building& building) {
  std::string names;
  for (const auto& device : building.Devices()) names += device.name + "; ";
  return names;
}

TEST(SimUnits, ANewUnitComesFromTheFactoryAndARemovedOneStaysAway) {
  const Folder folder;
  const auto options = Options(folder.store);
  Building building(options);
  const std::string listed = Names(building);
  building.AddUnit(std::string(" ") + kNew + " ", "Dach Süd, Haus 4");
  Client(building, kNew).Property("RoofTopObject", 12).Put("Value", "1000");
  building.AddUnit("Spare", "");
  building.RemoveUnit("rtu-1 NORTH wing");
  Building again(options);
  EXPECT_EQ(Names(again), listed.substr(std::string(kFirstDevice).size() + 2) + kNew + "; Spare; ");
  const auto units = again.Devices();
  const auto& added = units.at(units.size() - 2);
  EXPECT_EQ(added.location, "Dach Süd, Haus 4");
  EXPECT_EQ(added.templateFileName, units.front().templateFileName);
  EXPECT_EQ(again.StoredText(kNew, "RoofTopObject", 12, "SCPTlimitCO2"), "1000");

  again.AddUnit("Third", "");
  again.RemoveUnit(kNew);
  again.AddUnit(kNew, "");
  EXPECT_EQ(again.StoredDevice(kNew), again.StoredDevice("Third")) << "defaults, nothing of its predecessor";
  EXPECT_EQ(Names(Building(options)), Names(again));
}

TEST(SimUnits, WhatCannotBeIsRefusedInWords) {
  Building building(Options());
  const std::string listed = Names(building);
  const std::tuple<std::string, std::string, const char*> cases[] = {
      {"  ", "Roof", "A unit needs a name."},
      {"rtu-1 north WING ", "Roof", "Another unit is called \"RTU-1 North wing\" already."},
      {std::string(51, 'x'), "", "The name has 51 characters; at most 50 are allowed."},
      {"RTU\t9", "", "The name holds a character that cannot be stored."},
      {"RTU \xC3", "", "The name holds a character that cannot be stored."},
      {kNew, std::string(31, 'x'), "The location has 31 characters; at most 30 are allowed."},
      {kNew, "Roof\n", "The location holds a character that cannot be stored."},
  };
  for (const auto& [name, location, words] : cases)
    EXPECT_EQ(RefusalOf([&] { building.AddUnit(name, location); }), words);
  EXPECT_EQ(RefusalOf([&] { building.RemoveUnit("RTU-8"); }), "There is no unit \"RTU-8\" in the building.");
  EXPECT_EQ(Names(building), listed);

  const automation::Object unit = Client(building).device;
  unit.Put("Name", "RTU-1 NORTH WING");  // its own name in other letters
  EXPECT_EQ(RefusalOf([&] { unit.Put("Name", "rtu-2 south wing"); }),
            "Another unit is called \"RTU-2 South wing\" already.");
}

TEST(SimUnits, AStoreThatRefusesLeavesTheUnitsAsTheyWere) {
  const Folder folder;
  Building building(Options(folder.store));
  building.AddUnit(kNew, "");
  const std::string listed = Names(building);
  std::filesystem::create_directory(folder.Obstacle());
  for (const std::string& sentence :
       {RefusalOf([&] { building.AddUnit("Spare", ""); }), RefusalOf([&] { building.RemoveUnit(kNew); }),
        RefusalOf([&] { building.RemoveUnit(kFirstDevice); })})
    EXPECT_THAT(sentence, testing::HasSubstr("store.json cannot be written"));
  EXPECT_EQ(Names(building), listed);
  EXPECT_EQ(Names(Building(Options(folder.store))), listed);
}

TEST(SimUnits, TwoProcessesKeepEachOthersUnits) {
  const Folder folder;
  const auto options = Options(folder.store);
  Building one(options);
  Building other(options);
  const std::string listed = Names(one);
  const automation::Object removed = Client(one).device;
  one.AddUnit(kNew, "");
  other.AddUnit("Spare", "");
  Client(other, kNew).Property("RoofTopObject", 12).Put("Value", "1000");
  other.RemoveUnit(kFirstDevice);
  EXPECT_EQ(RefusalOf([&] { one.AddUnit("SPARE", ""); }), "Another unit is called \"Spare\" already.");
  EXPECT_EQ(RefusalOf([&] { removed.Put("Name", "Gone"); }),
            "The unit \"RTU-1 North wing\" has been removed from the building.");
  const Client client(one, kNew);
  client.network.Call("BeginTransaction");
  client.Property("NodeObject", 2).Put("Value", "Attic");
  client.network.Call("CommitTransaction");
  const Building third(options);
  EXPECT_EQ(Names(third), listed.substr(std::string(kFirstDevice).size() + 2) + kNew + "; Spare; ");
  EXPECT_EQ(third.StoredText(kNew, "RoofTopObject", 12, "SCPTlimitCO2"), "1000");
  EXPECT_EQ(third.StoredText(kNew, "NodeObject", 2, "SCPTlocation"), "Attic");
}

TEST(SimUnits, OpenSessionsAndTransactionsGoOn) {
  Building building(Options());
  {
    const Client client(building, kSecondDevice);
    client.network.Call("BeginTransaction");
    client.Property("RoofTopObject", 12).Put("Value", "1000");
    building.AddUnit(kNew, "");
    building.RemoveUnit(kFirstDevice);  // every other unit changes its place in the list
    const automation::Object devices = client.network.Child("AppDevices");
    EXPECT_EQ(devices.Call("Item", 1).AsObject().GetTarget(), client.device.GetTarget());
    devices.Call("Item", kNew);  // taken, no longer the one last taken, and still open
    devices.Call("Item", kSecondDevice);
    for (const std::string name : {kSecondDevice, kNew})
      EXPECT_EQ(RefusalOf([&] { building.RemoveUnit(name); }),
                "The unit \"" + name + "\" is open in a session; close it there first.");
    client.network.Call("CommitTransaction");
    EXPECT_EQ(building.StoredText(kSecondDevice, "RoofTopObject", 12, "SCPTlimitCO2"), "1000");
  }
  building.RemoveUnit(kSecondDevice);
}

}  // namespace sim_test
