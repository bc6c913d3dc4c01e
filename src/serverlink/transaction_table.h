// The transactions of the client under the decimal text of their sequence numbers. Owned by the client, which
// adds and removes; the receiver looks up where arriving bytes belong.
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "base/numbers.h"
#include "serverlink/wire.h"

namespace serverlink {

class TransactionTable {
 public:
  /// Nothing when there is none under that key, or when the key is no number without leading zeros.
  std::shared_ptr<CTransaction> Find(std::string_view key) const {
    const auto number = base::ParseWhole<std::int16_t>(key).value_or(kBeforeFirst);
    if (key.starts_with('0') || number <= kBeforeFirst || number > kLastNumber) return nullptr;
    return At(number);
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
