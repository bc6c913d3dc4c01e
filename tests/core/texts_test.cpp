// Every text that the tool shows has an entry in every language, and every entry belongs to a text. The texts
// are found in two ways: in the sources, and in the windows of the running tool.
#include <nlohmann/json.hpp>
#include <regex>

#include "advice/fAdvice.h"
#include "base/files.h"
#include "checkout/fCheckOut.h"
#include "fleet/fleet.h"
#include "tool_test.h"

namespace {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) { return base::ReadFile(path, configuration::kLargestFile); }

/// Of each file of texts.
std::vector<std::string> Languages() {
  std::vector<std::string> names;
  for (const auto& file : fs::directory_iterator(fs::path(SIM_DATA_DIR) / "languages"))
    names.push_back(file.path().stem().string());
  return names;
}

/// As the tool looks a text up.
std::string Key(std::string_view text) { return base::Upper(base::Trim(text)); }

/// The entries of a language by key: a text in English and as it is shown.
using Entries = std::map<std::string, std::pair<std::string, std::string>>;

/// Two entries of one key are a fault of the file, also where a reader of JSON would take the second
/// silently.
Entries Table(const std::string& language) {
  Entries table;
  const std::string content = ReadFile(fs::path(SIM_DATA_DIR) / "languages" / (language + ".json"));
  const auto file = nlohmann::json::parse(content);
  EXPECT_EQ(file.at("language"), language);
  const auto& texts = file.at("sections").at("RoofTopConfiguration");
  for (const auto& [english, text] : texts.items())
    EXPECT_TRUE(table.emplace(Key(english), std::pair(english, text.get<std::string>())).second) << english;
  static const std::regex line(R"re(\n {6}"(?:[^"\\]|\\.)*": ")re");
  const std::sregex_iterator first(content.begin(), content.end(), line);
  EXPECT_EQ(static_cast<std::size_t>(std::distance(first, {})), table.size()) << "an entry stands twice";
  return table;
}

/// What a translation keeps of its text, in any order: placeholders, file patterns, names of the device.
std::multiset<std::string> Fixed(const std::string& text) {
  static const std::regex form(R"(%s\d*%?|\|(\*\.\w+)?|\b[A-Z]+_[A-Z]+\b|\bnv[io]\w+|\d+)");
  std::multiset<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), form), end; match != end; ++match)
    found.insert(match->str());
  return found;
}

struct LanguageTables : testing::TestWithParam<std::string> {};

TEST_P(LanguageTables, KeepWhatBelongsToTheText) {
  for (const auto& [key, entry] : Table(GetParam())) {
    const auto& [english, text] = entry;
    EXPECT_FALSE(base::Trim(text).empty()) << english;
    EXPECT_EQ(Fixed(text), Fixed(english)) << english;
    EXPECT_EQ(std::ranges::count(text, '&'), std::ranges::count(english, '&')) << english;
    for (const char* end : {"...", "-->", ". . ."})
      EXPECT_EQ(text.ends_with(end), english.ends_with(end)) << english;
  }
}

TEST_P(LanguageTables, GiveEveryKeyOfAWindowOnce) {
  tests::Tool tool;
  tool.Open(tests::kAssigned);
  tool.UseLanguage(GetParam());
  // The menu bar with the buttons of its window, the entries of each menu, the buttons of each other window.
  std::vector<std::vector<std::string>> groups(1);
  for (const ui::MenuItem& menu : tool.Main().menu) {
    groups[0].push_back(menu.caption);
    groups.emplace_back();
    for (const ui::MenuItem& item : menu.items) groups.back().push_back(item.caption);
  }
  auto& desk = tool.Companion<configuration::Desk>();
  for (const ui::Form* form : std::initializer_list<const ui::Form*>{
           &tool.Main(), &tool.Main().Logger(), &desk.Differences(), &tool.Main().ChangesWindow(),
           &tool.Companion<fleet::Fleet>().CopyWindow(), &tool.Companion<checkout::fCheckOut>(),
           &tool.Companion<advice::fAdvice>()}) {
    auto& group = form == &tool.Main() ? groups[0] : groups.emplace_back();
    for (const ui::Control* control : form->Controls())
      if (control->GetKind() != ui::Kind::kTextBox) group.push_back(control->Text());
  }
  for (const auto& texts : groups) {
    std::set<std::string> letters;
    for (const std::string& text : texts) {
      const auto place = text.find('&') + 1;
      if (place == 0) continue;
      const std::size_t length = text[place] & 0x80 ? 2 : 1;  // of a letter outside ASCII: two bytes
      EXPECT_TRUE(letters.insert(base::Upper(text.substr(place, length))).second) << text;
    }
  }
}

#ifdef SOURCE_DIR

/// The text of a C++ literal, or of several that stand beside one another.
std::string Unquote(const std::string& literals) {
  static const std::regex part(R"re("((?:[^"\\\n]|\\.)*)")re");
  std::string text;
  for (std::sregex_iterator match(literals.begin(), literals.end(), part), end; match != end; ++match)
    text += (*match)[1].str();
  return base::ReplaceAll(base::ReplaceAll(text, "\\\"", "\""), "\\\\", "\\");
}

/// Whether the literal `text` is looked up, judged by the text and by what stands before it in its statement:
/// what is looked up at once, captions paired with their controls, words that a choice gives, and every
/// sentence but errors without a translation and names of pages in messages.
bool IsShown(const std::string& before, const std::string& text) {
  static const std::regex lookedUp(
      R"((GetStrings|FormatStrings|[tT]ranslate|[tT]ext_?|Raise|Try|StepError)\($|\{&[\w\[\]()]+, $)");
  static const std::regex chosen(R"((return|[?:]) $)");
  static const std::regex word(R"([A-Z][a-z]+)");
  static const std::regex sentence(R"([a-zA-Z'.]+ [a-zA-Z&(]|%s)");
  static const std::regex spoken(R"(Error\(|Refuse\(|Page(Base)?\(|trace_?\()");
  // In every language, or never shown; the levels in a file.
  static const std::regex asItStands(
      "(%s)?|Invalid value for this field|The change over minimum demand msut be between 0 and 100%|"
      "QVR KV-TARN Configuration|Refuse to start|Information|Exclamation|Error");
  if (std::regex_match(text, asItStands)) return false;
  if (std::regex_search(before, lookedUp)) return true;
  if (std::regex_match(text, word) && std::regex_search(before, chosen)) return true;
  return std::regex_search(text, sentence) && !std::regex_search(before, spoken);
}

/// The shown texts of one source file, as they stand.
std::set<std::string> ShownTexts(const fs::path& file) {
  static const std::regex unread(R"(//[^\n]*|#include[^\n]*)");
  static const std::regex literals(R"re("(?:[^"\\\n]|\\.)*"(?:\s*"(?:[^"\\\n]|\\.)*")*)re");
  std::set<std::string> texts;
  const std::string source = std::regex_replace(ReadFile(file), unread, "");
  for (std::sregex_iterator match(source.begin(), source.end(), literals), end; match != end; ++match) {
    const auto place = static_cast<std::size_t>(match->position());
    const std::size_t statement = source.find_last_of(";{}", place > 0 ? place - 1 : 0) + 1;
    std::string before = source.substr(statement > 0 ? statement - 1 : 0, place - statement + 1);
    before = std::regex_replace(before, std::regex(R"(\s+)"), " ");
    before = std::regex_replace(before, std::regex(R"(\( $)"), "(");
    const std::string text = Unquote(match->str());
    if (IsShown(before, text)) texts.insert(text);
  }
  return texts;
}

// What the tool says to hosts when it is registered is not among them: it is stored once for all users.
std::set<std::string> ShownTexts() {
  std::set<std::string> texts;
  for (const char* file : {"plugin/plugin_api.cpp", "plugin/window_agent.cpp", "host/session.cpp"})
    texts.merge(ShownTexts(fs::path(SOURCE_DIR) / file));
  for (const char* room :
       {"pages", "shell", "logger", "fields", "configuration", "serverlink", "advice", "checkout", "fleet"}) {
    for (const auto& file : fs::recursive_directory_iterator(fs::path(SOURCE_DIR) / room)) {
      const std::string name = file.path().stem().string();
      const bool markup = name.starts_with("record") || name == "result";  // has tests of its own
      if (file.path().extension() == ".cpp" && !markup) texts.merge(ShownTexts(file.path()));
    }
  }
  return texts;
}

TEST_P(LanguageTables, HoldEveryTextOfTheSources) {
  Entries table = Table(GetParam());
  const std::set<std::string> shown = ShownTexts();
  ASSERT_GT(shown.size(), 200u);
  for (const std::string& text : shown) {
    EXPECT_TRUE(table.contains(Key(text))) << "lacks: " << text;
    EXPECT_TRUE(!text.ends_with(' ') || table[Key(text)].second.ends_with(' ')) << "lacks a blank: " << text;
  }
}

TEST_P(LanguageTables, HoldNothingThatTheSourcesLost) {
  std::string sources;
  for (const auto& file : fs::recursive_directory_iterator(SOURCE_DIR)) {
    if (file.is_regular_file()) sources += Unquote(ReadFile(file.path()));
  }
  for (const auto& [key, entry] : Table(GetParam()))
    EXPECT_NE(sources.find(entry.first), std::string::npos) << "no source says: " << entry.first;
}

#endif

/// What stands in a table of captions is found in the windows.
TEST_P(LanguageTables, HoldEveryCaptionOfTheWindows) {
  // Units and numbers, names of the device and what it holds.
  const std::regex unlike(
      R"(nv[io].*|[°%"] ?[\w/ %°"]*|Pa|KJ/kg|BTU/lb|[^a-zA-Z]*|[A-Z0-9]+(_\w+)*|Veldran.*|(In|Out)put \d|1 fault, \d hints)");
  const auto table = Table(GetParam());
  tests::Tool tool;
  tool.Open(tests::kAssigned);
  std::vector<const ui::Form*> forms = {&tool.Main(), &tool.Main().Logger(), &tool.Main().LanguagePage(),
                                        &tool.Main().LanguagePage().Window()};
  std::set<std::string> shown;
  const auto collect = [&](const std::string& text) {
    if (!std::regex_match(std::string(base::Trim(text)), unlike)) shown.insert(text);
  };
  for (const auto& row : tool.Find<ui::ListView>("lvwConfig").Rows()) {
    collect(row.cells[0]);
    forms.push_back(tool.Main().Pages().FindPage(row.key));
  }
  for (const ui::Form* form : forms) {
    for (const ui::Control* control : form->Controls()) {
      const auto* list = dynamic_cast<const ui::ListView*>(control);
      if (list) std::ranges::for_each(list->Columns(), collect);
      if (control->GetKind() != ui::Kind::kTextBox && control->Name() != "lblTitle") collect(control->Text());
    }
  }
  ASSERT_GT(shown.size(), 100u);
  for (const std::string& text : shown) EXPECT_TRUE(table.contains(Key(text))) << "lacks: " << text;
}

INSTANTIATE_TEST_SUITE_P(, LanguageTables, testing::ValuesIn(Languages()),
                         [](const auto& info) { return info.param; });

}  // namespace
