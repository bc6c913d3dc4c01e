// The automation class for scripts: what a caller sees of it, what a unit holds afterwards, and that a
// session ends.
#include <filesystem>

#include "base/files.h"
#include "fault_of.h"
#include "plugin/configuration_api.h"
#include "tool_test.h"

namespace {

using automation::Object;
using automation::Value;
using testing::HasSubstr;
using tests::ErrorOf;
using tests::Raised;

struct ScriptTest : tests::ToolTest {
  void OpenUnit(const std::string& device) {
    script.Call("Open", building.NetworkName(), building.IpAddress(), building.Port(), device, 1);
  }
  void Put(const char* page, const char* field, const Value& content) {
    const Value arguments[] = {page, field, content};
    script.GetTarget()->Invoke(automation::Access::kPut, "Value", arguments);
  }
  std::string Get(const char* page, const char* field) { return script.Get("Value", page, field).AsText(); }
  std::string Gain(const char* device) {
    return Stored(device, 30, "UCPTspaceTempPIDparam#SI", 4).substr(0, 7);
  }

  std::string file = (std::filesystem::path(Documents()) / "script.kvtarn").string();
  Object script{std::make_shared<plugin::ConfigurationApi>(program)};
};

TEST_F(ScriptTest, ValuesAreReadAndPutInByNameOrCaptionAndStoredByApply) {
  OpenUnit(tests::kAssigned);
  EXPECT_EQ(Get("PID", "space temperature, proportional gain"), "25.0000");
  Put("fPID", "txtPIDTemp(0)", 30.5);
  EXPECT_EQ(Get("PID", "Space Temperature, Proportional Gain"), "30.5");
  EXPECT_EQ(Gain(tests::kAssigned), "25.0000");
  EXPECT_THAT(ErrorOf([&] { script.Call("Save", file); }), HasSubstr("not applied"));
  EXPECT_THAT(ErrorOf([&] { script.Put("Imperial", true); }), HasSubstr("not applied"));
  EXPECT_EQ(script.Call("Apply").AsWhole(), 1);
  EXPECT_EQ(script.Call("Apply").AsWhole(), 0);
  EXPECT_EQ(Gain(tests::kAssigned), "30.5000");
  script.Put("Imperial", true);
  EXPECT_EQ(Get("PID", "Space Temperature, Proportional Gain").substr(0, 6), "16.944");
  script.Put("Imperial", false);

  EXPECT_THAT(ErrorOf([&] { Put("PID", "Nothing", 1); }), HasSubstr("no field \"Nothing\""));
  Put("fPID", "chkPID", false);
  Put("Main window", "Location", "Roof");
  script.Call("Close");
  EXPECT_EQ(ErrorOf([&] { Get("PID", "txtPIDTemp(0)"); }), Raised("No unit is open."));
  OpenUnit(tests::kAssigned);
  EXPECT_EQ(base::Trim(Get("fMain", "txtLocation")), "Roof north, bay 3") << "what was not applied";
}

TEST_F(ScriptTest, AFileIsAppliedWhollyOrNotAtAllAndComparedInItsUnits) {
  script.Put("Imperial", true);
  OpenUnit(tests::kPressure);
  script.Call("Save", file);
  script.Put("Imperial", false);
  OpenUnit(tests::kUnassigned);
  EXPECT_GT(script.Call("Apply", file).AsWhole(), 20);
  building.Faults().StartCounting();
  EXPECT_EQ(script.Call("Compare", file).AsList().size(), 1u) << "the location is the unit's own";
  EXPECT_FALSE(script.Get("Imperial").AsBool());
  EXPECT_EQ(Get("fPID", "txtPIDTemp(0)"), Gain(tests::kUnassigned)) << "in the script's units";
  EXPECT_EQ(building.Faults().Count("Network.OpenSession"), 1u) << "it was open in the file's units";
  EXPECT_EQ(script.Call("Apply", file).AsWhole(), 0);

  auto document = configuration::Read(base::ReadFile(file, configuration::kLargestFile), "");
  const_cast<configuration::Entry*>(document.Find("fPID", "txtPIDTemp(0)"))->content = "20";
  const_cast<configuration::Entry*>(document.Find("fControlOutput", "cboOutput(0)"))->content = "NO_FUNCTION";
  base::ReplaceFile(file, configuration::Write(document));
  const std::string before = building.StoredDevice(tests::kUnassigned);
  EXPECT_THAT(ErrorOf([&] { script.Call("Apply", file); }), HasSubstr("Output 1, Usage"));
  EXPECT_EQ(script.Call("Apply").AsWhole(), 0) << "half of a refused file";
  EXPECT_EQ(building.StoredDevice(tests::kUnassigned), before);
  EXPECT_THAT(ErrorOf([&] { script.Call("Apply", Documents() + "/none.kvtarn"); }), HasSubstr("none.kvtarn"));
}

TEST_F(ScriptTest, WhatASaveDidNotStoreIsLeftOutOfTheNextOne) {
  OpenUnit(tests::kAssigned);
  script.Call("Save", file);
  const auto all = configuration::Read(base::ReadFile(file, configuration::kLargestFile), "");
  const auto write = [&](const char* field, const char* content) {
    auto one = *all.Find("fPID", field);
    one.content = content;
    base::ReplaceFile(file, configuration::Write({all.head, {one}}));
  };
  write("txtPIDTemp(0)", "30.5");
  auto& faults = building.Faults();
  faults.Fail({.member = "Network.BeginTransaction", .code = automation::kApplicationDefined});
  EXPECT_THAT(ErrorOf([&] { script.Call("Apply", file); }), HasSubstr("Nothing was applied"));
  write("txtPIDTemp(1)", "0.7");
  EXPECT_EQ(script.Call("Apply", file).AsWhole(), 1);
  EXPECT_EQ(Gain(tests::kAssigned), "25.0000");

  Put("fPID", "txtPIDTemp(0)", 31);
  EXPECT_THAT(ErrorOf([&] { script.Call("Apply", file); }), HasSubstr("are not applied"));
  faults.Fail({.member = "Network.CommitTransaction", .instead = [&faults] {
                 faults.Fail({.member = "Property.Value", .once = false});
                 throw automation::Error(0x800706BE, "The remote procedure call failed.");
               }});
  EXPECT_THAT(ErrorOf([&] { script.Call("Apply"); }), HasSubstr("not known"));
  faults.Clear();
  EXPECT_EQ(Get("fPID", "txtPIDTemp(0)"), "25.0000");
  EXPECT_NO_THROW(script.Call("Save", file));
}

TEST_F(ScriptTest, AScriptAndTheWindowTakeTurnsAndALetGoSessionEnds) {
  EXPECT_EQ(ErrorOf([&] { script.Get("Units"); }), Raised("No network is open."));
  OpenUnit("");
  EXPECT_EQ(script.Get("Units").AsList().size(), 4u);
  OpenUnit(tests::kUnassigned);
  EXPECT_EQ(script.Get("Units").AsList()[1].AsText(), tests::kUnassigned);
  building.Faults().Fail(
      {.member = "AppDevices.Item", .call = 2, .code = automation::kApplicationDefined, .text = "Busy."});
  EXPECT_EQ(script.Get("Units").AsList().size(), 4u) << "also the one that is open here, in other words";
  Open(tests::kAssigned);
  EXPECT_THAT(ErrorOf([&] { OpenUnit(tests::kAssigned); }), HasSubstr("is open in another session"));
  prompts.whileAsked = [this] { EXPECT_THAT(ErrorOf([&] { script.Call("Close"); }), HasSubstr("is busy")); };
  Type("fPID.txtPIDTemp(0)", "31");
  Main().Close();  // asks
  EXPECT_TRUE(prompts.asked.size() > 0);
  prompts.whileAsked = {};
  OpenUnit(tests::kPressure);
  script = {};
  script = Object(std::make_shared<plugin::ConfigurationApi>(program));
  EXPECT_NO_THROW(OpenUnit(tests::kPressure));
  loop.onTurn = [this] {
    loop.onTurn = {};
    EXPECT_THAT(ErrorOf([&] { script.Call("Close"); }), HasSubstr("is busy"));
    EXPECT_TRUE(program.CallOverdue("Value", std::chrono::seconds(61)));
    EXPECT_FALSE(program.CallOverdue("Value", std::chrono::seconds(59)));
  };
  script.Call("Save", file);
  EXPECT_FALSE(loop.onTurn) << "the loop was turned";
}

}  // namespace
