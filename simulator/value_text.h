// Values as texts: formatting in the units and decimals asked for, and parsing with range check. Every
// refusal is an automation::Error (application-defined) whose sentence names the property, the text and the
// range in the unit in use.
#pragma once

#include <string>
#include <string_view>

#include "base/numbers.h"
#include "simulator/catalogue.h"

namespace simulator {

/// How one property is being shown: the decimals act on kNumber fields only; -1 means each field's own.
struct Presentation {
  Format format;
  int precision = -1;
  base::Numbers numbers;
};

/// How many characters a text in UTF-8 has.
std::size_t Characters(std::string_view text);

/// The fields joined by single blanks.
std::string FormatValue(const Presentation& presentation, const Fields& value);

/// The value that `text` stands for. A field that is shown by the same number or word as now keeps its stored
/// value, so that reading and writing back in any unit changes nothing. `property` names the property in
/// refusals.
Fields ParseValue(const Presentation& presentation, std::string_view property, std::string_view text,
                  const Fields& present);

}  // namespace simulator
