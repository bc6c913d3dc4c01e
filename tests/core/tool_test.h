// The fixture of all tests that work with the whole tool.
#pragma once

#include <gtest/gtest.h>

#include <span>

#include "tool.h"

namespace tests {

/// What a save says that went well.
constexpr const char* kApplied = "Apply/Main: The configuration settings were applied successfully";

/// A box that shows one property of the rooftop object, what is typed into it, and what is stored then.
struct BoxCase {
  const char* box;
  int number;
  const char* format;
  int precision;
  const char* typed;
  const char* stored;
};

struct ToolTest : testing::Test, Tool {
  /// Each box shows what the device holds, and takes what is typed.
  void TypeInto(const std::string& page, std::span<const BoxCase> cases) {
    for (const BoxCase& item : cases) {
      EXPECT_EQ(Text(page + "." + item.box), Stored(kAssigned, item.number, item.format, item.precision))
          << item.box;
      Type(page + "." + item.box, item.typed);
    }
  }
  void ApplyAndCheck(std::span<const BoxCase> cases) {
    Click("cmdApply");
    EXPECT_EQ(LastMessage(), kApplied);
    for (const BoxCase& item : cases) {
      EXPECT_EQ(Stored(kAssigned, item.number, item.format, item.precision), item.stored) << item.box;
    }
  }
};

}  // namespace tests
