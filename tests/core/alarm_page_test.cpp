#include "base/record.h"
#include "faulty_host.h"
#include "fields/caption.h"
#include "newer_building.h"
#include "tool_test.h"

namespace {

using Log = std::vector<std::string>;

// The logger gives each line of a message its own row.
const Log kHighRule = {"WriteValue/Alarm: The Alarm High Limit Temperature must be lower than the ",
                       "WriteValue/Alarm: Maximum Discharge Cooling Setpoint."};
const Log kBothRules = {"WriteValue/Alarm: The Alarm Low Limit Temperature must be higher than the ",
                        "WriteValue/Alarm: Minimum Discharge Cooling Setpoint.", kHighRule[0], kHighRule[1]};

using tests::ToolTest;

std::string Box(int number) { return "fAlarm.txtAlarm(" + std::to_string(number) + ")"; }

TEST_F(ToolTest, AlarmLimitsAreHeldAgainstTheSupplySetpoints) {
  const std::tuple<std::string, std::string, std::string, std::string, Log> cases[] = {
      // Compared as whole numbers, halves to the even one; equal ones pass here.
      {"12", "35", "12", "35", {}},           {"12", "35", "12", "35.4", {}},
      {"12", "35", "12", "35.6", kHighRule},  {"12", "34.5", "12", "34.5", {}},
      {"12", "34.5", "12", "35", kHighRule},  {"12.4", "55", "11.5", "40", {}},
      {"12", "35", "11.4", "36", kBothRules},
  };
  for (const auto& [low, high, minimum, maximum, refusals] : cases) {
    for (const bool changed : {false, true}) {
      tests::Tool tool;
      tool.Open(tests::kAssigned);
      tool.Type(Box(8), low);
      tool.Type(Box(9), high);
      tool.Type("fHeatCool.txtMinDischCool", minimum);
      tool.Type("fHeatCool.txtMaxDischHeat", maximum);
      shell::ISubForm& page = tool.Page("fAlarm");
      if (!changed) page.EndWriteValue();
      tool.Main().Flags().writeError = false;
      const std::string what = minimum + " to " + maximum;
      EXPECT_EQ(page.WriteValue(), refusals.empty()) << what;
      EXPECT_EQ(tool.Messages(), refusals) << what;
      EXPECT_EQ(tool.Main().Flags().writeError, !changed && !refusals.empty())
          << what << ": writing clears the flag, also after a failed rule";
      const base::Record stored(tool.Stored(tests::kAssigned, 38, "UCPTsupplyTempAlarm#SI", 1));
      EXPECT_EQ(base::Numbers().ToDouble(stored.Field(0)) == base::Numbers().ToDouble(low), changed);
      EXPECT_EQ(page.IsChanged(), changed);
    }
  }
}

// A controller whose space temperature alarm has so many fields behind the usual two.
tests::NewerBuilding WithFurtherFields(int count) {
  std::string values;
  for (int i = 0; i < count; ++i) values += " 7.0";
  const std::string next = "]},\n    \"UCPTreturnTempAlarm\"";
  const std::string field = ",{\"label\": \"stage #\", \"count\": " + std::to_string(count) +
                            ", \"lowest\": 0, \"highest\": 99, \"precision\": 1}";
  return tests::NewerBuilding({{next, field + next}, {"\"3.0 1800.0\"", "\"3.0 1800.0" + values + "\""}});
}

TEST(NewerAlarms, AFurtherFieldShiftsTheBoxesAndTheRulesWithThem) {
  const auto newer = WithFurtherFields(1);
  tests::Tool tool(newer.Options());
  tool.OpenPage(tests::kAssigned, "fAlarm");
  for (const auto& [box, place] :
       {std::pair(2, "Space temp"), {9, "Supply temp, Low limit"}, {23, "Fan alarm, Delay"}})
    EXPECT_EQ(NameOf(fields::CaptionOf(tool.Find(Box(box)))), place);

  tool.Type(Box(2), "8");
  EXPECT_FALSE(tool.Page("fAlarm").WriteValue());
  EXPECT_EQ(tool.Messages(), kBothRules) << "a delay and a low limit stand in boxes 8 and 9";
  tool.Type(Box(8), "0");
  tool.Type(Box(9), "50");
  tool.Click("cmdApply");
  const std::tuple<int, const char*, const char*> stored[] = {
      {35, "UCPTspaceTempAlarm#SI", "3.000 1800.000 8.000"},
      {37, "UCPTmixAirTempAlarm#SI", "4.000 40.000 0.000"},
      {38, "UCPTsupplyTempAlarm#SI", "50.000 55.000 600.000"}};
  for (const auto& [number, format, fields] : stored)
    EXPECT_EQ(tool.Stored(tests::kAssigned, number, format, 3), fields);
}

/// Counts the layouts that a native form is given.
struct Screen : ui::Peer {
  void Changed(ui::Control&, ui::Aspect) override {}
  void TakeFocus(ui::Control&) override {}
  void LayoutChanged() override { ++layouts; }
  int layouts = 0;
};

TEST_F(ToolTest, AlarmBoxesAreArrangedAnewWhenTheRecordsHaveOtherFields) {
  tests::FailurePlan plan;
  throughHost = tests::FailingBy(plan);
  OpenPage(tests::kAssigned, "fAlarm");
  Screen screen;
  shell::ISubForm& page = Page("fAlarm");
  page.SetPeer(&screen);
  for (const int expected : {0, 1, 1, 2}) {
    if (expected == 1) plan.Arm(tests::Failure::kShortRecord, {1}, true);
    if (expected == 2) plan.Disarm();
    page.FillValue();
    EXPECT_EQ(screen.layouts, expected);
    EXPECT_EQ(Find(Box(22)).Visible(), expected != 1);
  }
  page.SetPeer(nullptr);
}

TEST(NewerAlarms, MoreFieldsThanBoxesAreToldInWords) {
  const auto newer = WithFurtherFields(5);
  tests::Tool tool(newer.Options());
  tool.Open(tests::kAssigned);
  EXPECT_THAT(tool.Messages(),
              testing::Contains("FillValue/Alarm: UCPTfanAlarmTime: The alarm records have more fields than "
                                "the page has boxes (27)."));
}

}  // namespace
