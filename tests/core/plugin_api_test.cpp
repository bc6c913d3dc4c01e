#include <gtest/gtest.h>

#include <set>

#include "fault_of.h"
#include "host/device_template.h"
#include "tool_test.h"

namespace {

using tests::ToolTest;

using tests::ErrorOf;
using tests::Raised;

TEST_F(ToolTest, ReadOnlyPropertiesTellWhoThePlugInIsOthersComeBackAsWritten) {
  const std::pair<const char*, const char*> identity[] = {{"ManufacturerID", "17"},
                                                          {"ManufacturerName", "Veldran, Inc"},
                                                          {"LcaVersion", "2.7"},
                                                          {"version", "1.2.3"},
                                                          {"Name", "KV-TARN Configuration"}};
  for (const auto& [name, text] : identity) {
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

TEST_F(ToolTest, ServerVersionMustMatchAndRevisionMayBeHigher) {
  const auto commandOf = [this](const std::string& server) {
    api.Put("OvxServerVersion", server);
    return ErrorOf([&] { api.Call("SendCommand", 0, 0, ""); });
  };
  for (const std::string server : {"3.7", "1.9", "", "two"}) {
    EXPECT_EQ(commandOf(server),
              Raised("OVX server version " + server + " not equal to required version 2.7.X"));
  }
  EXPECT_EQ(commandOf("2.6"), Raised("OVX server revision 6 lower than required minimum revision 2.7.X"));
  for (const char* server : {" 2.7.3 ", "2.10"}) EXPECT_EQ(commandOf(server), "no error") << server;
}

TEST_F(ToolTest, EachStepOfTheStartFailsWithItsMessage) {
  const std::string address = building.IpAddress();
  const struct {
    const char* what;
    std::function<void()> spoil;
    std::string message;
  } cases[] = {
      {"catalog", [&] { building.Faults().Fail({.member = "ObjectServer.RefreshCatalog"}); },
       "DRFs catalog could not be refreshed, exiting application"},
      {"index", [&] { api.Put("LmoIndex", "70000"); },
       "The functional block index \"70000\" is not a whole number of 16 bits."},
      {"network", [&] { api.Put("NetworkName", "Nowhere"); },
       "Cannot connect to the network Nowhere at " + address + ":" + std::to_string(building.Port())},
      {"clients", [&] { building.Limits().answer = "ERROR_MAX_CLIENTS"; },
       "Maximum number of plugins reached on " + address},
      {"instance", [&] { building.Limits().answer = "ERROR_PLUGIN_INSTANCE"; },
       "Plugin instance already exists on " + address},
      {"session", [&] { building.Limits().answer = "BUSY"; },
       "Network error in first transaction with " + address},
      {"session fails", [&] { building.Faults().Fail({.member = "Network.OpenSession"}); },
       "Network error in first transaction with " + address},
      {"device", [&] { api.Put("DeviceName", "RTU-9"); },
       "Network error when getting device data with RTU-9"},
      {"no template file", [&] { api.Put("DeviceName", tests::kNoTemplate); },
       std::string("Error loading device template for ") + tests::kNoTemplate},
      {"damaged template", [&] { templateContent.assign(3, 1); },
       std::string("Error loading device template for ") + tests::kAssigned},
      {"index beyond the blocks", [&] { api.Put("LmoIndex", "40"); },
       std::string("Error loading device template for ") + tests::kAssigned},
      {"block", [&] { building.Faults().Fail({.member = "LonMarkObject.Name"}); },
       std::string("The functional block with index 1 was not found on ") + tests::kAssigned},
  };
  for (const auto& item : cases) {
    item.spoil();
    EXPECT_EQ(ErrorOf([&] { api.Call("SendCommand", 0, 0, ""); }), Raised(item.message)) << item.what;
    EXPECT_EQ(program.Window(), nullptr) << "no half-open window: " << item.what;
    building.Faults().Clear();
    building.Limits().answer.clear();
    templateContent.clear();
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

TEST_F(ToolTest, WindowPropertiesFollowTheWindowsState) {
  Open(tests::kAssigned);
  api.Put("Left", 40);
  api.Put("Top", 30);
  EXPECT_EQ(api.Whole("Left"), 40);
  EXPECT_EQ(api.Whole("Top"), 30);
  const auto height = api.Whole("Height");
  api.Put("Height", height + 100);
  EXPECT_EQ(api.Whole("Height"), height);
  api.Put("Minimized", true);
  EXPECT_TRUE(api.Get("Minimized").AsBool());
  EXPECT_EQ(ErrorOf([&] { api.Put("Left", 1); }),
            Raised("Plug-in can't be moved or sized while minimized or maximized"));
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

TEST_F(ToolTest, WhatIsAskedOfAWindowBeforeItComesHolds) {
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
  ASSERT_EQ(Messages().size(), 2u);
  EXPECT_THAT(Messages()[0], testing::StartsWith("SendCommand/OVXPlugInAPI: The template is locked."));
  EXPECT_EQ(Messages()[1], "SendCommand/OVXPlugInAPI: The host answered \"BUSY\".");
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
    ASSERT_FALSE(tool.Messages().empty()) << member;
    EXPECT_THAT(tool.Messages()[0],
                testing::StartsWith(std::string("Load/Main: ") + named + "The line is dead."));
  }
}

TEST(DeviceTemplate, RefusesIdentitiesThatAreNoFileNames) {
  EXPECT_EQ(host::TemplateName("8000ab0c12340001", "3.1"), "8000AB0C12340001_3_1");
  for (const char* identity : {"", "..\\..\\x", "a/b", "a.b", "a b", "\xC3\xA9"}) {
    EXPECT_THROW(host::TemplateName(identity, "3.1"), base::Error) << identity;
  }
  for (const char* version : {" 3.1", "3.1.2", "3.1.x "}) {
    EXPECT_EQ(host::TemplateName("A", version), "A_3_1") << version;
  }
  for (const char* version : {"", "3", "3.", ".1", "3.x", "-3.1", "3. 1"}) {
    EXPECT_THROW(host::TemplateName("A", version), base::Error) << version;
  }
}

TEST_F(ToolTest, RegistersByTheFirstWordOfTheCommandLine) {
  const std::pair<const char*, std::size_t> cases[] = {{"", 0},
                                                       {"/other", 0},
                                                       {"x /regplugin", 0},
                                                       {"  /REGPLUGIN  ", 1},
                                                       {"/regplugin x", 1},
                                                       {"/DeregPlugIn", 0},
                                                       {"/regplugin /deregplugin", 1}};
  for (const auto& [commandLine, registered] : cases) {
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
