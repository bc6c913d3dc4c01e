// How the host's objects say no: an application-defined error with a sentence for the user and the host as
// its source.
#pragma once

#include <string>

#include "automation/error.h"

namespace simulator {

inline constexpr char kErrorSource[] = "MVPlugInLib";

[[noreturn]] inline void Refuse(const std::string& sentence) {
  throw automation::Error(automation::kApplicationDefined, sentence, kErrorSource);
}

}  // namespace simulator
