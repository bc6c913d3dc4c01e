// The pages that only host the maker's controls, with the virtual building's own controls in them.
#include <gtest/gtest.h>

#include "simulator/controls/about.h"
#include "simulator/controls/object_manager.h"
#include "tool_test.h"

namespace {

constexpr const char* kManager = "MVSingleObjectManager.ObjectManager";

struct InfoPages : tests::ToolTest {
  InfoPages() {
    controls.make = [this](const std::string& site, const std::function<void(const std::string&)>& onFailed) {
      if (!complaint.empty()) onFailed(complaint);
      return site == "ctlAbout" ? Made(about, onFailed) : Made(manager, onFailed);
    };
  }

  template <class Kind>
  static automation::Object Made(std::shared_ptr<Kind>& control,
                                 const std::function<void(const std::string&)>& onFailed) {
    control = std::make_shared<Kind>();
    control->onFailed = onFailed;
    return automation::Object(control);
  }

  template <class T>
  static T& In(controls::MakersControl& control, const char* name) {
    return dynamic_cast<T&>(*control.GetWindow().Find(name));
  }
  /// Selects objects by their places and presses a button.
  void Order(std::vector<std::size_t> places, const char* button) {
    In<ui::ListView>(*manager, "lvwObjects").SetSelection(std::move(places));
    EXPECT_TRUE(In<ui::Button>(*manager, button).Click());
  }
  std::string StateOf(const char* object) { return building.StateOfObject(tests::kAssigned, object); }

  std::shared_ptr<controls::ObjectManager> manager;
  std::shared_ptr<controls::About> about;
  std::string complaint;  // reported while a control is made
};

TEST_F(InfoPages, ControlsAreMadeWhenTheirPageIsFirstShown) {
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
  EXPECT_EQ(In<ui::Label>(*about, "lblVersion").Text(), "Version 1.2.3");
  const auto& licences = In<ui::ListView>(*about, "lvwLicences");
  ASSERT_EQ(licences.Rows().size(), 1u);
  EXPECT_EQ(licences.Rows()[0].cells[1], "MIT");
  EXPECT_TRUE(Messages().empty());
}

TEST_F(InfoPages, OneRefusalOfTheObjectManagerIsToldAndNothingOfTheOrderIsDone) {
  OpenPage(tests::kAssigned, "fManage");
  Order({2, 3}, "cmdDisable");
  EXPECT_EQ(StateOf("HardwareInput1") + StateOf("HardwareInput2"), "DISABLEDDISABLED");
  Order({4, 0}, "cmdDisable");
  EXPECT_THAT(LastMessage(), testing::StartsWith("ctlObjectManager/Manage: NodeObject cannot be disabled"));
  building.Faults().Fail({.member = "Network.BeginTransaction"});
  Order({4}, "cmdDisable");
  EXPECT_EQ(LastMessage(), "ctlObjectManager/Manage: The call failed.");
  EXPECT_EQ(StateOf("HardwareInput3"), "ENABLED");
  Order({}, "cmdTest");
  EXPECT_EQ(In<ui::Label>(*manager, "lblResult").Text(), "Select one object or several first.");
}

TEST_F(InfoPages, AControlThatComplainsStaysOneThatFailsIsTriedAgain) {
  Open(tests::kAssigned);
  complaint = "No picture.";
  ChoosePage("fAbout");
  EXPECT_EQ(Messages(), (std::vector<std::string>{"Initialize/About: Initializing the form",
                                                  "Initialize/About: No picture."}));
  EXPECT_TRUE(Find("fAbout.ctlAbout").Visible());
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

TEST_F(InfoPages, AControlThatCannotBeMadeIsToldOnceAndTriedAgain) {
  Open(tests::kAssigned);
  const auto make = std::exchange(controls.make, nullptr);
  for (const bool possible : {false, false, true}) {
    if (possible) controls.make = make;
    ChoosePage("fAbout");
    EXPECT_EQ(Find("fAbout.lblFault").Visible(), !possible);
    EXPECT_EQ(Find("fAbout.ctlAbout").Visible(), possible);
    EXPECT_EQ(controls.alive.size(), possible ? 1u : 0u);
    ChoosePage("fPID");
  }
  ASSERT_EQ(Messages().size(), 1u);
  EXPECT_THAT(Messages()[0], testing::StartsWith("Load/About: The control "));
}

TEST_F(InfoPages, AMissingControlFailsTheLoadAndIsNamed) {
  controls.missing = {kManager};
  Open(tests::kAssigned);
  EXPECT_EQ(Main().Tag(), "Refuse to start");
  EXPECT_EQ(Messages(),
            (std::vector<std::string>{"Load/Manage: The control \"" + std::string(kManager) +
                                          "\" is not registered on this machine (error 0x800401F3).",
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
