// The generator of the help: what it reads from layouts, from topics, and from the running pages.
#include "fault_of.h"
#include "help/generator/manual.h"
#include "help/generator/ranges.h"
#include "tool_test.h"

namespace {

using testing::HasSubstr;
using tests::FaultOf;
using tests::ToolTest;

TEST(Help, ABrokenTopicIsRefusedWithItsLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"number: 4\n\ntext", "10-a.html, line 2: it has no title"},
      {"title: A\ncolour: red\n\n", "line 2: \"colour: red\" is no property"},
      {"title: A\npage: fA\n\n{fields}\n[x]\ntext", "{fields} without {end}"},
      {"title: A\n\n{end}", "line 3: {end} is out of place"},
      {"title: A\npage: fA\n\n{fields}\ntext\n{end}", "line 5: an explanation stands before"},
      {"title: A\npage: fA\n\ntext", "a page needs notes"},
  };
  for (const auto& [content, fault] : cases)
    EXPECT_THAT(FaultOf([&, text = content] { help::ParseTopic("10-a.html", text); }), HasSubstr(fault));
}

help::Topic Topic(const std::string& file, int number, const std::string& rest = "\ntext") {
  return help::ParseTopic("10-" + file, "title: T & U\nnumber: " + std::to_string(number) + "\n" + rest);
}

/// A topic with notes on the fields of its page.
help::Topic Noted(const std::string& notes) {
  return Topic("a.html", 7, "page: fA\n\n{fields}\n" + notes + "{end}\n");
}

std::string FaultIn(const std::vector<help::Topic>& topics, const std::map<int, std::string>& asked,
                    const std::vector<help::Field>& fields = {}) {
  return FaultOf([&] { help::MakeManual(help::Languages()[0], topics, fields, asked); });
}

const std::vector<help::Field> kFields = {
    {"fA", "txtX(0)", true, {"Frame", "X", "1", "%"}, "0 to 9 %", "0 to 9 %"},
    {"fA", "txtX(1)", true, {"Frame", "X", "<2>", "%"}, "0 to 9 %", "0 to 9 %"},
    {"fA", "txtY", true, {"", "Y", "", "Pa"}, "0 to 9 Pa", "0 to 1 \" WC"},
    {"fA", "txtSpare", false, {}, "", ""},
};

TEST(Help, AFieldThatChangedOnThePageIsNoticed) {
  const std::pair<const char*, const char*> cases[] = {
      {"[txtX(0)]\na\n[txtY]\nb\n", "nothing explains txtX(1)"},
      {"[txtX]\na\n", "nothing explains txtY"},
      {"[txtX txtY txtOld]\na\n", "there is no txtOld"},
  };
  for (const auto& [notes, fault] : cases)
    EXPECT_THAT(FaultIn({Noted(notes)}, {{7, "fA"}}, kFields), HasSubstr(fault));
  // Fields that accept the same share a row.
  const std::string table =
      help::FieldTable(Noted("[txtX]\nfirst\n[txtY]\nsecond\n"), kFields, help::Languages()[0]);
  EXPECT_THAT(table, HasSubstr("<small>Frame</small><br>X, 1<br>X, &lt;2&gt;</td><td>0 to 9 %</td>"));
  EXPECT_THAT(table, HasSubstr("0 to 9 Pa<br>0 to 1 &quot; WC"));
}

TEST(Help, TopicsAreFoundByNumberAndByLink) {
  EXPECT_EQ(FaultIn({Topic("a.html", 7), Topic("b.html", 8)}, {{7, ""}, {8, ""}}), "");
  EXPECT_THAT(FaultIn({Topic("a.html", 7)}, {{7, ""}, {8, ""}}), HasSubstr("no topic with the number 8"));
  EXPECT_THAT(FaultIn({Topic("a.html", 7)}, {{7, "fA"}}), HasSubstr("does not explain the page fA"));
  EXPECT_THAT(FaultIn({Topic("a.html", 7), Topic("b.html", 7)}, {{7, ""}}),
              HasSubstr("b.html: another topic"));
  EXPECT_THAT(FaultIn({Topic("a.html", 7, "\n<a href=\"gone.html\">")}, {{7, ""}}),
              HasSubstr("refers to gone.html"));

  const auto manual = help::MakeManual(help::Languages()[0],
                                       {Topic("a.html", 7, "\n{picture p}\n{picture q}")}, {}, {{7, ""}});
  EXPECT_EQ(manual.pictures, (std::set<std::string>{"p.png", "q.png"}));
  const auto project = testing::AllOf(HasSubstr("TOPIC_7=a.html"), HasSubstr("#define TOPIC_7 7"));
  EXPECT_THAT(manual.files, testing::Contains(testing::Pair("help.hhp", project)));
}

// A translation has title and text of its own, number and page of the English topic; what is not translated
// stays English.
TEST(Help, ATranslationTakesThePlaceOfItsTopic) {
  const std::vector<help::Topic> english = {Noted("[txtX txtY]\na\n"), Topic("b.html", 8)};
  const auto german =
      help::ParseTopic("10-a.html", "title: Ü\nenglish: 12\n\n{fields}\n[txtX txtY]\nb\n{end}\n");
  const auto topics = help::Translated(english, {german});
  EXPECT_EQ(topics[0].title, "Ü");
  EXPECT_EQ(topics[1].title, "T & U");
  const help::Language& words = help::Languages()[2];
  const auto manual = help::MakeManual(words, topics, kFields, {{7, "fA"}, {8, ""}});
  EXPECT_THAT(manual.files[1].second,
              testing::AllOf(HasSubstr("<html lang=\"de\">"), HasSubstr(words.meaning)));
  const auto fault = [&](const std::string& file, const std::string& text) {
    return FaultOf([&] { help::Translated(english, {help::ParseTopic(file, text)}); });
  };
  EXPECT_THAT(fault("10-c.html", "title: C\nenglish: 1\n\n"), HasSubstr("c.html: there is no such topic"));
  EXPECT_THAT(fault("10-a.html", "title: C\nenglish: 1\n\n"), HasSubstr("do not explain the same fields"));
}

TEST(Help, NamesThatCountOnStandInOneLine) {
  std::vector<help::Field> fields;
  for (const char* row : {"Output 1", "Output 2", "Output 3", "Output 5", "Output 6", "Fan"})
    fields.push_back({"fA", "txtX", true, {"", row, "Usage", ""}, "1.5", "1.5"});
  const std::string table = help::FieldTable(Noted("[txtX]\nfirst\n"), fields, help::Languages()[2]);
  EXPECT_THAT(
      table, HasSubstr("<td>Output 1 bis 3, Usage<br>Output 5, Usage<br>Output 6, Usage<br>Fan, Usage</td>"));
  EXPECT_EQ(help::RangeText(help::Languages()[2], "0.5", "9.5"), "0,5 bis 9,5");
}

TEST_F(ToolTest, RangesAreThoseThatThePagesShow) {
  Open(tests::kAssigned);
  const auto stored = [this] {
    return Stored(tests::kAssigned, 30, "UCPTspaceTempPIDparam", -1) + "|" +
           Stored(tests::kAssigned, 3, "SCPTsetPnts#US", 4) + "|" +
           Stored(tests::kAssigned, 52, "UCPTextraConfig", -1);
  };
  const std::string before = stored();
  help::RangeFinder finder(*this);
  const help::Ranges metric = finder.Find();
  Find<ui::OptionButton>("optUnit(1)").Click();
  const help::Ranges imperial = finder.Find();
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(metric.at("fPID.txtPIDTemp(1)"), (help::Range{"0.0000", "25.0000"}));
  EXPECT_EQ(imperial.at("fPID.txtPIDTemp(1)"), (help::Range{"0.0000", "45.0000"}));
  EXPECT_EQ(metric.at("fOptions.txtChangeOver"), (help::Range{"0", "100"}));  // stored doubled
  EXPECT_EQ(metric.at("fFanValve.txtFanPeriod"), imperial.at("fFanValve.txtFanPeriod"));
}

}  // namespace
