// The pages that only host the maker's controls, with the virtual building's own controls in them.
#include "simulator/controls/about.h"
#include "simulator/controls/object_manager.h"
#include "tool_test.h"

namespace {

struct InfoPages : tests::ToolTest {
  InfoPages() {
    controls.make = [this](const std::string& site, const auto& onFailed) {
      if (!complaint.empty()) onFailed(complaint);
      const auto made = [&onFailed]<class Kind>(std::shared_ptr<Kind>& control) {
        control = std::make_shared<Kind>();
        control->onFailed = onFailed;
        return automation::Object(control);
      };
      return site == "ctlAbout" ? made(about) : made(manager);
    };
  }

  /// Selects objects by their places and presses a button.
  void Order(std::vector<std::size_t> places, const char* button) {
    In<ui::ListView>(manager->GetWindow(), "lvwObjects").SetSelection(std::move(places));
    ClickIn(manager->GetWindow(), button);
  }
  std::string StateOf(const char* object) { return building.StateOfObject(tests::kAssigned, object); }

  std::shared_ptr<controls::ObjectManager> manager;
  std::shared_ptr<controls::About> about;
  std::string complaint;  // reported while a control is made
};

TEST_F(InfoPages, ControlsAreMadeWhenTheirPageIsFirstShownAndARefusedOrderIsToldAndNotDone) {
  Open(tests::kAssigned);
  EXPECT_TRUE(controls.alive.empty());
  ChoosePage("fManage");
  ASSERT_TRUE(manager);
  EXPECT_FALSE(about);
  const auto first = manager;
  ChoosePage("fPID");
  ChoosePage("fManage");
  EXPECT_EQ(manager, first);
  ChoosePage("fAbout");
  ASSERT_TRUE(about);
  EXPECT_EQ(about->GetWindow().Find("lblVersion")->Text(), "Version 1.2.3");
  const auto& licences = In<ui::ListView>(about->GetWindow(), "lvwLicences").Rows();
  ASSERT_EQ(licences.size(), 1u);
  EXPECT_EQ(licences[0].cells[1], "MIT");
  EXPECT_TRUE(Messages().empty());

  ChoosePage("fManage");
  Order({2, 3}, "cmdDisable");
  EXPECT_EQ(StateOf("HardwareInput1") + StateOf("HardwareInput2"), "DISABLEDDISABLED");
  Order({4, 0}, "cmdDisable");
  EXPECT_THAT(LastMessage(), testing::StartsWith("ctlObjectManager/Manage: NodeObject cannot be disabled"));
  building.Faults().Fail({.member = "Network.BeginTransaction"});
  Order({4}, "cmdDisable");
  EXPECT_EQ(LastMessage(), "ctlObjectManager/Manage: The call failed.");
  EXPECT_EQ(StateOf("HardwareInput3"), "ENABLED");
  Order({}, "cmdTest");
  EXPECT_EQ(manager->GetWindow().Find("lblResult")->Text(), "Select one object or several first.");
}

TEST_F(InfoPages, AControlThatCannotBeMadeOrFailsIsTriedAgainOneThatComplainsStays) {
  Open(tests::kAssigned);
  const auto make = std::exchange(controls.make, nullptr);
  complaint = "No picture.";
  for (const bool possible : {false, false, true}) {
    if (possible) controls.make = make;
    ChoosePage("fAbout");
    EXPECT_EQ(Find("fAbout.lblFault").Visible(), !possible);
    EXPECT_EQ(Find("fAbout.ctlAbout").Visible(), possible);
    EXPECT_EQ(controls.alive.size(), possible ? 1u : 0u);
    ChoosePage("fPID");
  }
  EXPECT_THAT(Messages(), testing::ElementsAre(testing::StartsWith("Load/About: The control "),
                                               "Initialize/About: Initializing the form",
                                               "Initialize/About: No picture."));
  complaint.clear();
  ClearLog();
  building.Faults().Fail({.member = "ObjectServer.Device"});
  ChoosePage("fManage");
  EXPECT_EQ(Messages(), (std::vector<std::string>{"Initialize/Manage: Initializing the form",
                                                  "Initialize/Manage: The call failed. (error 0x800706BE)"}));
  EXPECT_EQ(Find<ui::Button>("cmdErrorLog").Picture(), 2);
  EXPECT_EQ(Text("fManage.lblFault"), "This page cannot be shown: The call failed. (error 0x800706BE)");
  EXPECT_FALSE(Find("fManage.ctlObjectManager").Visible());
  EXPECT_EQ(controls.alive.size(), 1u) << "the other page's";
  Click("cmdApply");
  EXPECT_EQ(Messages().size(), 2u) << "nothing to save";
  ChoosePage("fPID");
  ChoosePage("fManage");
  EXPECT_TRUE(Find("fManage.ctlObjectManager").Visible());
  EXPECT_FALSE(Find("fManage.lblFault").Visible());
  EXPECT_EQ(controls.alive.size(), 2u);
}

TEST_F(InfoPages, AMissingControlFailsTheLoadAndIsNamed) {
  controls.missing = {"MVSingleObjectManager.ObjectManager"};
  Open(tests::kAssigned);
  EXPECT_EQ(Main().Tag(), "Refuse to start");
  EXPECT_EQ(Messages(), (std::vector<std::string>{
                            "Load/Manage: The control \"MVSingleObjectManager.ObjectManager\" is not "
                            "registered on this machine (error 0x800401F3).",
                            "Load/Main: The page \"Object Manage\" could not be loaded."}));
}

TEST_F(InfoPages, AtTheEndTheControlLetsGoOfTheHost) {
  auto tool = std::make_unique<tests::Tool>(building);
  tool->controls.make = controls.make;
  tool->OpenPage(tests::kAssigned, "fManage");
  tool->Click("cmdOK");
  EXPECT_FALSE(tool->Main().Visible());
  EXPECT_TRUE(tool->prompts.asked.empty() && tool->Messages().empty()) << "nothing was changed: not a word";
  tool->loop.Tick();
  ASSERT_TRUE(tool->quit);
  tool.reset();
  EXPECT_EQ(manager.use_count(), 1) << "nobody else holds it";
  const automation::Object server = building.ObjectServer();
  const automation::Object network =
      server.Call("Connect", building.NetworkName(), building.IpAddress(), building.Port()).AsObject();
  EXPECT_EQ(network.Call("OpenSession", building.NetworkName(), true, "x", 1, "y").AsText(), "OK");
  EXPECT_NO_THROW(network.Child("AppDevices").Call("Item", tests::kAssigned));
}

}  // namespace
