// Reassembly of answers from any bytes in any pieces, some of them given up on the way, against a model that
// looks at one byte after the other.
#include "serverlink/receiver.h"

#include <vector>

#include "base/error.h"
#include "fuzz/support/input.h"
#include "shell/strings.h"
#include "tests/core/byte_socket.h"

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

  /// The answer that is due, if there is one more.
  std::size_t Due() const { return next_; }

  std::vector<Bytes> arguments;
  std::vector<bool> complete;
  bool fault = false;

 private:
  void Header(std::span<const std::uint8_t> header) {
    const std::size_t number = std::size_t{header[6]} << 8 | header[7];
    left_ = std::size_t{header[12]} << 24 | std::size_t{header[13]} << 16 | std::size_t{header[14]} << 8 |
            header[15];
    fault = number != 7018 + next_ || left_ > 64 << 20;
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
  serverlink::Texts text = shell::ReplacePlaceholders;
  serverlink::Trace trace;
  tests::ByteSocket socket;
  serverlink::Receiver receiver{socket, table, text, trace};

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

  /// As the client does it.
  void GiveUp(std::size_t i) {
    At(i)->IsGivenUp = true;
    Bytes().swap(At(i)->RspArgument);
  }

  /// False when it was refused.
  bool Piece(std::span<const std::uint8_t> piece) {
    try {
      socket.Arrive(piece);
      receiver.DataArrival();
      return true;
    } catch (const base::Error&) {
      return false;
    }
  }
};

void CheckOne(const serverlink::CTransaction& transaction, const Bytes& argument, bool complete) {
  const auto received = static_cast<std::size_t>(transaction.ReceivedBytesArg);
  fuzz::Check((transaction.State == serverlink::kComplete) == complete, "the same answers are complete");
  fuzz::Check(received == argument.size(), "as many bytes were counted");
  const Bytes& kept = transaction.RspArgument;
  if (transaction.IsGivenUp) return fuzz::Check(kept.capacity() == 0, "nothing is kept for nobody");
  fuzz::Check(std::equal(argument.begin(), argument.end(), kept.begin()), "they are the same bytes");
  fuzz::Check(kept.capacity() <= 4096 + 2 * received, "memory follows what has arrived");
  fuzz::Check(!complete || kept.size() == received, "nothing lies behind a whole answer");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::size_t open = input.Number(4);
  Model model(open);
  Reassembly reassembly(open);
  while (!input.Empty() && !model.fault) {
    if (input.Byte() % 2 == 1 && model.Due() < open) reassembly.GiveUp(model.Due());
    const auto piece = input.Bytes(input.Number(9000));
    model.Piece(piece);
    fuzz::Check(reassembly.Piece(piece) == !model.fault, "the same bytes are refused");
  }
  for (std::size_t i = 0; i < open; ++i) CheckOne(*reassembly.At(i), model.arguments[i], model.complete[i]);
  return 0;
}
