#include "checkout/check_out.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/error.h"
#include "host/verdict.h"
#include "shell/page.h"

namespace checkout {
namespace {

using configuration::TextOf;

constexpr int kOverride = 4;  // property of an output
// It holds halves of a percent, which the host's own decimals give whole.
constexpr std::string_view kFormat = "SNVT_switch";
constexpr std::size_t kFields = 2;
constexpr int kRounds = 3;  // of writing and reading back: a call that fails once is no reason to give up

struct Working {
  explicit Working(bool& busy) : busy_(busy), before_(std::exchange(busy, true)) {}
  Working(const Working&) = delete;
  Working& operator=(const Working&) = delete;
  ~Working() { busy_ = before_; }

  bool& busy_;
  bool before_;
};

std::string OutputName(int output) { return "Output " + std::to_string(output); }

}  // namespace

host::Property& CheckOut::OverrideOf(int output) {
  host::Property& property = device_.OutputProperties.at(static_cast<std::size_t>(output))[kOverride];
  property.Bind(kFormat);
  return property;
}

std::string CheckOut::ReadOverride(int output) {
  std::string text = OverrideOf(output).Read();
  if (base::Record(text).Count() < kFields)
    throw base::WordedError(
        "Output %s1% cannot be put back afterwards: the host says \"%s2%\" of its override.",
        {std::to_string(output), text});
  return text;
}

void CheckOut::KeepOnDisk(const std::vector<Kept>& kept) const {
  configuration::Sections sections;
  for (const auto& [output, function, text] : kept)
    sections[configuration::kOverrides].push_back(
        {{"output", std::to_string(output)}, {"function", function}, {"override", text}});
  file_.Write(sections);
}

void CheckOut::Load() {
  std::vector<Kept> kept;
  const configuration::Sections sections = file_.Read();
  const auto lines = sections.find(configuration::kOverrides);
  for (const auto& line : lines == sections.end() ? std::vector<configuration::Line>() : lines->second) {
    const auto output = base::Numbers().Parse(TextOf(line, "output")).value_or(0);
    if (output < 1 || output > host::DeviceObjects::kOutputs)
      throw base::WordedError("The list \"%s1%\" in line %s2% is damaged.", {configuration::kOverrides, "1"});
    kept.push_back({static_cast<int>(output), TextOf(line, "function"), TextOf(line, "override")});
  }
  kept_ = std::move(kept);
}

void CheckOut::Start(const Step& step, std::chrono::seconds limit) {
  if (busy_ || !kept_.empty()) return;
  wanted_ = false;
  {
    const Working working(busy_);
    std::vector<Kept> kept;
    for (const Override& one : step.overrides)
      kept.push_back({one.output, one.function, ReadOverride(one.output)});
    KeepOnDisk(kept);
    kept_ = std::move(kept);
    end_ = now() + limit;
  }
  try {
    const Working working(busy_);
    Write(step);
  } catch (...) {
    PutBack();
    throw;
  }
  if (wanted_) PutBack();
}

void CheckOut::Write(const Step& step) {
  host::Transaction transaction(transactions_);
  for (const Override& one : step.overrides) {
    OverrideOf(one.output)
        .Write(OutputName(one.output), host::kHostPrecision,
               {std::string(one.value), std::string(one.state)});
  }
  transaction.Commit();
  const auto otherwise = host::HeldOtherwise(transactions_.GetJournal());
  if (!otherwise.empty())
    throw base::WordedError("The output was not overridden: the device holds %s1%.",
                            {otherwise.front().held});
}

std::chrono::seconds CheckOut::Left() const {
  if (kept_.empty()) return {};
  return std::max(std::chrono::ceil<std::chrono::seconds>(end_ - now()), std::chrono::seconds(0));
}

void CheckOut::Look() {
  transactions_.EndLeft();
  std::vector<Kept> left;
  for (const Kept& kept : kept_) {
    if (OverrideOf(kept.output).Read() != kept.text) left.push_back(kept);
  }
  kept_ = std::move(left);
}

void CheckOut::WriteBack() {
  host::Transaction transaction(transactions_);
  for (const Kept& kept : kept_) OverrideOf(kept.output).WriteText(kept.text);
  transaction.Commit();
}

void CheckOut::Check() {
  if (busy_ || kept_.empty()) return;
  const Working working(busy_);
  try {
    Look();
    KeepOnDisk(kept_);
  } catch (const std::exception& error) {
    fault_ = shell::DescribeError(error);
  }
}

bool CheckOut::PutBack() {
  if (busy_) wanted_ = true;
  if (busy_ || kept_.empty()) return kept_.empty();
  const Working working(busy_);
  wanted_ = false;
  fault_.clear();
  for (int round = 1; round <= kRounds && !kept_.empty(); ++round) {
    try {
      Look();
      if (!kept_.empty() && round < kRounds) WriteBack();
    } catch (const std::exception& error) {
      fault_ = shell::DescribeError(error);
    }
  }
  try {
    KeepOnDisk(kept_);
  } catch (const base::Error&) {
    // A list that names too much is looked at by the next start.
  }
  return kept_.empty();
}

}  // namespace checkout
