// Texts of a host through everything that reads them: records, numbers, type names, placeholders of
// translations, and values in every format of the type catalogue.
#include <cmath>

#include "automation/error.h"
#include "base/error.h"
#include "base/numbers.h"
#include "base/record.h"
#include "base/text.h"
#include "fuzz/support/input.h"
#include "host/device_tree.h"
#include "shell/strings.h"
#include "simulator/catalogue.h"
#include "simulator/value_text.h"

namespace {

const std::vector<std::string> kFormats = base::Split(
    "SCPTsetPnts#SI SCPTsetPnts#US UCPTobjectOptions UCPTroofTopOutputType UCPTpressurePIDparam#US "
    "SNVT_switch SCPTlocation UCPTextraConfig UCPTweightAvgMaxInOffset#DegF UCPTCO2Alarm SCPTlimitCO2 "
    "UCPTsupplyPressureAlarm#US",
    " ");

void Records(std::string_view text, std::size_t place) {
  base::Record record(text);
  fuzz::Check(record.Join() == text, "a record that nobody changed comes back as it was");
  const std::size_t count = record.Count();
  if (place >= count) return;
  record.Set(place, "x");
  fuzz::Check(record.Count() == count && record.Field(place) == "x", "one field is replaced");
  const base::Record again(record.Join());
  fuzz::Check(again.Count() == count, "and no other is moved");
}

void Numbers(std::string_view text, char decimal) {
  const base::Numbers numbers(decimal);
  fuzz::Check(numbers.Parse(text).has_value() == numbers.IsNumber(text), "one opinion on what is a number");
  const auto value = base::ParseEither(numbers, text);
  const bool fits = fuzz::Takes<base::Error>([&] {
    const double whole = numbers.ToInt16(text);
    fuzz::Check(value && std::abs(whole - *value) <= 0.5, "a whole number is the nearest one");
  });
  fuzz::Check(fits || !value || *value < -32768.4 || *value > 32767.4, "what fits is taken");
  if (value) fuzz::Check(numbers.Parse(numbers.Text(*value)).has_value(), "a shown number is one");
}

void Values(std::string_view format, int precision, std::string_view text) {
  static const simulator::TypeCatalogue catalogue(SIM_DATA_DIR "/types.json");
  const simulator::Presentation presentation{catalogue.FindFormat(format), precision, base::Numbers()};
  fuzz::Takes<automation::Error>([&] {
    const auto value = simulator::ParseValue(presentation, "value", text, {});
    const std::string shown = simulator::FormatValue(presentation, value);
    fuzz::Check(simulator::ParseValue(presentation, "value", shown, value) == value,
                "a value that is shown is taken again");
  });
  fuzz::Takes<automation::Error>([&] { catalogue.FindFormat(text); });
}

void Texts(std::string_view text) {
  const shell::Strings strings([] { return automation::Object(); });
  fuzz::Check(strings.GetStrings(text) == text, "an unknown text is shown as it is");
  fuzz::Takes<base::Error>([&] { strings.FormatStrings(text, {"a", "b"}); });
  host::BareType(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::size_t place = input.Byte();
  const char decimal = input.Byte() % 2 == 0 ? '.' : ',';
  const std::string& format = kFormats[input.Number(kFormats.size() - 1)];
  const int precision = static_cast<int>(input.Number(10)) - 1;
  const auto rest = input.Bytes(4096);
  const std::string_view text(reinterpret_cast<const char*>(rest.data()), rest.size());
  Records(text, place);
  Numbers(text, decimal);
  Values(format, precision, text);
  Texts(text);
  return 0;
}
