#include <fstream>

#include "newer_building.h"
#include "tool_test.h"

namespace {

struct LanguageTest : tests::ToolTest {
  /// Opens the language page from the menu; `act` is what the person does in it.
  void InThePage(const std::function<void()>& act) {
    loop.whileOpen = act;
    Main().menu.at(1).items.back().onClick();
  }
  void ClickInPage(const char* button) { ClickIn(Main().LanguagePage().Window(), button); }
  void Choose(const char* language) {
    In<ui::ListBox>(Main().LanguagePage(), "cboLanguage").Choose(language);
    ClickInPage("cmdOK");
  }
  std::string InUse() { return building.Language().Text("Language"); }
};

TEST_F(LanguageTest, TextsWithValuesFollowAndKeepThem) {
  Open(tests::kAssigned);
  AssignInput(4, "OUTDOOR_TEMP");
  Find<ui::ListBox>("fControlOutput.cboONOFF(2)").Choose("OFF");
  EXPECT_EQ(Text("fHardwareInput.lblSensor(3)"), "LINEAR (usually STD_THERMISTOR)");
  InThePage([this] { Choose("German"); });
  EXPECT_EQ(Text("fHardwareInput.lblSensor(3)"), "LINEAR (üblich: STD_THERMISTOR)");
  EXPECT_EQ(Find<ui::ListBox>("fControlOutput.cboONOFF(2)").SelectedText(), "AUS");
  const ui::MenuItem& apply = Main().menu.at(0).items.at(0);
  EXPECT_EQ(apply.caption + ", " + apply.key, "Ü&bernehmen\tStrg+S, Ctrl+S");
  Click("cmdApply");
  EXPECT_EQ(LastMessage(), "Apply/Main: Die Einstellungen wurden übernommen");
  EXPECT_EQ(building.StoredText(tests::kAssigned, "HardwareOutput3", 4, "SNVT_switch"), "0.0 0");
}

TEST_F(LanguageTest, NothingChangesWithoutTheUsersConsentAndAComponentThatRefusesIsTold) {
  Open(tests::kAssigned);
  prompts.answers = {ui::Answer::kCancel};
  InThePage([this] {
    Choose("French");
    EXPECT_TRUE(Main().LanguagePage().Window().Visible());
    ClickInPage("cmdCancel");
  });
  EXPECT_EQ(InUse(), "English");
  ASSERT_EQ(prompts.asked.size(), 1u);
  EXPECT_THAT(prompts.asked[0].text, testing::HasSubstr("-->English\nYou've selected Language-->French\n"));
  EXPECT_EQ(prompts.asked[0].title, "Setting Language");
  EXPECT_EQ(prompts.asked[0].buttons, ui::Buttons::kOkCancel);
  EXPECT_EQ(prompts.asked[0].icon, ui::Icon::kExclamation);
  InThePage([this] { ClickInPage("cmdOK"); });  // the language in use needs no question
  EXPECT_EQ(prompts.asked.size(), 1u);
  EXPECT_EQ(Text("cmdApply"), "Apply");

  building.Faults().Fail({.member = "Language.Language", .call = 2});
  InThePage([this] {
    Choose("French");
    ClickInPage("cmdCancel");
  });
  ASSERT_EQ(prompts.asked.size(), 3u);
  EXPECT_EQ(prompts.Last().icon, ui::Icon::kError);
  EXPECT_THAT(LastMessage(), testing::HasSubstr("Setting Language/Language: "));
  EXPECT_EQ(InUse(), "English");
}

TEST(Languages, AreTheTextFilesOfTheirFolderAlone) {
  const tests::NewerBuilding data({});
  const auto folder = data.Options().dataFolder / "languages";
  std::filesystem::create_directory(folder);
  for (const char* name : {"Danish.json", "desktop.ini"}) std::ofstream(folder / name) << "{}";
  simulator::Building building(data.Options());
  EXPECT_EQ(building.Language().Child("Languages").Whole("Count"), 2) << "English has no file";
}

}  // namespace
