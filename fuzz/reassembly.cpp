// Reassembly of answers from any bytes in any pieces, some of them given up on the way, against a model that
// looks at one byte after the other.
#include "base/error.h"
#include "fuzz/support/input.h"
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
      fault = due == arguments.size() || piece.size() - i < 24;
      if (fault) return;
      Header(piece.subspan(i, 24));
      i += 24;
    }
  }

  std::vector<Bytes> arguments;
  std::vector<bool> complete;
  bool fault = false;
  std::size_t due = 0;  // the answer that comes next, if there is one more

 private:
  void Header(std::span<const std::uint8_t> header) {
    const std::size_t number = std::size_t{header[6]} << 8 | header[7];
    left_ = std::size_t{header[12]} << 24 | std::size_t{header[13]} << 16 | std::size_t{header[14]} << 8 |
            header[15];
    fault = number != 7018 + due || left_ > 64 << 20;
    if (!fault && left_ == 0) complete[due++] = true;
  }
  void Argument(std::uint8_t byte) {
    arguments[due].push_back(byte);
    if (--left_ == 0) complete[due++] = true;
  }

  std::size_t left_ = 0;  // of the argument under way
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
  tests::Awaiting answers;
  answers.Await(open);
  while (!input.Empty() && !model.fault) {
    if (input.Byte() % 2 == 1 && model.due < open) {  // given up as the client does it
      answers.At(model.due).IsGivenUp = true;
      Bytes().swap(answers.At(model.due).RspArgument);
    }
    const auto piece = input.Bytes(input.Number(9000));
    model.Piece(piece);
    fuzz::Check(fuzz::Takes<base::Error>([&] { answers.Arrive(piece); }) == !model.fault,
                "the same bytes are refused");
  }
  for (std::size_t i = 0; i < open; ++i) CheckOne(answers.At(i), model.arguments[i], model.complete[i]);
  return 0;
}
