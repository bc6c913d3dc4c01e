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

/// Controls and arrays of a page that can be used or not together: what they are for, and their names.
using Groups = std::vector<std::pair<std::string, std::string>>;

/// Functions chosen one after the other, and the groups that can be used then ("cooling, dampers").
enum Connector { kInput, kOutput };
struct FunctionStep {
  std::vector<std::tuple<Connector, int, const char*>> choices;
  const char* usable;
};

struct ToolTest : testing::Test, Tool {
  explicit ToolTest(ui::Toolkit* toolkit = nullptr) : Tool(Options(), toolkit) {}

  std::string Usable(const std::string& page, const Groups& groups) {
    std::string usable;
    for (const auto& [group, names] : groups) {
      const bool first = AllUsable(page + "." + base::Split(names, " ")[0]);
      for (const std::string& name : base::Split(names, " ")) {
        for (const ui::Control* control : Main().Pages().FindPage(page)->Group(name))
          EXPECT_EQ(control->Usable(), first) << control->Name();
      }
      if (first) usable += (usable.empty() ? "" : ", ") + group;
    }
    return usable;
  }
  /// Controls follow as soon as a function is chosen, and when their page is shown or read again.
  void CheckSteps(const std::string& page, const Groups& groups, std::span<const FunctionStep> steps) {
    for (const FunctionStep& step : steps) {
      for (const auto& [connector, number, function] : step.choices) {
        connector == kInput ? AssignInput(number, function) : AssignOutput(number, function);
      }
      EXPECT_EQ(Usable(page, groups), step.usable) << "as soon as chosen";
      ChoosePage(page);
      EXPECT_EQ(Usable(page, groups), step.usable) << "when shown";
      Click("cmdApply");
      EXPECT_EQ(Usable(page, groups), step.usable) << "when read again";
    }
  }
};

}  // namespace tests
