// The configuration as a file: what is written and read, what is refused of a file and in which words, how
// versions get along, and how files and backups are kept.
#include <regex>

#include "base/files.h"
#include "configuration/backups.h"
#include "fault_of.h"
#include "tool_test.h"
#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>
#endif

namespace {

namespace fs = std::filesystem;

using configuration::Document;
using configuration::Entry;
using configuration::SafeName;
using tests::FaultOf;

/// All that a person can say and a file must not lose.
Document Filled(const std::string& text) {
  Document document{{text, text, text, text, text, text, text, true, text, text}, {}};
  document.entries = {{"fA", text, text, text, text}, {"fB", text, "", "", ""}};
  document.sections = {{configuration::kAccepted, {{{"rule", text}, {"who", text}}, {{"rule", "B"}}}},
                       {configuration::kCheckOut, {{{"remark", text}}}}};
  return document;
}

TEST(Document, ReadsWhatItWrote) {
  std::string control;
  for (char letter = 0; letter < ' '; ++letter) control += letter;
  for (const std::string& text : {std::string(), control, std::string("\"fields\": [{\\\"\\u0041/\x7f"),
                                  std::string("Köhler °C \xE2\x80\xA8 日本 😀"), std::string(200'000, 'x')})
    EXPECT_TRUE(configuration::Read(Write(Filled(text)), text) == Filled(text)) << text.substr(0, 80);
  // A host's text that is no UTF-8 cannot stand in a file: each such part becomes one replacement sign.
  for (const auto& [text, read] : {std::pair("Roof \xC3 3", "Roof \xEF\xBF\xBD 3"), {"\xFF", "\xEF\xBF\xBD"}})
    EXPECT_TRUE(configuration::Read(Write(Filled(text)), "") == Filled(read)) << read;
  EXPECT_TRUE(configuration::Read(Write(Document{}), "").entries.empty());
}

const std::string kSound =
    "{\n\"format\": 1,\n\"programId\": \"8000AB0C12340001\",\n\"note\": \"\",\n\"units\": \"metric\",\n"
    "\"fields\": [\n"
    "{\"page\": \"fPID\", \"control\": \"chkPID\", \"content\": \"1\"},\n"
    "{\"page\": \"fPID\", \"control\": \"optTemp\", \"content\": \"2\"}\n"
    "]\n}\n";

std::string RefusalOf(const std::string& text) {
  return FaultOf([&] { configuration::Read(text, "8000ab0c12340001"); });
}

std::string Damaged(std::ptrdiff_t line) {
  return "The file is no complete configuration: it is cut off or damaged in line " + std::to_string(line) +
         ".";
}

TEST(Document, RefusesInWordsAndWithTheLine) {
  const std::string nothing = "The file is no configuration of this tool.";
  const std::string deep(200'000, '[');
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"~", "", ""},
      {kSound, std::string(configuration::kLargestFile, '['), Damaged(1)},
      {kSound, "[]", nothing},
      {"\"format\"", "\"Format\"", nothing},
      {": 1,", ": 0,", nothing},
      {": 1,", ": 99999999999999999999999,", nothing},
      {": 1,", ": 1, \"units\": 0,", "The field units stands in the file twice, the second time in line 5."},
      {": 1,\n\"programId\": \"8000AB0C12340001\"", ": 2",
       "The file was written by a newer version of this tool, in format 2."},
      {"8000AB0C", "9000AB0C",
       "The file belongs to another kind of device: its program id is 9000AB0C12340001, that of this device "
       "8000ab0c12340001."},
      {"programId", "program", "\"programId\" is missing in line 1."},
      {"\"8000AB0C12340001\"", "8000", "\"programId\" in line 3 is no text."},
      {"\"\"", deep + std::string(deep.size(), ']'), "\"note\" in line 4 is no text."},
      {"\"\"", "\n1e999\n", Damaged(5)},
      {"\"\"", "\"\n\"", Damaged(4)},
      {"\"\"", "\"\\ud800\"", Damaged(4)},
      {"\"\"", "\"\xFF\"", Damaged(4)},
      {"\"\"", std::string("\"\0\"", 3), Damaged(4)},
      {"}\n]\n}\n", std::string("}\n]\n}\n\0", 7), Damaged(11)},
      {"}\n]\n}\n", "}\n]\n}\n{", Damaged(11)},
      {"metric", "feet", "\"feet\" in line 5 are no measurement units."},
      {"\"units\"", "\"unit\"", "\"units\" is missing in line 1."},
      {"\"fields\"", "\"values\"", "The file has no list of fields."},
      {"\"fields\"", "\"fields\": {\"page\": []}, \"values\"", "The file has no list of fields."},
      {"{\"page\": \"fPID\", \"control\": \"opt", "[0, {}],\n{\"page\": \"fPID\", \"control\": \"opt",
       "The field in line 8 is damaged."},
      {"\"page\": \"fPID\", \"control\": \"opt", "\"control\": \"opt", "\"page\" is missing in line 8."},
      {"optTemp", "chkPID", "The field fPID.chkPID stands in the file twice, the second time in line 8."},
      {"\"2\"", "\"2\",\n\"content\": \"3\"",
       "The field content stands in the file twice, the second time in line 9."},
      {"\"note\"", "\"checkout\": {}, \"note\"", "The list \"checkout\" in line 4 is damaged."},
      {"\"note\"", "\"accepted\": [{\"who\": 1}], \"note\"", "The list \"accepted\" in line 4 is damaged."},
      // What this version does not know stands before it.
      {"\"\"", "{\"fields\": [[], 1, {\n}]}, \"a\": 1, \"b\": [2,\n{\"fields\": \"}\"}]",
       "\"note\" in line 4 is no text."},
  };
  for (const auto& [from, to, words] : cases)
    EXPECT_EQ(RefusalOf(base::ReplaceAll(kSound, from, to)), words) << from << " -> " << to.substr(0, 80);
  for (std::size_t size = 0; size + 1 < kSound.size(); ++size) {
    const std::string cut = kSound.substr(0, size);  // a line break at its end begins no line
    EXPECT_EQ(RefusalOf(cut), Damaged(1 + std::ranges::count(cut, '\n') - cut.ends_with('\n')));
  }
}

TEST(Document, ReadsWhatOlderAndNewerVersionsWrote) {
  const std::string newer =
      "\xEF\xBB\xBF" + base::ReplaceAll(kSound, "\"note\": \"\"", "\"fields of\": [{\"fields\": [1, {\n}]}]");
  Document expected;
  expected.head.programId = "8000AB0C12340001";
  expected.entries = {{"fPID", "chkPID", "", "", "1"}, {"fPID", "optTemp", "", "", "2"}};
  for (const std::string& text :
       {kSound, base::ReplaceAll(newer, "\"content\"", "\r\n\"range\": [0, 100],\r\n\"content\"")}) {
    const Document document = configuration::Read(text, "8000AB0C12340001");
    EXPECT_TRUE(document == expected) << Write(document);
  }
  EXPECT_EQ(RefusalOf(base::ReplaceAll(newer, "optTemp", "chkPID")),
            "The field fPID.chkPID stands in the file twice, the second time in line 9.");
}

struct FilesTest : testing::Test {
  FilesTest() {
    fs::remove_all(folder);
    fs::create_directories(folder);
  }
  static std::string Content(const fs::path& file) {
    return base::ReadFile(file, configuration::kLargestFile);
  }

  const fs::path folder = fs::path(tests::Tool::Documents()) / "kept";
};

TEST_F(FilesTest, AFileThatCannotBeReplacedStaysWhole) {
  const fs::path file = folder / "a" / "b" / base::PathOf("größer.kvtarn");
  base::ReplaceFile(file, "old");
  fs::create_directories(folder / "a" / "c.kvtarn" / "full");
  const auto refusal = [](const fs::path& name) {
    const std::string start = "The file " + base::PathText(name) + " cannot be written: ";
    EXPECT_THAT(FaultOf([&] { base::ReplaceFile(name, std::string(100'000, 'n')); }),
                testing::AllOf(testing::StartsWith(start), testing::SizeIs(testing::Gt(start.size() + 5))));
    EXPECT_FALSE(fs::exists(name.parent_path() / (name.filename() += ".new")));
  };
  refusal(folder / "a" / "c.kvtarn");     // a folder
  refusal(file / "deeper" / "d.kvtarn");  // below a file
#ifndef _WIN32
  rlimit limit;
  getrlimit(RLIMIT_FSIZE, &limit);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{4096, limit.rlim_max};  // as a full disk does
  setrlimit(RLIMIT_FSIZE, &small);
  refusal(file);
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, handler);
#endif
  EXPECT_EQ(Content(file), "old");
  base::ReplaceFile(file, std::string(configuration::kLargestFile, 'n'));
  EXPECT_EQ(Content(file).size(), configuration::kLargestFile);
  base::ReplaceFile(file, std::string(configuration::kLargestFile + 1, 'n'));
  EXPECT_EQ(FaultOf([&] { Content(file); }), "The file " + base::PathText(file) + " is too large.");
  EXPECT_THAT(FaultOf([&] { Content(folder / "none"); }), testing::HasSubstr("none cannot be read: "));
}

TEST_F(FilesTest, TheNewestBackupsStay) {
  const configuration::Backups backups(base::PathText(folder));
  Document document;
  document.head.network = "Site: 1";
  document.head.device = "RTU-1";
  const fs::path own =
      backups.Folder(configuration::kBackups, "Site: 1", "rtu-1").parent_path() / "RTU-1" / "0 own.kvtarn";
  base::ReplaceFile(own, "a person's");
  const auto files = [&] { return backups.Of(configuration::kBackups, "Site: 1", "RTU-1"); };
  std::vector<std::string> notes;  // the newest first
  const auto keep = [&](std::time_t time) {
    document.head.note = std::to_string(notes.size());
    backups.Keep(configuration::kBackups, document, time);
    notes.insert(notes.begin(), document.head.note);
  };
  for (int i = 0; i < 60; ++i) keep(1'800'000'000 + std::max(0, i - 25));  // the first ones in one second
  notes.resize(configuration::kMostBackups);
  const auto kept = [&] {
    std::vector<std::string> found;
    for (const fs::path& file : files()) {
      if (file != own) found.push_back(configuration::Read(Content(file), "").head.note);
    }
    return found;
  };
  EXPECT_EQ(kept(), notes);
  keep(1'700'000'000);  // the clock was set back
  std::ranges::rotate(notes, notes.begin() + 1);
  notes.erase(notes.end() - 2);
  EXPECT_EQ(kept(), notes);
  EXPECT_EQ(Content(own), "a person's");
  EXPECT_TRUE(std::regex_match(configuration::TimeOf(files()[40]),
                               std::regex(R"(2027-01-1\d \d\d:\d\d:\d\d(_\d\d)?)")));
}

TEST(SafeName, IsTakenByEveryFileSystem) {
  const std::string longest(60, 'x');
  const std::pair<std::string, std::string> cases[] = {
      {"RTU-1 North wing (2.1)", "RTU-1 North wing (2.1)"},
      {"Köhler-Größe 日本", "Köhler-Größe 日本"},
      {"Common room", "Common room"},
      {longest, longest},
      {"A/B", "A_B~"},
      {"<>:\"/\\|?*~\x7f\n", std::string(12, '_') + "~"},
      {"..", "~"},
      {"", "~"},
      {"Roof. .", "Roof~"},
      {"nul", "_nul~"},
      {"CON .txt", "_CON .txt~"},
      {"Com1.roof?", "_Com1.roof_~"},
      {"LPT²", "_LPT²~"},
      {longest + "y", longest + "~"},
      {longest.substr(2) + "日本", longest.substr(2) + "~"},
      {longest.substr(3) + "日本", longest.substr(3) + "日~"},
  };
  for (const auto& [name, expected] : cases) {
    std::string safe = SafeName(name);
    EXPECT_EQ(SafeName(base::Lower(name)).substr(expected.size()), safe.substr(expected.size())) << name;
    if (expected.ends_with('~')) {
      ASSERT_EQ(safe.size(), expected.size() + 8) << name;
      safe.resize(expected.size());
    }
    EXPECT_EQ(safe, expected);
  }
  EXPECT_NE(SafeName("A/B"), SafeName("A\\B"));
  EXPECT_NE(SafeName(longest + "y"), SafeName(longest + "z"));
  EXPECT_NE(SafeName(SafeName("A/B")), SafeName("A/B"));
}

#ifdef SOURCE_DIR

// The schema says the same of them, but for what it cannot know: `refused-`.
TEST(Document, SeedsOfTheFuzzerAreWhatTheirNamesSay) {
  for (const auto& file :
       fs::directory_iterator(fs::path(SOURCE_DIR).parent_path() / "fuzz" / "seeds" / "configuration_file")) {
    const std::string text = base::ReadFile(file.path(), configuration::kLargestFile);
    const std::string fault = FaultOf([&] { configuration::Read(text, ""); });
    EXPECT_EQ(fault.empty(), file.path().filename().string().starts_with("sound-")) << file.path() << fault;
  }
}

#endif

}  // namespace
