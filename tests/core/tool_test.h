// The fixture of all tests that work with the whole tool.
#pragma once

#include <gmock/gmock.h>

#include <span>
#include <tuple>

#include "base/text.h"
#include "tool.h"

namespace tests {

/// What a save says that went well.
constexpr const char* kApplied = "Apply/Main: The configuration settings were applied successfully";

struct ToolTest : testing::Test, Tool {
  explicit ToolTest(ui::Toolkit* toolkit = nullptr) : Tool(Options(), toolkit) {}
  /// Apply, which must go well.
  void Save() {
    Click("cmdApply");
    EXPECT_EQ(LastMessage(), kApplied) << testing::PrintToString(Messages());
  }
};

}  // namespace tests
