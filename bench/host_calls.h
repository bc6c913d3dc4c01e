// Counts the calls that each operation of the tool makes to the host.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace bench {

std::vector<std::pair<std::string, std::uint64_t>> CountHostCalls();

}  // namespace bench
