// Reassembly of answers from any bytes in any pieces, against a model that looks at one byte after the other.
#include "serverlink/receiver.h"

#include <vector>

#include "base/error.h"
#include "fuzz/support/input.h"
#include "shell/strings.h"

namespace {

using serverlink::Bytes;

/// What the bytes mean, without a thought of speed: a list of answers and whether they ran into a fault.
class Model {
 public:
  explicit Model(std::size_t open) : arguments(open), complete(open) {}

  void Piece(std::span<const std::uint8_t> piece) {
    for (std::size_t i = 0; i < piece.size() && !fault;) {
      if (left_ > 0) {
        Argument(piece[i++]);
        continue;
      }
      fault = next_ == arguments.size() || piece.size() - i < 24;
      if (fault) return;
      Header(piece.subspan(i, 24));
      i += 24;
    }
  }

  std::vector<Bytes> arguments;
  std::vector<bool> complete;
  bool fault = false;

 private:
  void Header(std::span<const std::uint8_t> header) {
    const std::size_t number = std::size_t{header[6]} << 8 | header[7];
    left_ = std::size_t{header[12]} << 24 | std::size_t{header[13]} << 16 | std::size_t{header[14]} << 8 |
            header[15];
    fault = number != 7018 + next_ || left_ >= std::size_t{1} << 31;
    if (!fault && left_ == 0) complete[next_++] = true;
  }
  void Argument(std::uint8_t byte) {
    arguments[next_].push_back(byte);
    if (--left_ == 0) complete[next_++] = true;
  }

  std::size_t next_ = 0;
  std::size_t left_ = 0;  // of the argument under way
};

struct Reassembly {
  serverlink::TransactionTable table;
  shell::Strings strings{[] { return automation::Object(); }};
  serverlink::Trace trace;
  serverlink::Receiver receiver{table, strings, trace};

  explicit Reassembly(std::size_t open) {
    receiver.SetMode(serverlink::HeaderMode::kAuthenticated);
    for (std::size_t i = 0; i < open; ++i) {
      auto& transaction = At(i) = std::make_shared<serverlink::CTransaction>();
      transaction->State = serverlink::kSent;
    }
  }

  std::shared_ptr<serverlink::CTransaction>& At(std::size_t i) {
    return table.At(static_cast<std::int16_t>(7018 + i));
  }

  /// By either of the two ways in which bytes come; false when they were refused.
  bool Piece(std::span<const std::uint8_t> piece, bool inPlace) {
    try {
      while (inPlace && !piece.empty() && !receiver.ArgumentSpace().empty()) {
        const auto space = receiver.ArgumentSpace();
        const std::size_t count = std::min(space.size(), piece.size());
        std::copy_n(piece.begin(), count, space.begin());
        receiver.ArgumentArrived(count);
        piece = piece.subspan(count);
      }
      receiver.DataArrival(piece);
      return true;
    } catch (const base::Error&) {
      return false;
    }
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::size_t open = input.Number(4);
  Model model(open);
  Reassembly reassembly(open);
  while (!input.Empty() && !model.fault) {
    const bool inPlace = input.Byte() % 2 == 0;
    const auto piece = input.Bytes(input.Number(9000));
    model.Piece(piece);
    fuzz::Check(reassembly.Piece(piece, inPlace) == !model.fault, "the same bytes are refused");
  }
  for (std::size_t i = 0; i < open; ++i) {
    const auto& transaction = *reassembly.At(i);
    const auto received = static_cast<std::size_t>(transaction.ReceivedBytesArg);
    fuzz::Check((transaction.State == serverlink::kComplete) == model.complete[i],
                "the same answers are complete");
    fuzz::Check(received == model.arguments[i].size(), "as many bytes were counted");
    fuzz::Check(
        std::equal(model.arguments[i].begin(), model.arguments[i].end(), transaction.RspArgument.begin()),
        "they are the same bytes");
    fuzz::Check(transaction.RspArgument.capacity() <= 4096 + 2 * received, "memory follows what has arrived");
    fuzz::Check(!model.complete[i] || transaction.RspArgument.size() == received,
                "nothing lies behind a whole answer");
  }
  return 0;
}
