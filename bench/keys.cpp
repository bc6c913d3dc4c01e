#include "keys.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include "advice/advice.h"
#include "advice/field_contents.h"
#include "tests/core/tool.h"

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRounds = 301;

double MedianMicroseconds(const std::function<void(int)>& key) {
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) {
    const auto start = Clock::now();
    key(round);
    times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
  }
  std::ranges::nth_element(times, times.begin() + kRounds / 2);
  return times[kRounds / 2];
}

int Print(const char* what, double time, double limit) {
  std::printf("%-58s %7.0f us %8.0f us%s\n", what, time, limit, time > limit ? "  OVER" : "");
  return time > limit;
}

}  // namespace

int PrintKeys() {
  std::printf("\n%-58s %10s %11s\n", "a key, medians of 301", "time", "limit");
  tests::Tool tool;
  tool.OpenPage(tests::kAssigned, "fPID");
  tool.Type("fAlarm.txtAlarm(1)", "61");
  const auto type = [&tool](int round) { tool.Type("fPID.txtPIDTemp(0)", std::to_string(20 + round % 7)); };
  int over = Print("typed into a box", MedianMicroseconds(type), 1000);
  tool.Click("cmdChanges");
  over += Print("the same beside the list of changes", MedianMicroseconds(type), 1000);
  auto& window = tool.Main().FindWindow();
  window.ShowMe();
  auto& box = dynamic_cast<ui::TextBox&>(*window.Find("txtFind"));
  const char* const typed[] = {"c", "co", "co2", "co2 d", "nvi", ""};
  over += Print("typed to find a field", MedianMicroseconds([&](int round) { box.Type(typed[round % 6]); }),
                5000);
  const advice::FieldContents contents(tool.Main().Pending().Fields(), tool.Main().Selections());
  const advice::Input input{std::cref(contents), false, base::Numbers()};
  over +=
      Print("all that there is to advise", MedianMicroseconds([&](int) { advice::Evaluate(input); }), 5000);
  return over;
}

}  // namespace bench
