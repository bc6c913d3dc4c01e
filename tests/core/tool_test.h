// The fixture of all tests that work with the whole tool.
#pragma once

#include <gtest/gtest.h>

#include <span>
#include <tuple>

#include "base/text.h"
#include "tool.h"

namespace tests {

/// What a save says that went well.
constexpr const char* kApplied = "Apply/Main: The configuration settings were applied successfully";

struct ToolTest : testing::Test, Tool {
  explicit ToolTest(ui::Toolkit* toolkit = nullptr) : Tool(Options(), toolkit) {}
};

}  // namespace tests
