// usage: help_generator TOPICS PICTURES FOLDER    writes the help from the folders of its topics and pictures
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

// A page that is not in the program yet. Its topic stays, because others refer to it, without what only the
// page can tell.
void LeaveOut(help::Topic& topic, std::string_view mark) {
  const auto begin = topic.text.find(mark);
  topic.text.erase(begin, topic.text.find('}', begin) + 1 - begin);
  fmt::print("help: {} is without {} until the program has the page\n", topic.file, mark);
}

void LeaveOutMissingPage(help::Topic& topic) {
  const auto pages = pages::PageTable();
  if (topic.number == 0 ||
      std::ranges::find(pages, topic.number, &shell::PageEntry::helpTopic) != pages.end())
    return;
  if (!topic.notes.empty()) LeaveOut(topic, "{fields");
  if (topic.text.find("{picture page-") != std::string::npos) LeaveOut(topic, "{picture page-");
  topic.notes.clear();
}

std::vector<help::Topic> ReadTopics(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
  std::ranges::sort(files);
  std::vector<help::Topic> topics;
  for (const fs::path& file : files) {
    help::Topic topic = help::ParseTopic(file.filename().string(), simulator::ReadWholeFile(file));
    LeaveOutMissingPage(topic);
    topics.push_back(std::move(topic));
  }
  if (topics.empty()) throw base::Error(folder.string() + " holds no topics");
  return topics;
}

void WriteManual(const fs::path& topics, const fs::path& pictures, const fs::path& folder) {
  std::vector<int> numbers = {kLanguageTopic};
  for (const shell::PageEntry& page : pages::PageTable()) numbers.push_back(page.helpTopic);
  const help::Manual manual = help::MakeManual(ReadTopics(topics), help::ReadFields(), numbers);
  for (const auto& [name, content] : manual.files) simulator::ReplaceFile(folder / name, content);
  for (const std::string& picture : manual.pictures) {
    if (!fs::exists(pictures / picture)) throw base::Error("the picture " + picture + " is missing");
    fs::copy_file(pictures / picture, folder / picture, fs::copy_options::overwrite_existing);
  }
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count != 4) throw base::Error("usage: help_generator TOPICS PICTURES FOLDER");
    WriteManual(arguments[1], arguments[2], arguments[3]);
    return 0;
  } catch (const std::exception& error) {
    fmt::print(stderr, "help: {}\n", error.what());
    return 1;
  }
}
