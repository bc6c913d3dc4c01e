// What went wrong in the tool itself, as a text.
#pragma once

#include <functional>
#include <string>

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

}  // namespace tests
