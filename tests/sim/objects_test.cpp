// States and self-tests of the LonMark objects.
#include "building_fixture.h"

namespace sim_test {
namespace {

using simulator::Building;
using SimObjectsOpen = OpenBuilding;

TEST(SimObjects, StatesAreKeptAndFollowTheTransaction) {
  const Folder folder;
  {
    Building building(Options(folder.path / "store.json"));
    const Client client(building);
    const automation::Object input = client.LonMark("HardwareInput2");
    client.network.Call("BeginTransaction");
    input.Put("State", "DISABLED");
    EXPECT_EQ(input.Text("State"), "DISABLED");
    EXPECT_EQ(building.StateOfObject(kFirstDevice, "HardwareInput2"), "ENABLED") << "not committed yet";
    client.network.Call("CancelTransaction");
    EXPECT_EQ(input.Text("State"), "ENABLED");

    EXPECT_EQ(RefusalOf([&] { input.Put("State", "off"); }),
              "There is no state \"off\"; the states are ENABLED and DISABLED.");
    client.LonMark("HardwareOutput1").Call("Test");
    client.network.Call("BeginTransaction");
    input.Put("State", "DISABLED");
    client.network.Call("CommitTransaction");
  }
  const Building again(Options(folder.path / "store.json"));
  EXPECT_EQ(again.StateOfObject(kFirstDevice, "HardwareInput2"), "DISABLED");
  EXPECT_EQ(again.StateOfObject(kFirstDevice, "HardwareOutput1"), "ENABLED PASSED");
  EXPECT_EQ(again.StateOfObject(kSecondDevice, "HardwareInput2"), "ENABLED");
  EXPECT_EQ(RefusalOf([&] { again.StateOfObject(kFirstDevice, "HardwareInput7"); }),
            "There is no object \"HardwareInput7\".");
}

TEST_F(SimObjectsOpen, TheSelfTestFindsAFunctionWithoutASensor) {
  const struct {
    std::string function, sensor, result;
  } cases[] = {{"SPACE_TEMP", "STD_THERMISTOR", "PASSED"},
               {"SPACE_TEMP", "DISCONNECTED", "FAILED: no sensor for SPACE_TEMP"},
               {"UNUSED", "DISCONNECTED", "PASSED"}};
  const automation::Object input = client.LonMark("HardwareInput1");
  EXPECT_EQ(input.Text("TestResult"), "");
  for (const auto& item : cases) {
    client.Property("HardwareInput1", 2).Put("Value", item.sensor);
    client.Property("HardwareInput1", 3).Put("Value", item.function);
    input.Call("Test");
    EXPECT_EQ(input.Text("TestResult"), item.result);
  }
}

}  // namespace
}  // namespace sim_test
