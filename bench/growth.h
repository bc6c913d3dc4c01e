// Whether the tool's work grows with the building around its device.
#pragma once

#include <filesystem>

namespace bench {

/// Writes a data folder whose building has `devices` controllers, "Unit 1" and on, all alike.
void WriteBuilding(const std::filesystem::path& folder, int devices);

/// Prints what bringing the tool up costs in buildings of 1, 10 and 100 controllers, in this process. Answers
/// how many limits were missed.
int PrintGrowth();

}  // namespace bench
