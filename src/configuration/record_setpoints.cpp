// The setpoints and limits as bands over temperature. Drawn is what the fields hold, sensible or not: what
// cannot be drawn, or is in the wrong order, is said in words below.
#include <algorithm>
#include <cmath>
#include <optional>

#include "base/text.h"
#include "configuration/record_parts.h"

namespace configuration::record {
namespace {

constexpr int kWidth = 800, kLeft = 150, kRight = 775, kTop = 6, kBand = 17, kRowHeight = 25,
              kRangeHeight = 36;
constexpr double kFarthest = 1000;  // degrees; nothing beyond it is a temperature of a building

/// Where a limit is found: by its control, or by row and column of its page (English), whose boxes are not
/// bound to fixed fields.
struct Source {
  std::string_view page, control, row, column;
};
constexpr std::string_view kSetpoints = "fHeatCool", kAlarms = "fAlarm";
constexpr std::string_view kLow = "Low limit", kHigh = "High limit";

/// Heating below the one and cooling above the other; or a range between two limits.
struct RowPlan {
  const char* title;
  Source heating, cooling, lower, upper, lowAlarm, highAlarm;
};
constexpr Source Setpoint(std::string_view control) { return {kSetpoints, control, {}, {}}; }
constexpr Source Alarm(std::string_view row, std::string_view column) { return {kAlarms, {}, row, column}; }
constexpr RowPlan kRows[] = {
    {"Occupied/Bypass", Setpoint("txtSetPoint(3)"), Setpoint("txtSetPoint(0)"), {}, {}, {}, {}},
    {"Standby", Setpoint("txtSetPoint(4)"), Setpoint("txtSetPoint(1)"), {}, {}, {}, {}},
    {"Unoccupied", Setpoint("txtSetPoint(5)"), Setpoint("txtSetPoint(2)"), {}, {}, {}, {}},
    {"Supply temp",
     {},
     {},
     Setpoint("txtMinDischCool"),
     Setpoint("txtMaxDischHeat"),
     Alarm("Supply temp", kLow),
     Alarm("Supply temp", kHigh)},
    {"Return temp", {}, {}, {}, {}, Alarm("Return temp", kLow), Alarm("Return temp", kHigh)},
    {"Mixed air temp", {}, {}, {}, {}, Alarm("Mixed air temp", kLow), Alarm("Mixed air temp", kHigh)},
};

/// A pair of limits in a row: how it is called, and what to say where the first is above the second.
struct PairPlan {
  Source RowPlan::*low;
  Source RowPlan::*high;
  const char *lowName, *highName, *crossed;
};
enum PairKind { kPeriod, kLimits, kAlarmLimits };
constexpr PairPlan kPairs[] = {
    {&RowPlan::heating, &RowPlan::cooling, "Heating", "Cooling", "%s1%: heating is set higher than cooling."},
    {&RowPlan::lower, &RowPlan::upper, "Min supply temp", "Max supply temp",
     "%s1%: the minimum is higher than the maximum."},
    {&RowPlan::lowAlarm, &RowPlan::highAlarm, "Low limit", "High limit",
     "%s1%: the low alarm limit is higher than the high one."},
};

struct Pair {
  std::optional<double> low, high;

  bool Crossed() const { return low && high && *low > *high; }
};

class Chart {
 public:
  explicit Chart(const RecordInput& input) : input_(input) {
    for (const RowPlan& row : kRows) Read(row);
    if (!Empty()) Scale();
  }

  bool Empty() const { return values_.empty(); }
  std::string Markup();
  const std::vector<std::string>& Remarks() const { return remarks_; }

 private:
  struct Row {
    std::string title;
    int height = kRowHeight;
    Pair pairs[std::size(kPairs)];
  };

  void Read(const RowPlan& plan);
  std::optional<double> Reading(const Source& source, const std::string& name);
  const Value* Find(const Source& source) const;
  void Scale();
  int At(double value) const {
    return kLeft + static_cast<int>(std::lround((value - from_) / (to_ - from_) * (kRight - kLeft)));
  }
  std::string Number(double value) const { return input_.numbers.Text(value); }

  void DrawAxis(int bottom);
  void DrawKey(int y);
  void DrawPeriod(const Pair& pair, int top);
  void DrawRange(const Pair& pair, std::string_view range, std::string_view end, int y, int labels);
  void Line(std::string_view look, int x1, int y1, int x2, int y2);
  void Bar(std::string_view look, int x1, int x2, int top);

  const RecordInput& input_;
  std::vector<Row> rows_;
  std::vector<double> values_;
  std::vector<std::string> words_, remarks_;  // plain
  std::string unit_, drawn_;
  double from_ = 0, to_ = 1, step_ = 1;
};

const Value* Chart::Find(const Source& source) const {
  if (!source.control.empty()) return input_.snapshot.Find(source.page, source.control);
  const std::string row = input_.strings.GetStrings(source.row);
  const std::string column = input_.strings.GetStrings(source.column);
  const auto found = std::ranges::find_if(input_.snapshot.values, [&](const Value& value) {
    return value.page == source.page && value.caption.row == row && value.caption.column == column;
  });
  return found == input_.snapshot.values.end() ? nullptr : &*found;
}

std::optional<double> Chart::Reading(const Source& source, const std::string& name) {
  const Value* value = Find(source);
  if (!value) {
    remarks_.push_back(Filled(input_, "%s1%: not recorded.", {name}));
    return std::nullopt;
  }
  if (unit_.empty()) unit_ = value->caption.unit;
  const auto number = base::Numbers('.').Parse(value->content);
  words_.push_back(name + " " + WithUnit(*value));
  if (number && std::abs(*number) <= kFarthest) {
    values_.push_back(*number);
    return number;
  }
  remarks_.push_back(Filled(input_, "%s1%: \"%s2%\" cannot be drawn.", {name, value->shown}));
  return std::nullopt;
}

void Chart::Read(const RowPlan& plan) {
  Row row;
  row.title = input_.strings.GetStrings(plan.title);
  for (std::size_t i = 0; i < std::size(kPairs); ++i) {
    const PairPlan& pair = kPairs[i];
    if ((plan.*pair.low).page.empty()) continue;
    const auto read = [&](const Source& source, const char* name) {
      return Reading(source, row.title + ", " + input_.strings.GetStrings(name));
    };
    row.pairs[i] = {read(plan.*pair.low, pair.lowName), read(plan.*pair.high, pair.highName)};
    if (row.pairs[i].Crossed()) remarks_.push_back(Filled(input_, pair.crossed, {row.title}));
  }
  if (plan.heating.page.empty()) row.height = kRangeHeight;
  rows_.push_back(std::move(row));
}

/// Round steps, and room for a label on both sides.
void Chart::Scale() {
  const auto [lowest, highest] = std::ranges::minmax(values_);
  const double rough = std::max(highest - lowest, 5.0) / 6;
  const double power = std::pow(10, std::floor(std::log10(rough)));
  step_ = power * (rough / power <= 1 ? 1 : rough / power <= 2 ? 2 : rough / power <= 5 ? 5 : 10);
  from_ = (std::floor(lowest / step_) - 1) * step_;
  to_ = (std::ceil(highest / step_) + 1) * step_;
}

void Chart::Line(std::string_view look, int x1, int y1, int x2, int y2) {
  drawn_ += "<path class=\"" + std::string(look) + "\" d=\"M" + std::to_string(x1) + " " +
            std::to_string(y1) + "L" + std::to_string(x2) + " " + std::to_string(y2) + "\"/>";
}

void Chart::Bar(std::string_view look, int x1, int x2, int top) {
  drawn_ += "<rect class=\"" + std::string(look) + "\" x=\"" + std::to_string(x1) + "\" y=\"" +
            std::to_string(top) + "\" width=\"" + std::to_string(x2 - x1) + "\" height=\"" +
            std::to_string(kBand) + "\"/>";
}

/// Heating works up to its setpoint, cooling from its own. Labels stand within their bands; where the bands
/// overlap, outside of them.
void Chart::DrawPeriod(const Pair& pair, int top) {
  const bool crossed = pair.Crossed();
  const auto draw = [&](double value, bool heating) {
    const int x = At(value);
    Bar(heating ? "heats" : "cools", heating ? kLeft : x, heating ? x : kRight, top);
    Line(heating ? "heat" : "cool", x, top, x, top + kBand);
    const bool left = heating != crossed;
    drawn_ += DrawnText(left ? x - 4 : x + 4, top + kBand - 4, left ? "e" : "", Number(value));
  };
  if (pair.low) draw(*pair.low, true);
  if (pair.high) draw(*pair.high, false);
}

/// A line between two limits, with their numbers outside of it.
void Chart::DrawRange(const Pair& pair, std::string_view range, std::string_view end, int y, int labels) {
  const bool crossed = pair.Crossed();
  if (pair.low && pair.high && !crossed) Line(range, At(*pair.low), y, At(*pair.high), y);
  const auto draw = [&](double value, bool left) {
    Line(end, At(value), y - 6, At(value), y + 6);
    drawn_ += DrawnText(At(value) + (left ? -5 : 5), labels, left ? "e" : "", Number(value));
  };
  if (pair.low) draw(*pair.low, !crossed);
  if (pair.high) draw(*pair.high, crossed);
}

void Chart::DrawAxis(int bottom) {
  for (double value = from_; value < to_ + step_ / 2; value += step_) {
    const double shown = std::round(value * 1000) / 1000;
    Line("thin", At(value), kTop, At(value), bottom);
    drawn_ += DrawnText(At(value), bottom + 12, "s c", Number(shown));
  }
  drawn_ += DrawnText(kRight + 12, bottom + 12, "s", unit_);
}

/// What the colours mean.
void Chart::DrawKey(int y) {
  constexpr struct {
    const char *look, *text;
  } kKey[] = {
      {"heats", "Heating"}, {"cools", "Cooling"}, {"in wide", "Supply limits"}, {"alarm", "Alarm limits"}};
  int x = kLeft;
  for (const auto& [look, text] : kKey) {
    if (std::string_view(look).ends_with("s"))
      Bar(look, x, x + 22, y - 12);
    else
      Line(look, x, y - 4, x + 22, y - 4);
    drawn_ += DrawnText(x + 28, y, "s", input_.strings.GetStrings(text), 120);
    x += 156;
  }
}

std::string Chart::Markup() {
  int y = kTop;
  for (const Row& row : rows_) y += row.height;
  const int bottom = y;
  DrawAxis(bottom);
  y = kTop;
  for (const Row& row : rows_) {
    const int middle = y + row.height / 2;
    drawn_ += DrawnText(0, middle + 4, "t", row.title, kLeft - 8);
    DrawPeriod(row.pairs[kPeriod], middle - kBand / 2);
    DrawRange(row.pairs[kAlarmLimits], "alarm", "alarm", middle, middle + 17);
    DrawRange(row.pairs[kLimits], "in wide", "in", middle, middle - 8);
    y += row.height;
  }
  DrawKey(bottom + 34);
  return Drawing("setpoints", kWidth, bottom + 40, Word(input_, "Setpoints"),
                 Escaped(base::Join(words_, "; ")), drawn_);
}

}  // namespace

std::string SetpointSection(const RecordInput& input) {
  Chart chart(input);
  std::string markup = Heading(input, "Setpoints and limits");
  if (!chart.Empty()) markup += chart.Markup() + "\n";
  for (const std::string& remark : chart.Remarks()) markup += Element("p", Escaped(remark)) + "\n";
  return markup;
}

}  // namespace configuration::record
