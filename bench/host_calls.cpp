#include "host_calls.h"

#include "tests/core/tool.h"

namespace bench {

std::vector<std::pair<std::string, std::uint64_t>> CountHostCalls() {
  tests::Tool tool;
  std::vector<std::pair<std::string, std::uint64_t>> counts;
  std::uint64_t before = 0;
  const auto count = [&](const char* operation) {
    const std::uint64_t total = tool.building.Faults().Total();
    counts.emplace_back(operation, total - before);
    before = total;
  };
  tool.Open(tests::kPressure);
  count("SendCommand: join, load template, tree, pages");
  tool.Main().Pages().FindPage("fPID")->FillValue();
  count("fill the PID page");
  tool.Click("cmdRefresh");
  count("refresh");
  tool.Find<ui::TextBox>("fPID.txtPIDTemp(0)").Type("3.5");
  count("type into a box");
  tool.Click("cmdApply");
  count("apply (save and refresh)");
  tool.Find<ui::OptionButton>("optUnit(1)").Click();
  count("change the unit system");
  return counts;
}

}  // namespace bench
