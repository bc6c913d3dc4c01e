// usage: help_generator TOPICS FOLDER    writes the help from the folder of its topics
//        help_generator --pictures FILE  writes the script with which the pictures of the pages are taken
#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>

#include "base/error.h"
#include "base/text.h"
#include "help/generator/manual.h"
#include "pages/page_table.h"
#include "simulator/files.h"
#include "tests/core/tool.h"

namespace {

namespace fs = std::filesystem;

// The topic of the language page, which is no page of the table.
constexpr int kLanguageTopic = 3;

bool InProgram(const std::string& page) {
  return page.empty() || std::ranges::find(pages::PageTable(), page, &shell::PageEntry::pageClass) !=
                             pages::PageTable().end();
}

// A page that is not in the program yet; its topic stays, because others refer to it.
void LeaveOutFields(help::Topic& topic) {
  fmt::print("help: the program has no page {}: {} is without its fields\n", topic.page, topic.file);
  topic.text = base::ReplaceAll(topic.text, "{fields}", "");
  topic.notes.clear();
}

std::vector<help::Topic> ReadTopics(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
  std::ranges::sort(files);
  std::vector<help::Topic> topics;
  for (const fs::path& file : files) {
    help::Topic topic = help::ParseTopic(file.filename().string(), simulator::ReadWholeFile(file));
    if (!InProgram(topic.page)) LeaveOutFields(topic);
    topics.push_back(std::move(topic));
  }
  if (topics.empty()) throw base::Error(folder.string() + " holds no topics");
  return topics;
}

void WriteManual(const fs::path& topics, const fs::path& folder) {
  std::vector<int> numbers = {kLanguageTopic};
  for (const shell::PageEntry& page : pages::PageTable()) numbers.push_back(page.helpTopic);
  for (const auto& [name, content] : help::MakeManual(ReadTopics(topics), help::ReadFields(), numbers)) {
    simulator::ReplaceFile(folder / name, content);
  }
}

void WritePictureScript(const fs::path& file) {
  std::string script =
      fmt::format("configure \"{}\"\nwait window fMain 60\nwait idle 60\n", tests::kAssigned);
  for (const shell::PageEntry& page : pages::PageTable()) {
    script += fmt::format("page \"{}\"\nshot {}\n", page.listCaption, page.pageClass);
  }
  script += "click fMain.cmdErrorLog\nwait window fMessage\nshot fMessage fMessage\nclick fMain.cmdCancel\n";
  simulator::ReplaceFile(file, script);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count != 3) throw base::Error("usage: help_generator TOPICS FOLDER | --pictures FILE");
    const std::string first = arguments[1];
    if (first == "--pictures") {
      WritePictureScript(arguments[2]);
    } else {
      WriteManual(first, arguments[2]);
    }
    return 0;
  } catch (const std::exception& error) {
    fmt::print(stderr, "help: {}\n", error.what());
    return 1;
  }
}
