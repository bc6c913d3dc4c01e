#include <gtest/gtest.h>

#include <map>

#include "automation/error.h"
#include "automation/object.h"
#include "base/error.h"
#include "shell/strings.h"

namespace {

// A language component with a few texts, which is its own section; counts how often it is asked.
struct Component : automation::Target, std::enable_shared_from_this<Component> {
  automation::Value Invoke(automation::Access, std::string_view member,
                           std::span<const automation::Value> arguments) override {
    if (member == "LastChange") return lastChange;
    if (member == "Count") return static_cast<std::int32_t>(texts.size());
    if (member == "Language") return {};
    if (member == "Section") {
      EXPECT_EQ(arguments[0].AsText(), "RoofTopConfiguration");
      ++loads;
      return automation::Object(shared_from_this());
    }
    asked += member == "Item";
    if (failure) throw automation::Error(failure, "not now");
    if (member == "Font") return "Tahoma";
    const auto found = texts.find(arguments[0].AsText());
    if (found == texts.end()) throw automation::Error(automation::kBadIndex, "no such text");
    return found->second;
  }

  std::map<std::string, std::string> texts = {
      {"ALARM", "Alarme"},
      {"%S% CONFIGURATION", "Configuration %s%"},
      {"SELECT %S1% BEFORE %S2%", "%s2% erst nach %s1% w\xC3\xA4hlen, %s1"},
      {"HEAT", "Heizen"}};
  int asked = 0;
  double lastChange = 1;
  int loads = 0;
  std::uint32_t failure = 0;  // of every look-up, the font's too
};

struct StringsTest : testing::Test {
  std::shared_ptr<Component> component = std::make_shared<Component>();
  shell::Strings strings{[this] { return automation::Object(component); }};
};

TEST_F(StringsTest, FindsTextsWithoutRegardToCaseAndBlanksAndAsksOnce) {
  EXPECT_EQ(strings.GetStrings("Alarm"), "Alarm") << "nothing is loaded yet";
  strings.ReloadStrings();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(strings.GetStrings("Alarm"), "Alarme");
    EXPECT_EQ(strings.GetStrings(" alarm "), "Alarme");
    EXPECT_EQ(strings.GetStrings(" Not there "), " Not there ");
  }
  EXPECT_EQ(component->asked, 2) << "each text once";
}

TEST_F(StringsTest, RemembersAsMissingOnlyWhatTheTableLacks) {
  component->texts["NOTHING"] = "";
  strings.ReloadStrings();
  EXPECT_EQ(strings.GetStrings("Nothing"), "") << "an empty translation is one";
  const std::pair<std::uint32_t, bool> cases[] = {{0x8002000B, true},    // bad index
                                                  {0x800A0005, true},    // unknown key of a Collection
                                                  {0x8001010A, false},   // busy: retry later
                                                  {0x800706BA, false}};  // the server is unavailable
  for (const auto& [failure, missing] : cases) {
    strings.SetLanguage("");
    component->failure = failure;
    EXPECT_EQ(strings.GetStrings(" alarm"), " alarm");
    component->failure = 0;
    EXPECT_EQ(strings.GetStrings("Alarm"), missing ? "Alarm" : "Alarme") << std::hex << failure;
  }
}

TEST_F(StringsTest, LoadsAgainOnlyAfterAFailureOrAChangeOfLanguage) {
  component->failure = 0x8001010A;
  strings.ReloadStrings();
  component->failure = 0;
  const std::tuple<double, const char*, int> steps[] = {
      {1, "Alarme", 2}, {1, "Alarme", 2}, {1e6, "Alarma", 3}};
  for (const auto& [changed, text, loads] : steps) {
    component->lastChange = changed;
    component->texts["ALARM"] = text;
    strings.ReloadStrings();
    EXPECT_EQ(strings.GetStrings("Alarm") + strings.Font(), text + std::string("Tahoma"));
    EXPECT_EQ(component->loads, loads);
  }
}

TEST_F(StringsTest, ReplacesPlaceholdersInAnyOrder) {
  strings.ReloadStrings();
  const std::tuple<const char*, std::vector<std::string>, const char*> cases[] = {
      {"%s% Configuration", {"Alarm"}, "Configuration Alarme"},
      {"Select %s1% before %s2%", {"HEAT", "COOL"}, "COOL erst nach Heizen w\xC3\xA4hlen, Heizen"},
      {"%s and %s", {"a", "b"}, "a and b"},
      {"%s2 %s1%%", {"a", "b"}, "b a%"},
      {"no place", {"a"}, "no place"},
      {"%s% stays", {}, "%s% stays"},
      {"100 %", {"a"}, "100 %"},
  };
  for (const auto& [text, arguments, result] : cases)
    EXPECT_EQ(strings.FormatStrings(text, arguments), result) << text;
  for (const char* unknown : {"%s3%", "%s0%", "%s99999999999%", "%s99999999999999999999%", "%s %s %s"})
    EXPECT_THROW(strings.FormatStrings(unknown, {"a", "b"}), base::Error) << unknown;
}

TEST(StringsWithoutComponent, SpeakEnglish) {
  shell::Strings strings(
      []() -> automation::Object { throw automation::Error(0x80040154, "The class is not registered."); });
  strings.ReloadStrings();
  strings.ReloadStrings();
  EXPECT_EQ(strings.FormatStrings("%s% Configuration", {"PID"}), "PID Configuration");
}

}  // namespace
