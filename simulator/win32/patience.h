// Bounded waiting: looks again and again until everything is as wanted, and says what is still amiss when the
// time is up. Every wait of a script goes through it, so a tool that hangs ends the script with a message.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace simhost {

struct Patience {
  std::chrono::milliseconds limit{15000};
  /// Asked at every look; throws when further waiting is in vain.
  std::function<void()> interrupt;

  Patience With(std::chrono::milliseconds other) const { return {other, interrupt}; }

  /// `amiss` tells what is still missing, or nothing. Throws base::Error with its last words and the time
  /// waited.
  void Until(const std::function<std::string()>& amiss) const;
  /// The same with one complaint for as long as `holds` answers no.
  template <class Holds>
  void Until(Holds holds, const std::string& complaint) const {
    Until([&] { return holds() ? std::string() : complaint; });
  }
};

}  // namespace simhost
