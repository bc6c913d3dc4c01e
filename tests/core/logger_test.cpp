#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "base/files.h"
#include "base/text.h"
#include "logger/message_logger.h"
#include "stand_ins.h"

namespace {

struct LoggerTest : testing::Test, tests::StandIns {
  LoggerTest() {
    logger.AddMessageEvent = [this](int level) { events.push_back(level); };
  }

  template <class T = ui::Control>
  T& Find(const char* name) {
    return *dynamic_cast<T*>(logger.Find(name));
  }
  const std::vector<ui::ListView::Row>& Rows() { return Find<ui::ListView>("ListView1").Rows(); }

  logger::fMessage Make(std::function<std::string(std::string_view)> translate) {
    return logger::fMessage{
        {registry, locale, loop, fileDialog, nullptr, "Software\\Key", "C:\\Tool", std::move(translate)}};
  }

  logger::fMessage logger = Make([](std::string_view text) { return std::string(text); });
  std::vector<int> events;
};

TEST_F(LoggerTest, MakesARowOfEveryLineThatSaysSomething) {
  for (const char* text : {"", "  \t ", "\r\n"}) logger.AddMessage(text, "r", "l", 64);
  EXPECT_TRUE(Rows().empty() && events.empty() && !logger.Visible());
  logger.AddMessage(" first\tpart \r\nsecond\n\nthird ", "WriteValue", "Alarm", 16);
  ASSERT_EQ(Rows().size(), 3u);
  EXPECT_EQ(Rows()[0].cells,
            (std::vector<std::string>{"1", "21/11/2026 10:15:00", "first part ", "WriteValue", "Alarm"}));
  EXPECT_EQ(Rows()[2].cells[1], Rows()[0].cells[1]);
  EXPECT_EQ(Rows()[2].cells[2], "third");
  EXPECT_EQ(Rows()[2].key, "3Key");
  EXPECT_EQ(events, std::vector<int>{16});
}

TEST_F(LoggerTest, ShowsItselfUnlessTheUserDoesNotWantIt) {
  logger.AddMessage("a", "r", "l", 64);
  EXPECT_TRUE(logger.Visible());
  logger.Hide();
  EXPECT_FALSE(Find<ui::CheckBox>("Check1").Click()) << "not shown yet";
  Find<ui::Button>("BtnCmd(0)").Click();
  Find<ui::CheckBox>("Check1").Click();
  EXPECT_EQ(registry.values["Software\\Key|IsShowLogAutomatically"], "0");
  logger.AddMessage("b", "r", "l", 64);
  EXPECT_FALSE(logger.Visible());
  logger::fMessage next =
      Make([](std::string_view text) { return "<" + std::string(base::Trim(text)) + ">"; });
  next.SetFormTitle("Tool");
  EXPECT_EQ(next.Title(), "Tool -  <Message Logger>") << "with the blank in any language";
  EXPECT_TRUE(dynamic_cast<ui::CheckBox*>(next.Find("Check1"))->Checked()) << "the choice is kept";
}

TEST_F(LoggerTest, SavesSixFieldsARowAndKeepsTheRowsAlsoWhenItFails) {
  logger.AddMessage("one\nt\two", "r\t1", "l", 64);
  logger.AddMessage("warn", "r", "two\r\nlines", 48);
  for (const int level : {16, 0, 99}) logger.AddMessage("error", "r", "l", level);
  for (std::size_t row = 3; row < 6; ++row) EXPECT_EQ(Rows()[row].icon, 16) << "the icon shown";
  const auto file = std::filesystem::temp_directory_path() / "tarn_logger_test.log";
  std::ofstream(file) << "what stood there before";
  fileDialog.answer = file.string();
  const auto save = [this] { Find<ui::Button>("BtnCmd(1)").Click(); };
  save();
  EXPECT_EQ(fileDialog.request.proposedName, "C:\\Tool\\PlugIn.log");
  EXPECT_EQ(fileDialog.request.flags, 4100u);
  const std::string content = base::ReadFile(file, 1'000);
  std::filesystem::remove(file);
  std::vector<std::string> icons;
  for (const std::string& line : base::Split(content, "\r\n")) {
    if (line.empty()) continue;
    EXPECT_EQ(base::Split(line, "\t").size(), 6u) << line;
    icons.push_back(base::Split(line, "\t")[0]);
  }
  EXPECT_EQ(icons, (std::vector<std::string>{"Information", "Information", "Exclamation", "Error", "Error",
                                             "Error"}));
  for (const auto& answer :
       {std::optional<std::string>(), std::optional<std::string>("/no/such/folder/x.log")}) {
    fileDialog.answer = answer;
    save();
    EXPECT_EQ(Rows().size(), 6u);
  }
}

TEST_F(LoggerTest, ClearsSelectedRowsOrAll) {
  int cleared = 0;
  logger.ClearEvent = [&cleared] { ++cleared; };
  logger.AddMessage("a\nb\nc", "r", "l", 64);
  auto& list = Find<ui::ListView>("ListView1");
  list.SetSelection({0, 2});
  list.popup[0].onClick();
  ASSERT_EQ(Rows().size(), 1u);
  EXPECT_EQ(Rows()[0].cells[2], "b");
  EXPECT_EQ(cleared, 0);
  list.popup[1].onClick();
  EXPECT_TRUE(Rows().empty());
  EXPECT_EQ(cleared, 1);
  logger.AddMessage("d", "r", "l", 64);
  EXPECT_EQ(Rows()[0].cells[0], "4") << "numbers run on after clearing";
}

TEST_F(LoggerTest, CutsTheOldestRowsAndSaysSo) {
  logger.AddMessage("selected, soon cut", "r", "l", 64);
  std::string lines;
  for (int i = 2; i <= 50'000; ++i) lines += std::to_string(i) + "\n";
  logger.AddMessage(lines, "r", "l", 16);
  auto& list = Find<ui::ListView>("ListView1");
  list.SetSelection({0, 40'000});
  ASSERT_EQ(Rows().size(), 50'000u);
  logger.AddMessage("one more", "r", "l", 64);
  ASSERT_LT(Rows().size(), 50'000u);
  EXPECT_THAT(Rows().front().cells[2], testing::HasSubstr("Older messages were removed"));
  EXPECT_EQ(Rows().front().icon, 48);
  for (std::size_t row = 1; row + 1 < Rows().size(); ++row) {
    ASSERT_EQ(Rows()[row].cells[2], Rows()[row].cells[0]);
    ASSERT_EQ(std::stoi(Rows()[row].cells[0]), std::stoi(Rows()[row - 1].cells[0]) + 1);
  }
  EXPECT_EQ(Rows().back().cells[2], "one more");
  ASSERT_EQ(list.Selection().size(), 1u);
  EXPECT_EQ(Rows()[list.Selection()[0]].cells[2], "40001") << "what a person reads stays selected";
}

TEST_F(LoggerTest, ShowsNewRowsAtTheirFullWidth) {
  auto& list = Find<ui::ListView>("ListView1");
  const auto shown = [&list] { return std::pair(list.Fits(), list.Scrolls()); };
  loop.Tick();
  EXPECT_EQ(shown(), std::pair(0, 0));
  logger.AddMessage("a\nb", "r", "l", 64);
  for (int i = 0; i < 2; ++i) loop.Tick();
  EXPECT_EQ(shown(), std::pair(1, 1)) << "once for all rows";
  list.SetSelection({0});
  logger.AddMessage("c", "r", "l", 64);
  loop.Tick();
  EXPECT_EQ(shown(), std::pair(2, 1)) << "what a person reads stays in view";
}

}  // namespace
