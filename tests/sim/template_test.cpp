// The device template: what AddLmo takes and what it refuses.
#include "simulator/template.h"
#include "base/text.h"
#include "building_fixture.h"

namespace sim_test {

using automation::Bytes;
using simulator::Building;

/// AddLmo of `bytes` on a fresh client, with the reason when it says no.
static std::string Load(Building& building, const Client& client, const Bytes& bytes, int lmoIndex = 1) {
  const std::size_t before = building.Log().size();
  const bool loaded = client.device.Call("AddLmo", lmoIndex, "8000AB0C12340001", "t.bin", bytes).AsBool();
  if (loaded) return "loaded";
  EXPECT_EQ(building.Log().size(), before + 1);
  return building.Log().back();
}

TEST_F(OpenBuilding, DamageAnywhereIsNoticed) {
  const Bytes good = building.TemplateBytes();
  for (std::size_t size = 0; size < good.size(); size += size < 40 ? 1 : 611) {
    const Bytes cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_NE(Load(building, client, cut), "loaded") << "cut to " << size;
  }
  for (std::size_t place = 0; place < good.size(); place += place < 40 ? 1 : 613) {
    Bytes flipped = good;
    flipped[place] ^= 0x04;
    EXPECT_NE(Load(building, client, flipped), "loaded") << "flipped at " << place;
  }
  Bytes longer = good;
  longer.push_back('\n');
  EXPECT_NE(Load(building, client, longer), "loaded");
  EXPECT_EQ(client.device.Child("LonMarkObjects").Whole("Count"), 15)
      << "the objects of the good template stay";
  EXPECT_EQ(Load(building, client, good), "loaded");
}

TEST_F(OpenBuilding, RefusalsSayWhatIsWrong) {
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"8000AB0C12340001", "8000AB0C12340002", "is for program 8000AB0C12340002 version 3.1, not"},
      {"\"version\": \"3.1\"", "\"version\": \"3.2\"", "version 3.2, not"},
      {"\"objects\": [", "\"objects\": {", "parse error"},
      {"\"objects\"", "\"things\"", "key 'objects' not found"},
      {"\"number\": 31,", "\"number\": 30,", "RoofTopObject.31): the numbers must run from 1 without a gap"},
      {"UCPTstartupDelay", "UCPTstartUpDelay",
       "RoofTopObject.2): the type \"UCPTstartUpDelay\" is not known"},
      {"\"default\": \"900\"", "\"default\": \"9000\"", "\"9000\" is outside the range 0 to 5000 ppm"},
      {"\"sameAs\": \"HardwareOutput#.3\"", "\"sameAs\": \"HardwareOutput#.33\"",
       "nvoCtrlOutput1.3 is the same as HardwareOutput1.33, which is not there"},
      {"0 0 109 0 1 1 0 0", "0 0 110 0 1 1 0 0", "SCPTnvType does not carry the index of SNVT_occupancy"},
      {"\"count\": 6", "\"count\": 1000000000", "a count must be 0 to 64"},
      {"\"nviSlave\"", "\"nviCO2\"", "\"nviCO2\" is there twice"},
  };
  const std::string json = simulator::UnpackTemplate(building.TemplateBytes());
  for (const auto& [from, to, words] : cases) {
    const std::string changed = base::ReplaceAll(json, from, to);
    ASSERT_NE(changed, json) << from;
    EXPECT_THAT(Load(building, client, simulator::PackTemplate(changed)),
                testing::AllOf(testing::StartsWith("RTU-1 North wing, t.bin: The device template is "),
                               testing::HasSubstr(words)));
  }
  for (const int index : {15, -1})
    EXPECT_THAT(Load(building, client, building.TemplateBytes(), index),
                testing::EndsWith("no object with index " + std::to_string(index) + "."));
}

TEST_F(OpenBuilding, ValuesThatWereStoredOutliveALoadAndMustFitIt) {
  client.Property("RoofTopObject", 12).Put("Value", "4000");
  EXPECT_EQ(Load(building, client, building.TemplateBytes()), "loaded");
  EXPECT_EQ(client.Property("RoofTopObject", 12).Text("Value"), "4000");
  const std::string json = simulator::UnpackTemplate(building.TemplateBytes());
  const std::string other = base::ReplaceAll(json, "\"name\": \"SCPTlimitCO2\", ",
                                             "\"name\": \"SCPTlimitCO2\", \"type\": \"SCPTbypassTime\", ");
  ASSERT_NE(other, json);
  EXPECT_THAT(Load(building, client, simulator::PackTemplate(other)),
              testing::HasSubstr("RoofTopObject.12 does not fit its type"));
}

}  // namespace sim_test
