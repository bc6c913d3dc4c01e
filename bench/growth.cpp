#include "growth.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/core/tool.h"

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

constexpr int kDevices[] = {1, 10, 100};
constexpr int kRounds = 11;
constexpr double kLimit = 1.25;  // of the smallest building

struct Load {
  double milliseconds;
  std::uint64_t calls;
};

/// The last controller of the building, from the host's command to the window.
Load MeasureLoad(simulator::Building& building, const std::string& device) {
  tests::Tool tool(building);
  const std::uint64_t before = building.Faults().Total();
  const auto start = Clock::now();
  tool.Open(device);
  const std::chrono::duration<double, std::milli> time = Clock::now() - start;
  return {time.count(), building.Faults().Total() - before};
}

}  // namespace

void WriteBuilding(const fs::path& folder, int devices) {
  fs::remove_all(folder);
  fs::create_directories(folder.parent_path());
  fs::copy(SIM_DATA_DIR, folder, fs::copy_options::recursive);
  const fs::path file = folder / "building.json";
  auto building = nlohmann::json::parse(std::ifstream(file));
  auto device = building.at("devices").at(0);
  building["devices"].clear();
  for (int i = 1; i <= devices; ++i) {
    device["key"] = "unit" + std::to_string(i);
    device["name"] = "Unit " + std::to_string(i);
    building["devices"].push_back(device);
  }
  std::ofstream(file) << building;
}

int PrintGrowth() {
  std::printf("\n%-58s %10s %8s %8s\n", "bringing the tool up in this process, medians of 11", "calls",
              "time", "ratio");
  double smallest = 0;
  int over = 0;
  for (const int devices : kDevices) {
    simulator::BuildingOptions options;
    options.dataFolder = "build/bench/building";
    WriteBuilding(options.dataFolder, devices);
    simulator::Building building(options);
    std::vector<Load> loads;
    for (int round = 0; round < kRounds; ++round) {
      loads.push_back(MeasureLoad(building, "Unit " + std::to_string(devices)));
    }
    std::ranges::nth_element(loads, loads.begin() + kRounds / 2, {}, &Load::milliseconds);
    const Load& median = loads[kRounds / 2];
    if (smallest == 0) smallest = median.milliseconds;
    const double ratio = median.milliseconds / smallest;
    const std::string what = "controllers in the building: " + std::to_string(devices);
    std::printf("%-58s %10llu %5.1f ms %8.2f%s\n", what.c_str(),
                static_cast<unsigned long long>(median.calls), median.milliseconds, ratio,
                ratio > kLimit ? "  OVER" : "");
    over += ratio > kLimit;
  }
  return over;
}

}  // namespace bench
