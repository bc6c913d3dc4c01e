// What went wrong, as a text: in the tool itself, or as its host receives it.
#pragma once

#include <cstdio>
#include <functional>
#include <string>

#include "automation/error.h"
#include "base/error.h"

namespace tests {

inline std::string FaultOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const base::Error& error) {
    return error.what();
  }
  return "";
}

/// The error that the host receives, as "code: description | source".
inline std::string ErrorOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const automation::Error& error) {
    char code[16];
    std::snprintf(code, sizeof code, "%X", static_cast<unsigned>(error.Code()));
    return std::string(code) + ": " + error.Description() + " | " + error.Source();
  }
  return "no error";
}

/// The code of the error that the host receives, 0 when there is none.
inline std::uint32_t CodeOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const automation::Error& error) {
    return error.Code();
  }
  return 0;
}

/// One that the tool raises itself.
inline std::string Raised(const std::string& text) {
  return "80040000: " + text + " | KV-TARN Configuration";
}

}  // namespace tests
