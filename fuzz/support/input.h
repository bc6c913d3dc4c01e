// What every fuzz target needs: its input taken apart into small numbers and runs of bytes, and a check that
// ends the program when what must hold does not.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

namespace fuzz {

/// Gives zeros when it is used up.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

  bool Empty() const { return rest_.empty(); }
  std::uint8_t Byte() {
    const auto taken = Bytes(1);
    return taken.empty() ? std::uint8_t{0} : taken.front();
  }
  /// 0 to `highest`.
  std::size_t Number(std::size_t highest) {
    const std::size_t number = std::size_t{Byte()} << 8 | Byte();
    return number % (highest + 1);
  }
  /// As many of the next bytes as there are, at most `count`.
  std::span<const std::uint8_t> Bytes(std::size_t count) {
    const auto taken = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }

 private:
  std::span<const std::uint8_t> rest_;
};

inline void Check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

/// False when it was refused, which an `Error` tells in words.
template <class Error, class Work>
bool Takes(Work work) {
  try {
    work();
    return true;
  } catch (const Error& error) {
    Check(error.what()[0] != 0, "a refusal has words");
    return false;
  }
}

}  // namespace fuzz
