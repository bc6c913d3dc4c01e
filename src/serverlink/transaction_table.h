// The transactions of the client under the decimal text of their sequence numbers. Owned by the client, which
// adds and removes; the receiver looks up where arriving bytes belong.
#pragma once

#include <array>
#include <charconv>
#include <memory>
#include <string_view>

#include "serverlink/wire.h"

namespace serverlink {

class TransactionTable {
 public:
  /// Nothing when there is none under that key, or when the key is no number without leading zeros.
  std::shared_ptr<CTransaction> Find(std::string_view key) const {
    int number = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
    const bool whole = error == std::errc() && end == key.data() + key.size() && !key.starts_with('0');
    return whole && number > kBeforeFirst && number <= kLastNumber ? At(static_cast<std::int16_t>(number))
                                                                   : nullptr;
  }

  /// The place of a sequence number, which is within its bounds; empty when there is no such transaction.
  std::shared_ptr<CTransaction>& At(std::int16_t number) { return places_[Place(number)]; }
  const std::shared_ptr<CTransaction>& At(std::int16_t number) const { return places_[Place(number)]; }

  void Clear() { places_.fill(nullptr); }

 private:
  static std::size_t Place(std::int16_t number) {
    return static_cast<std::size_t>(number - kBeforeFirst - 1);
  }

  std::array<std::shared_ptr<CTransaction>, kLastNumber - kBeforeFirst> places_;
};

}  // namespace serverlink
