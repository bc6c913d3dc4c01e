// The virtual building of newer controllers: its data with some texts replaced.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "simulator/building.h"

namespace tests {

class NewerBuilding {
 public:
  explicit NewerBuilding(const std::vector<std::pair<std::string, std::string>>& replacements) {
    std::filesystem::create_directory(folder_);
    for (const auto& file : std::filesystem::directory_iterator(SIM_DATA_DIR)) {
      if (!file.is_regular_file()) continue;
      std::stringstream content;
      content << std::ifstream(file.path()).rdbuf();
      std::string text = content.str();
      for (const auto& [from, to] : replacements) text = base::ReplaceAll(text, from, to);
      std::ofstream(folder_ / file.path().filename()) << text;
    }
  }
  NewerBuilding(const NewerBuilding&) = delete;
  NewerBuilding& operator=(const NewerBuilding&) = delete;
  ~NewerBuilding() { std::filesystem::remove_all(folder_); }

  simulator::BuildingOptions Options() const {
    simulator::BuildingOptions options;
    options.dataFolder = folder_;
    return options;
  }

 private:
  const std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                        ("tarn_newer_building_" + std::to_string(std::random_device()()));
};

}  // namespace tests
