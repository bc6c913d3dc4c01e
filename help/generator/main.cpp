// usage: help_generator TOPICS PICTURES FOLDER
//
// Writes the help in every language. Each of the three folders has one for each language.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>

#include "base/error.h"
#include "help/generator/manual.h"
#include "pages/page_table.h"
#include "simulator/files.h"
#include "tests/core/tool.h"

namespace {

namespace fs = std::filesystem;

std::vector<help::Topic> ReadTopics(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
  std::ranges::sort(files);
  std::vector<help::Topic> topics;
  for (const fs::path& file : files) {
    topics.push_back(help::ParseTopic(file.filename().string(), simulator::ReadWholeFile(file)));
  }
  if (topics.empty()) throw base::Error(folder.string() + " holds no topics");
  return topics;
}

void Write(const help::Manual& manual, const fs::path& pictures, const fs::path& folder) {
  fs::create_directories(folder);
  for (const auto& [name, content] : manual.files) simulator::ReplaceFile(folder / name, content);
  std::string missing;
  for (const std::string& picture : manual.pictures) {
    if (!fs::exists(pictures / picture))
      missing += " " + picture;
    else
      fs::copy_file(pictures / picture, folder / picture, fs::copy_options::overwrite_existing);
  }
  if (!missing.empty()) throw base::Error(pictures.string() + " lacks" + missing);
}

void WriteManuals(const fs::path& topics, const fs::path& pictures, const fs::path& folder) {
  std::map<int, std::string> asked;
  for (const shell::PageEntry& page : pages::PageTable()) {
    asked[page.helpTopic] = page.showsDeviceValues ? page.pageClass : "";
  }
  const auto fields = help::ReadFields();
  const std::vector<help::Topic> english = ReadTopics(topics / help::Languages().front().name);
  for (const help::Language& language : help::Languages()) {
    const auto own = help::Translated(english, ReadTopics(topics / language.name));
    Write(help::MakeManual(language, own, fields.at(std::string(language.name)), asked),
          pictures / language.name, folder / language.name);
  }
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count != 4) throw base::Error("usage: help_generator TOPICS PICTURES FOLDER");
    WriteManuals(arguments[1], arguments[2], arguments[3]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "help: %s\n", error.what());
    return 1;
  }
}
