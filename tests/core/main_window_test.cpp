#include <algorithm>

#include "shell/unit_choice.h"
#include "tool_test.h"

namespace {

using tests::ToolTest;

constexpr const char* kBox = "fPID.txtPIDTemp(0)";

TEST_F(ToolTest, ApplySavesRefillsAndStaysOpenOkSavesAndCloses) {
  Open(tests::kAssigned);
  // A transaction that does not begin is tried once more.
  for (const bool once : {false, true}) {
    Type(kBox, "9.75");
    building.Faults().Fail({.member = "Network.BeginTransaction", .once = once});
    Click("cmdApply");
    EXPECT_EQ(LastMessage(),
              once ? tests::kApplied : "Apply/Main: The configuration settings were not applied");
    EXPECT_EQ(Text(kBox), once ? "9.7500" : "9.75") << "the edit is still there";
    EXPECT_EQ(Main().Pages().AnyPageChanged(), !once);
  }
  Type(kBox, "12.3400");
  Click("cmdApply");
  EXPECT_EQ(Stored(tests::kAssigned, 30, "UCPTspaceTempPIDparam#SI", 4).substr(0, 8), "12.3400 ");
  EXPECT_TRUE(Main().Visible());
  EXPECT_EQ(loop.waitDepth, 0);
  Type(kBox, "7.5");
  Click("cmdOK");
  EXPECT_EQ(LastMessage(), "OK/Main: The configuration setting were applied successfully");
  EXPECT_EQ(Stored(tests::kAssigned, 30, "UCPTspaceTempPIDparam#SI", 1).substr(0, 4), "7.5 ");
  EXPECT_FALSE(Main().Visible());
  loop.Tick();
  EXPECT_TRUE(quit);
}

TEST_F(ToolTest, ClosingWithChangesAsksAndOnlyYesCloses) {
  Open(tests::kAssigned);
  Type(kBox, "3");
  prompts.answers = {ui::Answer::kNo, ui::Answer::kCancel};
  Click("cmdCancel");
  EXPECT_FALSE(Main().Close());
  EXPECT_TRUE(Main().Visible());
  EXPECT_EQ(Text(kBox), "3");
  ASSERT_EQ(prompts.asked.size(), 2u);
  EXPECT_EQ(prompts.asked[0].text,
            "All unsaved changes will be lost.\r\nAre you sure you want to close the configuration tool?");
  EXPECT_EQ(prompts.asked[0].buttons, ui::Buttons::kYesNoCancel);
  EXPECT_EQ(prompts.asked[0].icon, ui::Icon::kQuestion);
  EXPECT_EQ(prompts.asked[0].title, "KV-TARN Configuration");
  prompts.answers = {ui::Answer::kYes};
  Click("cmdCancel");
  EXPECT_FALSE(Main().Visible());
}

TEST_F(ToolTest, ASessionThatEndsIsToldWhatWouldBeLost) {
  Open(tests::kAssigned);
  EXPECT_EQ(Main().onQueryEnd(), "");
  const std::string before = Stored(tests::kAssigned, 30, "UCPTspaceTempPIDparam#SI", 4);
  Type(kBox, "3");
  EXPECT_EQ(Main().onQueryEnd(), "All unsaved changes will be lost.");
  std::string busy;
  loop.onTurn = [&] {
    busy = Main().onQueryEnd();
    Main().onSessionEnd();
    EXPECT_TRUE(registry.values.contains(program.GetSettings().settingsKey + "|WindowPlace"));
  };
  Click("cmdApply");
  EXPECT_EQ(busy, "The configuration tool is busy. Please try again when it has finished.");
  EXPECT_EQ(Stored(tests::kAssigned, 30, "UCPTspaceTempPIDparam#SI", 4), before)
      << "cancelled, not half written";
  EXPECT_TRUE(prompts.asked.empty());
  loop.Tick();
  EXPECT_TRUE(quit);
}

TEST_F(ToolTest, CommandsNeverNest) {
  Open(tests::kAssigned);
  Type(kBox, "3");
  int begun = 0;
  building.Faults().StartCounting();
  loop.onTurn = [&] {
    Find<ui::Button>("cmdApply").Click();
    Find<ui::Button>("cmdRefresh").Click();
    Find<ui::OptionButton>("optUnit(1)").Click();
    EXPECT_FALSE(Find<ui::TextBox>(kBox).Type("4")) << "the pages take no input meanwhile";
    EXPECT_FALSE(Main().Close());
    ++begun;
  };
  Click("cmdApply");
  EXPECT_GT(begun, 0);
  EXPECT_EQ(building.Faults().Count("Network.BeginTransaction"), 2u) << "one save and one refresh";
  EXPECT_TRUE(Main().Visible());
}

TEST_F(ToolTest, LocationIsShownFilledInAndWrittenAndARefusalKeepsNobodyOut) {
  tests::Tool refused;
  refused.building.Faults().Fail({.member = "Property.Value", .call = 2, .text = "too long"});
  refused.Open(tests::kUnassigned);
  EXPECT_EQ(refused.Main().Tag() + refused.Text("txtLocation"), "Roof, south wing");
  EXPECT_THAT(refused.Messages()[0], testing::StartsWith("Load/Main: SCPTlocation: too long"));

  Open(tests::kUnassigned);
  EXPECT_EQ(Text("txtLocation"), "Roof, south wing") << "taken from the host, none was stored";
  EXPECT_EQ(building.StoredText(tests::kUnassigned, "NodeObject", 2, "SCPTlocation"), Text("txtLocation"));
  Type("txtLocation", "Roof, bay 4");
  Type(kBox, "26");
  Click("cmdApply");
  EXPECT_EQ(building.StoredText(tests::kUnassigned, "NodeObject", 2, "SCPTlocation"), "Roof, bay 4");
  EXPECT_EQ(Text(kBox), "26.0000") << "the pages are saved along with it";
  EXPECT_EQ(Text("cmdChanges"), "No changes");
  Type("txtLocation", "Roof, bay 5");
  for (const std::string button : {"Apply", "OK"}) {
    building.Faults().Fail({.member = "Property.Value", .text = "too long"});
    Click("cmd" + button);
    EXPECT_THAT(Messages()[Messages().size() - 2],
                testing::StartsWith(button + "/Main: SCPTlocation: too long"));
    EXPECT_EQ(LastMessage(), button + "/Main: The configuration settings were not applied");
    EXPECT_TRUE(Main().Visible());
    EXPECT_EQ(Text("txtLocation"), "Roof, bay 5");
  }
}

TEST_F(ToolTest, AnotherUnitIsAskedForStoredAndShownByAllPagesARefreshByThoseThatCouldBeRead) {
  Open(tests::kAssigned);
  const std::string before = Text(kBox);
  prompts.answers = {ui::Answer::kCancel};
  Find<ui::OptionButton>("optUnit(1)").Click();
  EXPECT_TRUE(Find<ui::OptionButton>("optUnit(0)").Selected()) << "cancelled";
  EXPECT_EQ(Text(kBox), before);
  EXPECT_EQ(prompts.Last().text,
            "If you change the Measurement Units now all unsaved data will be lost.\r\n"
            "Are you sure you want to change now?");

  const char* const heartbeat = "fNetworkInput.txtnvi(0)";
  for (const char* box : {kBox, heartbeat}) Type(box, "77");
  building.Faults().Fail({.member = "NetworkVariable.MvFormatType"});
  Find<ui::OptionButton>("optUnit(1)").Click();
  EXPECT_THAT(LastMessage(), testing::StartsWith("Unit/Main: The values of the device could not be read"));
  EXPECT_TRUE(Find<ui::OptionButton>("optUnit(0)").Selected());
  EXPECT_EQ(Text(kBox) + Text(heartbeat), "7777");
  building.Faults().Fail({.member = "NetworkVariable.MvFormatType"});
  Click("cmdRefresh");
  EXPECT_EQ(LastMessage(),
            "Refresh/Main: Could not be read again and show what they did before: Network Input");
  EXPECT_EQ(Text(kBox) + Text(heartbeat), before + "77");
  EXPECT_TRUE(Page("fNetworkInput").IsChanged());
  building.Faults().Fail({.member = "Network.BeginTransaction", .once = false});
  Click("cmdRefresh");
  EXPECT_THAT(LastMessage(), testing::HasSubstr(": Inputs, Outputs, "));

  building.Faults().Clear();
  Find<ui::OptionButton>("optUnit(1)").Click();
  EXPECT_NE(Text(kBox), before);
  EXPECT_EQ(registry.values["SOFTWARE\\LonWorks\\Plugins|Measure"], "1");
}

TEST(UnitChoice, ComesFromTheRegistryElseFromTheLocale) {
  const std::tuple<const char*, const char*, bool, bool> cases[] = {
      {"0", "1", true, false}, {"1", "0", false, true}, {"2", "1", false, false}, {"2", "0", true, true},
      {"", "0", true, false},  {"", "1", false, true},  {"x", "1", false, false}};
  for (const auto& [stored, measure, present, imperial] : cases) {
    tests::MemoryRegistry registry;
    tests::FixedLocale locale;
    locale.measure = measure;
    if (*stored) registry.values["SOFTWARE\\LonWorks\\Plugins|Measure"] = stored;
    EXPECT_EQ(shell::ReadUnitChoice(registry, locale, base::Numbers(), present), imperial) << stored;
  }
}

TEST_F(ToolTest, ARefusedEntryKeepsTheFocusAndStopsTheSave) {
  OpenPage(tests::kAssigned, "fPID");
  auto& box = Find<ui::TextBox>(kBox);
  box.Enter();
  box.Type("abc");
  EXPECT_FALSE(box.Leave());
  EXPECT_EQ(prompts.Last().text, "Invalid value for this field");
  EXPECT_EQ(prompts.Last().icon, ui::Icon::kInformation);
  EXPECT_EQ(Page("fPID").Focused(), &box);
  building.Faults().StartCounting();
  Click("cmdApply");  // by the Enter key the box is not left first
  EXPECT_EQ(building.Faults().Count("Network.BeginTransaction"), 0u);
  EXPECT_EQ(box.Text(), "abc");
}

TEST_F(ToolTest, HelpOpensThePagesTopic) {
  OpenPage(tests::kAssigned, "fPID");
  Click("cmdHelp");
  EXPECT_EQ(help.shown, std::vector<std::string>{"C:\\Tool\\HelpFile\\TARN-M Help File.chm>Main 15 45"});
  EXPECT_TRUE(prompts.asked.empty());
  for (const auto outcome : {shell::HelpOutcome::kNoFile, shell::HelpOutcome::kNoViewer}) {
    help.outcome = outcome;
    Click("cmdHelp");
    EXPECT_THAT(prompts.Last().text, testing::EndsWith("C:\\Tool\\HelpFile\\TARN-M Help File.chm"));
  }
  EXPECT_NE(prompts.asked[0].text, prompts.asked[1].text);

  // In the language in use, or in English where there is none in it or nobody can say which it is.
  const std::string english = help.shown[0];
  const std::string german = "C:\\Tool\\HelpFile\\German\\TARN-M Help File.chm>Main 15 45";
  UseLanguage("German");
  help.outcome = shell::HelpOutcome::kOpened;
  for (const auto& [missing, tried] :
       {std::pair("Help", std::vector{german, english}), {"German", {german, english}}, {"?", {german}}}) {
    help.missing = missing;
    help.shown.clear();
    Click("cmdHelp");
    EXPECT_EQ(help.shown, tried);
  }
  building.Faults().Fail({.member = "Language.Language"});
  help.shown.clear();
  Click("cmdHelp");
  EXPECT_EQ(help.shown, std::vector{english});
}

TEST_F(ToolTest, TheWindowComesBackWhereItWas) {
  Open(tests::kAssigned);
  Main().Move(120, 80);
  Main().Resize(900, 500);
  Main().Close();
  for (const char* kept : {"", "120 80 900", "a b c d", "1 2 3 99999999"}) {
    tests::Tool tool;
    tool.registry = registry;
    if (*kept) tool.registry.values[tool.program.GetSettings().settingsKey + "|WindowPlace"] = kept;
    tool.Open(tests::kAssigned);
    EXPECT_EQ(tool.Main().GetBounds().left, *kept ? 0 : 120) << kept;
    EXPECT_EQ(tool.Main().GetBounds().height, *kept ? 0 : 500) << kept;
  }
}

TEST_F(ToolTest, ProgressIsShownOfWorkThatLasts) {
  std::vector<std::string> seen;
  const auto look = [&] {
    const shell::fLoading& window = Main().ProgressObject;
    const auto& bar = *dynamic_cast<const ui::ProgressBar*>(window.Find("ProgressBar1"));
    if (!window.Visible()) return;
    seen.push_back(window.Title() + " " + window.Find("lblMessage")->Text() + " " +
                   std::to_string(bar.Value()) + "/" + std::to_string(bar.Maximum()));
  };
  const std::function<void()> lasting = [&] {
    loop.Tick();
    look();
  };
  loop.onTurn = lasting;
  Open(tests::kAssigned);
  const std::size_t pages = Main().Pages().Count();
  const std::string all = "/" + std::to_string(pages), last = " About " + std::to_string(pages) + all;
  ASSERT_EQ(seen.size(), pages + 2);
  EXPECT_EQ(seen[0], "Loading... Getting CP values 0/0");
  EXPECT_EQ(seen[1], "Loading... Now loading 0" + all);
  EXPECT_EQ(seen[2], "Loading... Now loading Inputs 1" + all);
  EXPECT_EQ(seen.back(), "Loading... Now loading" + last);

  for (const bool lasts : {false, true}) {
    seen.clear();
    loop.onTurn = lasts ? lasting : look;
    Click("cmdRefresh");
    EXPECT_EQ(seen.size(), lasts ? pages + 1 : 0u);
    loop.Tick();
    EXPECT_FALSE(Main().ProgressObject.Visible()) << "nor when the work is done";
  }
  EXPECT_EQ(seen.back(), "Refreshing configuration tool . . . Now refreshing" + last);
  seen.clear();
  Main().ProgressObject.ShowFLoading("Saving", "Now saving", 1);
  for (const char* text : {"PID", "Alarm"}) Main().ProgressObject.AdvanceProgressBar(text);
  EXPECT_EQ(seen.back(), "Saving Now saving Alarm 1/1") << "no further than its end";
}

TEST_F(ToolTest, AWindowMadeAheadComesUpAsOneThatCouldNotBe) {
  const auto shown = [](tests::Tool& tool) {
    std::vector<std::string> content = tool.Messages();
    for (const ui::Control* control : tool.Main().Controls()) content.push_back(control->Text());
    for (std::size_t i = 0; i < tool.Main().Pages().Count(); ++i) {
      for (const ui::Control* control : tool.Main().Pages().Page(i).Controls())
        content.push_back(control->Text());
    }
    const auto fields = tool.Main().Pages().Fields(tool.program.GetStrings());
    for (const fields::Field& field : fields.All()) {
      if (field.control) content.push_back(field.content());
    }
    return content;
  };
  tests::Tool late;  // made by the command
  late.controls.missing = {"MVSingleObjectManager.ObjectManager"};
  late.program.Prepare();
  late.controls.missing.clear();
  const auto calls = building.Faults().Total();
  program.Prepare();
  EXPECT_EQ(building.Faults().Total(), calls) << "nothing of the host is asked";
  EXPECT_EQ(program.Window(), nullptr);
  EXPECT_FALSE(api.Get("Visible").AsBool());
  // What another tool may change before the command comes.
  for (tests::Tool* tool : {static_cast<tests::Tool*>(this), &late}) {
    tool->building.Language().Put("Language", "German");
    tool->registry.values["SOFTWARE\\LonWorks\\Plugins|Measure"] = "1";
    tool->api.Call("SendCommand", 0, 0, "");
    EXPECT_TRUE(tool->Find<ui::OptionButton>("optUnit(1)").Selected());
    EXPECT_FALSE(tool->Main().Pages().AnyPageChanged() || tool->Main().Refused());
  }
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(Text("cmdApply"), "Übernehmen");
  EXPECT_EQ(shown(*this), shown(late));
}

TEST_F(ToolTest, ErrorButtonTellsTheLevelAndAWarningBlinks) {
  Open(tests::kAssigned);
  auto& button = Find<ui::Button>("cmdErrorLog");
  EXPECT_EQ(button.Picture(), 1);
  for (const auto& [level, picture] : {std::pair{64, 1}, {16, 2}, {99, 2}, {48, 3}}) {
    ClearLog();
    Main().AddMessage("text", "r", "l", level);
    EXPECT_EQ(button.Picture(), picture) << level;
  }
  for (int ticks = 0; button.Picture() == 3; ++ticks) {
    ASSERT_LT(ticks, 20);
    loop.Tick();
  }
  EXPECT_EQ(button.Picture(), 2);
  Main().ReInitializeStrings();
  EXPECT_EQ(button.Picture(), 2) << "another language changes no state";
  Main().AddMessage("careful", "r", "l", 48);
  ClearLog();
  for (int ticks = 0; ticks < 20; ++ticks) loop.Tick();
  EXPECT_EQ(button.Picture(), 1) << "a warning that was cleared blinks no more";
}

TEST_F(ToolTest, ThePageTableAndTheWindowsAgree) {
  Open(tests::kAssigned);
  EXPECT_FALSE(Main().Flags().pageSelected);
  EXPECT_EQ(Text("lblTitle"), "Object Inputs Configuration");
  Find<ui::ListView>("lvwConfig").Choose(1);
  EXPECT_TRUE(Main().Flags().pageSelected);
  EXPECT_EQ(Text("lblTitle"), "Object Outputs Configuration");
  std::vector<const ui::Form*> forms = {&Main(), &Main().Logger(), &Main().ProgressObject};
  for (const auto& entry : Main().Pages().Table()) {
    shell::ISubForm* page = Main().Pages().FindPage(entry.pageClass);
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->HelpIndex(), entry.helpTopic);
    EXPECT_THROW(page->Group("txtNoSuch"), base::Error);
    forms.push_back(page);
  }
  for (const ui::Form* form : forms) {
    auto placed = ui::PlacedControls(form->GetLayout());
    auto all = form->Controls();
    std::ranges::sort(placed);
    std::ranges::sort(all);
    EXPECT_EQ(placed, all) << form->Name() << ": every control stands in the layout exactly once";
  }
}

}  // namespace
