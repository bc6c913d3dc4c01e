// The fixture of all tests that work with the whole tool.
#pragma once

#include <gtest/gtest.h>

#include "tool.h"

namespace tests {

struct ToolTest : testing::Test, Tool {};

}  // namespace tests
