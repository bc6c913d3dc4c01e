// The whole client over a connection in memory: any sequence of calls against any behaviour of a server, and
// a model that knows only what must come of each call and which sequence number comes next.
#include "serverlink/fComm.h"

#include "fuzz/support/input.h"
#include "simulator/protocol/frame.h"
#include "tests/core/byte_socket.h"
#include "tests/core/stand_ins.h"

namespace {

using namespace std::chrono_literals;
using serverlink::Bytes;

/// Lets what a server is to send arrive piece by piece, and hands out what the client sends.
class ScriptedSocket : public tests::ByteSocket {
 public:
  enum class End { kNone, kClose, kError };
  struct Script {
    std::deque<Bytes> pieces;
    End end = End::kNone;
  };
  /// Answers a request.
  std::function<Script(const Bytes& request)> serve;
  /// Time passes only when somebody waits.
  std::chrono::steady_clock::time_point now{1h};

  void Connect(const std::string&, std::uint16_t) override {
    Close();
    connecting_ = true;
  }
  void Close() override {
    ByteSocket::Close();
    connecting_ = connected_ = false;
    script_ = {};
  }
  bool Connected() const override { return connected_; }
  void SendData(std::span<const std::uint8_t> bytes) override {
    Script more = serve(Bytes(bytes.begin(), bytes.end()));
    for (auto& piece : more.pieces) script_.pieces.push_back(std::move(piece));
    script_.end = more.end;
  }
  void Wait(std::chrono::milliseconds longest) override {
    if (std::exchange(connecting_, false)) {
      connected_ = true;
    } else if (connected_ && !script_.pieces.empty()) {
      piece_ = std::move(script_.pieces.front());
      script_.pieces.pop_front();
      Arrive(piece_);
      onDataArrival();
      std::uint8_t more;
      fuzz::Check(GetData({&more, 1}) == 0, "everything that is there is read");
    } else if (connected_ && script_.end != End::kNone) {
      const End end = script_.end;
      Close();
      end == End::kClose ? onClose() : onError("The server broke the connection.", 104);
    } else {
      now += longest;
    }
  }

 private:
  Script script_;
  Bytes piece_;  // that has arrived
  bool connecting_ = false;
  bool connected_ = false;
};

/// How the server takes a request.
enum Behaviour {
  kWhole,
  kSilent,  // after a part of the answer
  kClosing,
  kBreaking,
  kOutOfStep,
  kShortHeader,
  kSurplus,  // in the same piece as the end of the answer or in later ones
  kAnything,
  kLate,  // the whole answer, but just before the next one
};

/// What is known of the connection after a call.
enum class Trust {
  kInStep,  // connected and greeted; every request was answered, or will be before the next one
  kEnded,   // or will be as soon as the client looks
  kUnknown,
};

class Machine {
 public:
  explicit Machine(fuzz::Input& input) : input_(input) {
    socket_.serve = [this](const Bytes& request) { return Serve(request); };
    comm_.setTransactionTimeout(3);
    loop_.onTurn = [this] {
      if (loop_.turns % 32 != 1) return;  // an exception takes long
      fuzz::Check(!Succeeds([&] { comm_.ovpSetArgument({1}); }), "nothing starts inside of a call");
    };
  }

  void Run() {
    while (!input_.Empty()) Step();
    fuzz::Check(prompts_.asked.size() <= 1, "one box at most");
  }

 private:
  template <class Work>
  bool Succeeds(Work work) {
    try {
      work();
      return true;
    } catch (const automation::Error& error) {
      fuzz::Check(error.Code() == automation::kApplicationDefined && !error.Description().empty() &&
                      error.Source() == "title",
                  "every failure is the application's own, with words");
      return false;
    }
  }

  void Step() {
    switch (input_.Number(7)) {
      case 0:
        return Connect();
      case 1:
        trust_ = Trust::kEnded;
        opened_ = false;
        return comm_.ovpClose();
      case 2:
        return SetArgument();
      case 3:
        return loop_.Tick();
      default:
        return Transact(input_.Byte() % 2 == 0);
    }
  }

  void Connect() {
    headerLength_ = simulator::kGreetingHeader;
    late_.clear();
    lateHeaders_.clear();
    Plan("Ok");
    const bool succeeded = Succeeds([&] { comm_.ovpConnect("host", 2540, "hello", 3); });
    fuzz::Check(sent_ && sent_->sequence >= 7018 && sent_->sequence <= 8086, "the greeting was sent");
    fuzz::Check(std::ranges::equal(sent_->argument, std::string_view("hello")), "the greeting is as given");
    number_ = sent_->sequence;
    opened_ = false;
    headerLength_ = simulator::kFullHeader;
    Judge(succeeded);
    if (!succeeded) trust_ = Trust::kEnded;
  }

  void SetArgument() {
    const auto bytes = input_.Bytes(input_.Number(6000));
    argument_.assign(bytes.begin(), bytes.end());
    Open(Succeeds([&] { comm_.ovpSetArgument(argument_); }));
  }

  /// A number that was opened but never sent is used again.
  void Open(bool succeeded) {
    fuzz::Check(succeeded || trust_ != Trust::kInStep, "a transaction can be opened");
    if (!opened_) number_ = number_ == 8086 ? 7018 : number_ + 1;
    opened_ = true;
  }

  void Transact(bool withArgument) {
    if (!withArgument) {
      argument_.clear();
      Open(true);
    }
    Plan("");
    const auto type = withArgument ? std::optional<std::int16_t>(5) : std::nullopt;
    const bool succeeded = Succeeds([&] { comm_.ovpTransaction(1, 2, type, ""); });
    if (trust_ == Trust::kEnded) fuzz::Check(!succeeded, "a connection that ended answers nothing");
    if (trust_ != Trust::kInStep) return;
    fuzz::Check(sent_.has_value() == opened_, "it is sent just when there is one");
    if (!opened_) return fuzz::Check(!succeeded, "there was nothing to be sent");
    opened_ = false;
    fuzz::Check(sent_->sequence == number_ && sent_->argument == argument_, "the request is as it was put");
    fuzz::Check(comm_.TransactionOn(), "a transaction is recent");
    Judge(succeeded);
    if (succeeded && behaviour_ != kAnything) CheckAnswer();
  }

  void Judge(bool succeeded) {
    fuzz::Check(behaviour_ == kAnything || succeeded == (behaviour_ == kWhole || behaviour_ == kSurplus),
                "a call ends as its answer was");
    trust_ = behaviour_ == kWhole || behaviour_ == kLate        ? Trust::kInStep
             : behaviour_ == kSilent || behaviour_ == kAnything ? Trust::kUnknown
                                                                : Trust::kEnded;
  }

  void CheckAnswer() {
    fuzz::Check(comm_.ovpGetRspArgVal() == answer_, "the answer arrived whole");
    fuzz::Check(comm_.ovpGetRspArgLen() == static_cast<std::int32_t>(answer_.size()), "its length was read");
    fuzz::Check(comm_.ovpGetRspCmd() == 1 && comm_.ovpGetRspArgType() == 9, "its header was read");
  }

  void Plan(std::string_view answer) {
    sent_.reset();
    behaviour_ = static_cast<Behaviour>(input_.Number(kLate));
    if (lateHeaders_.size() > 20 && behaviour_ == kLate) behaviour_ = kWhole;
    answer_.assign(answer.begin(), answer.end());
    if (answer.empty()) answer_.resize(input_.Number(20'000), 0x33);
  }

  ScriptedSocket::Script Serve(const Bytes& request) {
    const auto header = simulator::ReadHeader(std::span(request).first(headerLength_));
    fuzz::Check(header && header->argumentLength == request.size() - headerLength_,
                "the request is well formed");
    sent_ = header->fields;
    sent_->argument.assign(request.begin() + static_cast<std::ptrdiff_t>(headerLength_), request.end());
    const Bytes answer = Answer();
    std::vector<std::size_t> headers = std::exchange(lateHeaders_, {});
    headers.push_back(late_.size());
    late_.insert(late_.end(), answer.begin(), answer.end());
    if (behaviour_ == kLate) {
      lateHeaders_ = std::move(headers);
      return {};
    }
    using End = ScriptedSocket::End;
    return {Cut(std::exchange(late_, {}), headers), behaviour_ == kClosing    ? End::kClose
                                                    : behaviour_ == kBreaking ? End::kError
                                                                              : End::kNone};
  }

  Bytes Answer() {
    simulator::Frame frame{1, sent_->sequence, 0, 9, answer_};
    if (behaviour_ == kOutOfStep) ++frame.sequence;
    Bytes bytes = simulator::WriteFrame(frame, headerLength_);
    if (behaviour_ == kSilent || behaviour_ == kClosing || behaviour_ == kBreaking)
      bytes.resize(input_.Number(bytes.size() - 1));
    if (behaviour_ == kShortHeader) bytes.resize(1 + input_.Number(headerLength_ - 2));
    if (behaviour_ == kSurplus) bytes.resize(bytes.size() + 1 + input_.Number(100));
    if (behaviour_ == kAnything) {
      const auto any = input_.Bytes(input_.Number(100));
      bytes.assign(any.begin(), any.end());
    }
    return bytes;
  }

  /// In pieces of which none ends inside of a header.
  std::deque<Bytes> Cut(const Bytes& bytes, const std::vector<std::size_t>& headers) {
    std::deque<Bytes> pieces;
    for (std::size_t start = 0, end; start < bytes.size(); start = end) {
      end = std::min(start + 1 + input_.Number(5000), bytes.size());
      for (const std::size_t header : headers) {
        if (end > header && end < header + headerLength_)
          end = std::min(header + headerLength_, bytes.size());
      }
      pieces.emplace_back(bytes.begin() + static_cast<std::ptrdiff_t>(start),
                          bytes.begin() + static_cast<std::ptrdiff_t>(end));
    }
    return pieces;
  }

  fuzz::Input& input_;
  ScriptedSocket socket_;
  tests::ManualLoop loop_;
  tests::ScriptedPrompts prompts_;
  serverlink::fComm comm_{{.socket = socket_,
                           .loop = loop_,
                           .prompts = prompts_,
                           .text = shell::ReplacePlaceholders,
                           .title = "title",
                           .now = [this] { return socket_.now; }}};

  // What the model knows.
  int number_ = 7017;
  bool opened_ = false;
  Trust trust_ = Trust::kEnded;
  Bytes argument_;
  // How the server takes the next request, and that request.
  std::size_t headerLength_ = simulator::kGreetingHeader;
  Behaviour behaviour_ = kWhole;
  Bytes answer_;
  std::optional<simulator::Frame> sent_;
  Bytes late_;                            // answers that go out with the next one
  std::vector<std::size_t> lateHeaders_;  // where they begin
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  Machine(input).Run();
  return 0;
}
