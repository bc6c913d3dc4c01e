#include "advice/unit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "advice/places.h"
#include "base/text.h"

namespace advice {
namespace {

/// From imperial units to metric ones.
struct Conversion {
  double offset, factor;
  const char *metric, *imperial;
  double rounding;  // in metric units, by the decimals that the pages show
};
constexpr double kPascal = 249.08891;  // of an inch of water column
constexpr Conversion kConversions[] = {{0, 1, "", "", 0},
                                       {32, 5 / 9.0, "°C", "°F", 0.001},
                                       {0, 5 / 9.0, "°C", "°F", 0.001},
                                       {0, 2.326, "KJ/kg", "BTU/lb", 0.003},
                                       {0, kPascal, "Pa", "\" WC", 0.13},
                                       {0, 9 / 5.0, "% / °C", "% / °F", 0.001},
                                       {0, 1 / kPascal, "% / Pa", "%/ \" WC", 0.006}};

const Conversion& Of(Quantity quantity) { return kConversions[static_cast<std::size_t>(quantity)]; }

constexpr double kHeldDecimals = 10000;  // what is kept of a number

}  // namespace

std::string At(std::string_view array, std::size_t index) {
  return std::string(array) + "(" + std::to_string(index) + ")";
}

bool Less(double a, double b) { return a < b - kRounding; }

Unit::Unit(const Input& input) : input_(input) {
  const auto function = [this](const Place& place) { return base::Upper(Content(place).value_or("")); };
  for (std::size_t i = 0; i < outputs_.size(); ++i) outputs_[i] = function(OutputFunctionAt(i));
  for (std::size_t i = 0; i < inputs_.size(); ++i) inputs_[i] = function(InputFunctionAt(i));
}

double Unit::Number(const Place& place) const {
  const auto content = Content(place);
  const auto number = content ? base::ParseEither(input_.numbers, *content) : std::nullopt;
  if (!number) return std::numeric_limits<double>::quiet_NaN();
  const Conversion& conversion = Of(place.quantity);
  return input_.imperial ? (*number - conversion.offset) * conversion.factor : *number;
}

Value Unit::Shown(const Place& place) const {
  const Conversion& conversion = Of(place.quantity);
  const char* unit = input_.imperial ? conversion.imperial : conversion.metric;
  return {Content(place).value_or(""), *unit ? unit : place.unit};
}

Value Unit::Figure(double metric, Quantity quantity, const char* unit) const {
  const Conversion& conversion = Of(quantity);
  const char* converted = input_.imperial ? conversion.imperial : conversion.metric;
  const double shown = input_.imperial ? metric / conversion.factor + conversion.offset : metric;
  return {input_.numbers.Text(std::round(shown * 10) / 10), *converted ? converted : unit};
}

Concerned Unit::Held(const Place& place) const {
  const double number = Number(place);
  const bool known = !std::isnan(number);
  std::string held = known ? base::Numbers().Text(std::round(number * kHeldDecimals) / kHeldDecimals)
                           : Content(place).value_or("");
  return {std::string(place.page), place.control, std::move(held), Of(place.quantity).rounding};
}

bool Unit::Drives(std::initializer_list<std::string_view> beginnings) const {
  return std::ranges::any_of(outputs_, [&beginnings](const std::string& function) {
    return std::ranges::any_of(
        beginnings, [&function](std::string_view beginning) { return function.starts_with(beginning); });
  });
}

bool Unit::HasInput(std::string_view function) const {
  return std::ranges::find(inputs_, function) != inputs_.end();
}

bool Unit::Economizes() const {
  return Is(kEconomizer, kFirstOption) && (HasDamper() || Drives({"ECONOMIZER_ENABLE"}));
}

void Report::operator()(const std::vector<Place>& fields, std::vector<Value> values) {
  Advice advice{&rule_, {}, std::move(values)};
  for (const Place& place : fields) advice.fields.push_back(unit_.Held(place));
  found_.push_back(std::move(advice));
}

}  // namespace advice
