// The unit as the rules see it: numbers of the fields in metric units, the functions of its inputs and
// outputs, and what follows from them. A number that is none, or is not known, is NaN: no comparison with it
// holds, so that a rule stays silent. Lives for one evaluation.
#pragma once

#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "advice/advice.h"
#include "host/device_tree.h"

namespace advice {

/// What a number counts, where the contents depend on the units in use.
enum class Quantity {
  kPlain,
  kTemperature,
  kDifference,
  kEnthalpy,
  kPressure,
  kGainPerDegree,
  kGainPerPressure
};

struct Place {
  std::string_view page;
  std::string control;
  Quantity quantity = Quantity::kPlain;
  const char* unit = "";  // English; of a plain number
};

/// The control of an array.
std::string At(std::string_view array, std::size_t index);

/// Numbers closer than this, read in other units and rounded to what is shown, may be the same.
inline constexpr double kRounding = 0.02;
/// By more than rounding.
bool Less(double a, double b);

class Unit {
 public:
  explicit Unit(const Input& input);

  bool Known(const Place& place) const { return Content(place).has_value(); }
  bool Is(const Place& place, std::string_view content) const { return Content(place) == content; }
  /// In metric units.
  double Number(const Place& place) const;
  /// As a person reads it, with its unit.
  Value Shown(const Place& place) const;
  /// A figure in metric units, in those in use.
  Value Figure(double metric, Quantity quantity, const char* unit = "") const;
  Concerned Held(const Place& place) const;

  /// Functions by index from 0, in upper case.
  const std::string& OutputFunction(std::size_t output) const { return outputs_[output]; }
  const std::string& InputFunction(std::size_t input) const { return inputs_[input]; }
  /// Whether an output's function begins with one of these.
  bool Drives(std::initializer_list<std::string_view> beginnings) const;
  bool HasInput(std::string_view function) const;

  bool Heats() const { return Drives({"HEAT", "REVERSING_VALVE"}); }
  bool CoolsMechanically() const { return Drives({"COOL", "HEAT_COOL"}); }
  bool Cools() const { return CoolsMechanically() || Economizes(); }
  bool HeatsOrCools() const { return Heats() || Cools(); }
  bool HasDamper() const { return Drives({"FRESH_AIR_DAMPER"}); }
  bool ControlsHumidity() const { return Drives({"HUMIDIFIER", "DEHUMIDIFIER"}); }
  bool ControlsPressure() const { return Drives({"FAN_SPEED_MOD", "BYPASS_DAMPER_MOD"}); }
  bool Economizes() const;

 private:
  std::optional<std::string> Content(const Place& place) const {
    return input_.contents(place.page, place.control);
  }

  const Input& input_;
  std::array<std::string, host::DeviceObjects::kOutputs> outputs_;
  std::array<std::string, host::DeviceObjects::kInputs> inputs_;
};

/// Takes what a rule finds.
class Report {
 public:
  Report(const Unit& unit, const Rule& rule, std::vector<Advice>& found)
      : unit_(unit), rule_(rule), found_(found) {}

  void operator()(const std::vector<Place>& fields, std::vector<Value> values = {});

 private:
  const Unit& unit_;
  const Rule& rule_;
  std::vector<Advice>& found_;
};

/// One line of a table of rules.
struct Check {
  Rule rule;
  void (*find)(const Unit& unit, Report& found);
};

inline Value Word(const char* key) { return {{}, key}; }
inline Value Text(std::string_view text) { return {std::string(text)}; }

}  // namespace advice
