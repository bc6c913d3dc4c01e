#include <set>

#include "fault_of.h"
#include "host/device_template.h"
#include "tool_test.h"

namespace {

using tests::ErrorOf;
using tests::Raised;
using tests::ToolTest;

TEST_F(ToolTest, ReadOnlyPropertiesTellWhoThePlugInIsOthersComeBackAsWritten) {
  for (const auto& [name, text] : {std::pair("ManufacturerID", "17"),
                                   {"ManufacturerName", "Veldran, Inc"},
                                   {"LcaVersion", "2.7"},
                                   {"version", "1.2.3"},
                                   {"Name", "KV-TARN Configuration"}}) {
    EXPECT_EQ(ErrorOf([&, member = name] { api.Put(member, "x"); }),
              Raised("Attempt to write to read-only property"));
    EXPECT_EQ(api.Text(name), text);
  }
  for (const char* name : {"NetworkName", "NetworkInterfaceName", "OvxServerVersion", "DevelopmentProgramId",
                           "NetworkIpAddress", "FolderName", "DeviceName", "LmoIndex", "code"}) {
    api.Put(name, std::string("text of ") + name);
    EXPECT_EQ(api.Text(name), std::string("text of ") + name);
  }
  api.Put("Remote", true);
  EXPECT_TRUE(api.Get("Remote").AsBool());
  EXPECT_FALSE(api.Get("Visible").AsBool());
}

TEST_F(ToolTest, EachStepOfTheStartFailsWithItsMessage) {
  simulator::Faults& faults = building.Faults();
  std::string& answer = building.Limits().answer;
  const std::string address = building.IpAddress(), device = tests::kAssigned;
  const std::string transaction = "Network error in first transaction with " + address;
  const std::string loading = "Error loading device template for ";
  const std::string other = " not equal to required version 2.7.X";
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[&] { faults.Fail({.member = "ObjectServer.RefreshCatalog"}); },
       "DRFs catalog could not be refreshed, exiting application"},
      {[&] { api.Put("OvxServerVersion", "3.7"); }, "OVX server version 3.7" + other},
      {[&] { api.Put("OvxServerVersion", "1.9"); }, "OVX server version 1.9" + other},
      {[&] { api.Put("OvxServerVersion", "two"); }, "OVX server version two" + other},
      {[&] { api.Put("OvxServerVersion", "2.6"); },
       "OVX server revision 6 lower than required minimum revision 2.7.X"},
      {[&] { api.Put("LmoIndex", "70000"); },
       "The functional block index \"70000\" is not a whole number of 16 bits."},
      {[&] { api.Put("NetworkName", "Nowhere"); },
       "Cannot connect to the network Nowhere at " + address + ":" + std::to_string(building.Port())},
      {[&] { answer = "ERROR_MAX_CLIENTS"; }, "Maximum number of plugins reached on " + address},
      {[&] { answer = "ERROR_PLUGIN_INSTANCE"; }, "Plugin instance already exists on " + address},
      {[&] { answer = "BUSY"; }, transaction},
      {[&] { faults.Fail({.member = "Network.OpenSession"}); }, transaction},
      {[&] { api.Put("DeviceName", "RTU-9"); }, "Network error when getting device data with RTU-9"},
      {[&] { api.Put("DeviceName", tests::kNoTemplate); }, loading + tests::kNoTemplate},
      {[&] { templateContent.assign(3, 1); }, loading + device},
      {[&] { api.Put("LmoIndex", "40"); }, loading + device},
      {[&] { faults.Fail({.member = "LonMarkObject.Name"}); },
       "The functional block with index 1 was not found on " + device},
  };
  for (const auto& [spoil, message] : cases) {
    spoil();
    EXPECT_EQ(ErrorOf([&] { api.Call("SendCommand", 0, 0, ""); }), Raised(message));
    EXPECT_EQ(program.Window(), nullptr) << "no half-open window: " << message;
    faults.Clear();
    answer.clear();
    templateContent.clear();
    api.Put("OvxServerVersion", " 2.10.3 ");
    api.Put("NetworkName", building.NetworkName());
    api.Put("DeviceName", tests::kAssigned);
    api.Put("LmoIndex", "1");
  }
  EXPECT_EQ(ErrorOf([&] { api.Call("SendCommand"); }).substr(0, 8), "8002000E");
  api.Call("SendCommand", 7, 3, "x");  // any command
  EXPECT_TRUE(api.Get("Visible").AsBool()) << "the same object starts once everything is right";
  EXPECT_EQ(Main().Tag(), "");
  EXPECT_EQ(Main().Title(), "KV-TARN Configuration - RTU-1 North wing - RoofTopObject");
}

TEST_F(ToolTest, ASecondCommandRaisesTheOpenWindowAndRefusesAnotherDeviceInTheChosenLanguage) {
  building.Language().Put("Language", "German");
  api.Put("LmoIndex", "one");
  EXPECT_EQ(ErrorOf([&] { api.Call("SendCommand", 0, 0, ""); }),
            Raised("Der Index des Funktionsblocks „one“ ist keine ganze 16-Bit-Zahl."));
  api.Put("LmoIndex", "1");
  Open(tests::kAssigned);
  shell::fMain* window = program.Window();
  const auto calls = building.Faults().Total();
  Open(tests::kAssigned);
  EXPECT_EQ(program.Window(), window);
  EXPECT_EQ(building.Faults().Total(), calls) << "nothing is loaded again";
  EXPECT_EQ(ErrorOf([&] { Open(tests::kPressure); }),
            Raised("Das Konfigurationsfenster ist für RTU-1 North wing geöffnet. "
                   "Bitte schließen Sie es, bevor ein anderes Gerät konfiguriert wird."));
}

TEST_F(ToolTest, ACommandDuringALoadIsRefused) {
  std::set<std::string> errors;
  const auto command = [&] { errors.insert(ErrorOf([&] { api.Call("SendCommand", 0, 0, ""); })); };
  throughHost = [&](std::string_view, const automation::Object& object) {
    command();  // while the host answers the first calls
    return object;
  };
  loop.onTurn = command;
  Open(tests::kAssigned);
  EXPECT_EQ(errors,
            std::set{Raised("The configuration tool is busy. Please try again when it has finished.")});
}

TEST_F(ToolTest, MinimizedIsRefusedOnlyWhereItWouldChangeAHiddenWindow) {
  const std::string refused = Raised(
      "Can not modify the minimzed property when invisble. "
      "The property will be applied the next time the plug-in is made visible");
  const auto minimize = [this](bool value) { return ErrorOf([&] { api.Put("Minimized", value); }); };
  EXPECT_EQ(minimize(false), "no error") << "no window";
  EXPECT_EQ(minimize(true), refused);
  EXPECT_EQ(minimize(false), "no error") << "taken back";
  EXPECT_EQ(minimize(true), refused);
  Open(tests::kAssigned);
  EXPECT_TRUE(api.Get("Minimized").AsBool()) << "holds for the window that came";
  EXPECT_EQ(minimize(false), "no error");
  EXPECT_EQ(minimize(false), "no error") << "visible";
  api.Put("Visible", false);
  EXPECT_EQ(minimize(false), "no error") << "hidden";
  EXPECT_EQ(minimize(true), refused);
  EXPECT_FALSE(api.Get("Minimized").AsBool());
  api.Put("Visible", true);
  EXPECT_TRUE(api.Get("Minimized").AsBool());
  api.Put("Visible", false);
  EXPECT_EQ(minimize(false), refused);
  Open(tests::kAssigned);  // shows it, too
  EXPECT_FALSE(api.Get("Minimized").AsBool());
}

TEST_F(ToolTest, WhatIsAskedOfAWindowBeforeItComesHoldsAndFollowsItAfterwards) {
  registry.values[program.GetSettings().settingsKey + "|WindowPlace"] = "5 6 700 500";
  api.Put("Left", 120);
  api.Put("Visible", false);
  EXPECT_EQ(api.Whole("Left"), 120);
  EXPECT_FALSE(api.Get("Visible").AsBool());
  Open(tests::kAssigned);
  EXPECT_EQ(api.Whole("Left"), 120);
  EXPECT_EQ(api.Whole("Top"), 6) << "as it was";
  EXPECT_FALSE(Main().Visible());
  api.Put("Visible", true);
  EXPECT_TRUE(Main().Visible());
  for (const char* place : {"Left", "Top", "Height"}) api.Put(place, 40);
  EXPECT_EQ(api.Whole("Left"), 40);
  EXPECT_EQ(api.Whole("Top"), 40);
  EXPECT_EQ(api.Whole("Height"), 500) << "it keeps its size";
  api.Put("Minimized", true);
  EXPECT_TRUE(api.Get("Minimized").AsBool());
  EXPECT_EQ(ErrorOf([&] { api.Put("Left", 1); }),
            Raised("Plug-in can't be moved or sized while minimized or maximized"));

  tests::Tool failing;
  failing.api.Put("Visible", false);
  failing.building.Faults().Fail({.member = "Property.Precision"});
  failing.Open(tests::kAssigned);
  EXPECT_TRUE(failing.Main().Ending() && failing.Main().Logger().Visible())
      << "one that may not be seen closes itself at once";
}

TEST_F(ToolTest, TheReasonThatTheHostGaveStandsInTheLog) {
  building.Faults().Fail({.member = "Device.AddLmo", .text = "The template is locked."});
  building.Faults().StartCounting();
  EXPECT_EQ(ErrorOf([&] { api.Call("SendCommand", 0, 0, ""); }),
            Raised("Error loading device template for RTU-1 North wing"));
  EXPECT_EQ(building.Faults().Count("Device.LonMarkObjects"), 1u) << "taken before the template is loaded";
  building.Faults().Clear();
  building.Limits().answer = "BUSY";
  EXPECT_NE(ErrorOf([&] { api.Call("SendCommand", 0, 0, ""); }), "no error");
  building.Limits().answer.clear();
  Open(tests::kAssigned);
  const std::string start = "SendCommand/OVXPlugInAPI: The ";
  EXPECT_THAT(Messages(), testing::ElementsAre(testing::StartsWith(start + "template is locked."),
                                               start + "host answered \"BUSY\"."));
}

TEST_F(ToolTest, AFaultInTheDeviceTreeNamesObjectAndMember) {
  const std::tuple<const char*, std::uint64_t, const char*> cases[] = {
      {"Device.LonMarkObjects", 2, "Device.LonMarkObjects: "},
      {"LonMarkObject.ConfigProperties", 4, "HardwareInput2.ConfigProperties: "},
      {"Collection.Item", 6, "LonMarkObjects.Item(HardwareInput2): "},
  };
  for (const auto& [member, call, named] : cases) {
    tests::Tool tool;
    tool.building.Faults().Fail({.member = member, .call = call, .text = "The line is dead."});
    tool.Open(tests::kAssigned);
    EXPECT_THAT(tool.Messages().at(0),
                testing::StartsWith(std::string("Load/Main: ") + named + "The line is dead."));
  }
}

TEST(DeviceTemplate, RefusesIdentitiesThatAreNoFileNames) {
  EXPECT_EQ(host::TemplateName("8000ab0c12340001", "3.1"), "8000AB0C12340001_3_1");
  for (const char* identity : {"", "..\\..\\x", "a/b", "a.b", "a b", "\xC3\xA9"})
    EXPECT_THROW(host::TemplateName(identity, "3.1"), base::Error) << identity;
  for (const char* version : {" 3.1", "3.1.2", "3.1.x "})
    EXPECT_EQ(host::TemplateName("A", version), "A_3_1") << version;
  for (const char* version : {"", "3", "3.", ".1", "3.x", "-3.1", "3. 1"})
    EXPECT_THROW(host::TemplateName("A", version), base::Error) << version;
}

TEST_F(ToolTest, RegistersByTheFirstWordOfTheCommandLine) {
  for (const auto& [commandLine, registered] : {std::pair("", 0u),
                                                {"/other", 0u},
                                                {"x /regplugin", 0u},
                                                {"  /REGPLUGIN  ", 1u},
                                                {"/regplugin x", 1u},
                                                {"/DeregPlugIn", 0u},
                                                {"/regplugin /deregplugin", 1u}}) {
    plugin::RunStandAlone(commandLine, description, [this](std::string_view id) { return Create(id); });
    EXPECT_EQ(building.PlugIns().size(), registered) << commandLine;
  }
  EXPECT_EQ(building.PlugIns()[0].id, "QVRKvTARNCfg.LNSPlugInAPI");
}

TEST(Settings, NameTheLargeIconWhereTheFamilyHasOne) {
  plugin::StartUpFacts facts;
  facts.lonWorksFolder = "C:\\LonWorks";
  for (const bool large : {false, true}) {
    facts.fileExists = [large](const std::string& file) { return large && file.ends_with("\\icon32.ico"); };
    EXPECT_EQ(
        plugin::MakeSettings(facts, {}).iconFile,
        std::string("C:\\LonWorks\\Apps\\QVR KV\\OvxCommonFiles\\") + (large ? "icon32.ico" : "icon.ico"));
  }
}

}  // namespace
