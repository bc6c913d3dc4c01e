// An entry of a table of members that does no more than call a function of its class.
#pragma once

#include <type_traits>

#include "automation/local_object.h"

namespace simulator {

/// Calls `Function`, which takes nothing or the arguments of the call, and may answer nothing.
template <auto Function, class T>
automation::Value Run(T& self, const automation::Arguments& arguments) {
  const auto run = [&] {
    if constexpr (std::is_invocable_v<decltype(Function), T&>) {
      return (self.*Function)();
    } else {
      return (self.*Function)(arguments);
    }
  };
  if constexpr (!std::is_void_v<decltype(run())>) return run();
  run();
  return {};
}

}  // namespace simulator
