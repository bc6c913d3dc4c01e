#include "bench/win32/host/replay.h"

#include <chrono>
#include <fstream>
#include <future>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

#include "automation/local_object.h"
#include "base/error.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/com_server.h"
#include "platform/win32/system/text.h"
#include "simulator/call_trace.h"

namespace simhost {
namespace {

using Clock = std::chrono::steady_clock;
using nlohmann::json;

simulator::CallTrace ReadTrace(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw base::Error("The file " + file + " cannot be read.");
  return simulator::CallTrace::FromJson(std::string(std::istreambuf_iterator<char>(stream), {}));
}

constexpr GUID kBareToolClass = {
    0x6b0b7c52, 0x2f0a, 0x4a2e, {0x93, 0x1d, 0x84, 0x0e, 0x5c, 0x27, 0x66, 0xd1}};
constexpr char kSendCommand[] = "SendCommand";

/// What a tool would be that only makes calls, while the host waits in a call of its own.
class BareTool : public automation::LocalClass<BareTool> {
 public:
  explicit BareTool(std::function<void()> work) : work_(std::move(work)) {}

  static const automation::MemberOf<BareTool> kMembers[1];

 private:
  std::function<void()> work_;
};

const automation::MemberOf<BareTool> BareTool::kMembers[1] = {
    {kSendCommand, nullptr, nullptr, [](BareTool& tool, const automation::Arguments&) {
       tool.work_();
       return automation::Value();
     }}};

/// A trace that is worked through on the host's thread: its first operation, the load, at the command of
/// another host, the others after it.
class Replay {
 public:
  explicit Replay(simulator::CallTrace trace) : trace_(std::move(trace)) {}

  std::promise<void> loaded;

  void Offer() {
    const auto make = [this] {
      return std::make_shared<BareTool>([this] {
        Next();
        loaded.set_value();
      });
    };
    server_ = std::make_unique<win32::ComServer>(
        std::vector<win32::ServerClass>{{kBareToolClass, {}, "Calls without a tool", make}},
        win32::ComServer::Options{});
  }

  /// Milliseconds that each operation took.
  json Rest() {
    while (done_ < trace_.operations.size()) Next();
    calls_.reset();
    server_.reset();
    return times_;
  }

 private:
  void Next() {
    const auto& operation = trace_.operations[done_++];
    const auto start = Clock::now();
    calls_->Run(operation);
    times_[operation.name] = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
  }

  simulator::CallTrace trace_;
  std::unique_ptr<simulator::CallReplay> calls_ = std::make_unique<simulator::CallReplay>(
      [](const std::string& programId) { return win32::CreateObject(programId); });
  std::size_t done_ = 0;
  json times_;
  std::unique_ptr<win32::ComServer> server_;
};

}  // namespace

void ReplayCalls(Stage& stage, Words words) {
  const auto replay = std::make_shared<Replay>(ReadTrace(words[0].text));
  stage.OnHost([replay](Host&) { replay->Offer(); });
  if (replay->loaded.get_future().wait_for(stage.patience.limit) != std::future_status::ready)
    throw base::Error("the host does not send its command");
  std::ofstream(words[1].text) << stage.OnHost([replay](Host&) { return replay->Rest(); });
}

void CommandReplay(Stage& stage, Words) {
  stage.patience.Until([&]() -> std::string {
    return stage.OnHost([](Host&) {
      void* tool = nullptr;
      const HRESULT result =
          CoCreateInstance(kBareToolClass, nullptr, CLSCTX_LOCAL_SERVER, __uuidof(IDispatch), &tool);
      if (FAILED(result)) return "nobody makes the calls: " + win32::SystemText(result);
      const win32::ComPtr<IDispatch> object(static_cast<IDispatch*>(tool));
      win32::FromDispatch(object.Get()).Call(kSendCommand);
      return std::string();
    });
  });
}

}  // namespace simhost
