#include "tool_test.h"

namespace {

struct NetworkOutputsTest : tests::ToolTest {
  static std::string Box(const char* name, std::size_t i) {
    return "fNetworkOutput." + std::string(name) + "(" + std::to_string(i) + ")";
  }
  std::string StoredOf(const std::string& variable, int number, const char* format) {
    return building.StoredText(device, "RoofTopObject/" + variable, number, format);
  }

  const char* device = tests::kAssigned;
};

TEST_F(NetworkOutputsTest, OnlyTheTemperatureDeltaFollowsTheUnitSystem) {
  Open(device);
  EXPECT_EQ(Text(Box("txtDelta", 0)) + " " + Text(Box("txtDelta", 1)), "0.50 1.000");
  Find<ui::OptionButton>("optUnit(1)").Click();
  EXPECT_EQ(Text(Box("txtDelta", 0)) + " " + Text(Box("txtDelta", 1)), "0.90 1.000");
  Type(Box("txtDelta", 0), "1.8");
  Type(Box("txtDelta", 2), "1.8");
  Click("cmdApply");
  EXPECT_EQ(StoredOf("nvoSpaceTemp", 2, "SCPTminDeltaTemp#SI"), "1.00");
  EXPECT_EQ(StoredOf("nvoTermLoadInAvg", 2, "SNVT_lev_percent"), "1.800");
}

TEST_F(NetworkOutputsTest, ARefusedValueIsToldWithItsVariableAndNothingIsStored) {
  Open(device);
  const struct {
    std::string box, message;
  } cases[] = {
      {Box("txtOutput", 13), "WriteValue/Network Output: nvoFanSpeed: SCPTminSendTime: \"-1\""},
      {Box("txtDelta", 0), "WriteValue/Network Output: nvoSpaceTemp: SCPTminDeltaTemp: \"-1\""},
      {"fNetworkOutput.txtnciSndHrtBt", "WriteValue/Network Output: SCPTmaxSendTime: \"-1\""},
  };
  for (const auto& item : cases) {
    const std::string good = Text(item.box);
    const auto told = Messages().size();
    Type(Box("txtNvo", 0), "99");
    Type(item.box, "-1");
    Click("cmdApply");
    ASSERT_GT(Messages().size(), told);
    EXPECT_NE(Messages()[told].find(item.message), std::string::npos) << Messages()[told];
    EXPECT_EQ(StoredOf("nvoSpaceTemp", 1, "SCPTmaxSendTime"), "60.0");
    EXPECT_EQ(Text(item.box), "-1") << "kept for correction";
    Type(item.box, good);
  }
}

}  // namespace
