// How often variables are sent, and how long they are waited for.
#include "advice/places.h"
#include "advice/rules.h"
#include "host/output_functions.h"

namespace advice {
namespace {

using enum Severity;

constexpr double kUsualHeartbeat =
    60;  // seconds; what the makers of sensors and this unit are delivered with

constexpr std::array<const char*, 15> kSentVariables = {
    "nvoSpaceTemp",   "nvoTerminalLoad", "nvoTermLoadInAvg", "nvoEconoEnable", "nvoEffectSetPt",
    "nvoOccState",    "nvoCtrlOutput1",  "nvoCtrlOutput2",   "nvoCtrlOutput3", "nvoCtrlOutput4",
    "nvoCtrlOutput5", "nvoCtrlOutput6",  "nvoCtrlOutput7",   "nvoFanSpeed",    "nvoUnitStatus"};
constexpr std::size_t kFirstOutput = 6;  // those from here on have a throttle of their own
constexpr std::size_t kOutputEnd = kFirstOutput + host::DeviceObjects::kOutputs;

/// A variable, or all that have no times of their own.
struct Sent {
  Value name;
  Place heartbeat;
  Place throttle;
};

Place Seconds(std::string control) { return {kSent, std::move(control), Quantity::kPlain, "sec"}; }

/// Outputs without a function send nothing that anybody waits for.
std::vector<Sent> SentBy(const Unit& unit) {
  std::vector<Sent> sent;
  for (std::size_t i = 0; i < kSentVariables.size(); ++i) {
    if (i >= kFirstOutput && i < kOutputEnd && unit.OutputFunction(i - kFirstOutput) == host::kUnassigned)
      continue;
    sent.push_back({Text(kSentVariables[i]), Seconds(At("txtNvo", i)), Seconds(At("txtOutput", i))});
  }
  sent.push_back({Word("All other variables"), Seconds("txtnciSndHrtBt"), Seconds("txtnciMinSendTime")});
  return sent;
}

void NoHeartbeat(const Unit& unit, Report& found) {
  for (const Sent& sent : SentBy(unit)) {
    if (unit.Number(sent.heartbeat) <= 0) found({sent.heartbeat}, {sent.name});
  }
}

void ThrottleTooLong(const Unit& unit, Report& found) {
  for (const Sent& sent : SentBy(unit)) {
    const double heartbeat = unit.Number(sent.heartbeat);
    if (heartbeat > 0 && unit.Number(sent.throttle) > heartbeat)
      found({sent.throttle, sent.heartbeat},
            {sent.name, unit.Shown(sent.throttle), unit.Shown(sent.heartbeat)});
  }
}

void ReceiveTimeShort(const Unit& unit, Report& found) {
  for (std::size_t i = 0; i < kReceivedVariables.size(); ++i) {
    const Place place = ReceiveTimeAt(i);
    const double time = unit.Number(place);
    if (time > 0 && time < kUsualHeartbeat)
      found({place}, {Text(kReceivedVariables[i]), unit.Shown(place),
                      unit.Figure(kUsualHeartbeat, Quantity::kPlain, "sec")});
  }
}

constexpr Check kRules[] = {
    {{"no-heartbeat", kHint, "%s1%: sent without a heartbeat.",
      "Receivers cannot tell a dead unit from a value that does not change.", "Set a heartbeat.", kPractice},
     NoHeartbeat},
    {{"throttle-too-long", kFault, "%s1%: the throttle (%s2%) is longer than the heartbeat (%s3%).",
      "The heartbeat cannot be kept.", "Set a shorter throttle or a longer heartbeat.", kPractice},
     ThrottleTooLong},
    {{"receive-time-short", kHint, "%s1% is taken for lost after %s2%; senders usually repeat every %s3%.",
      "A sender that works is taken for a dead one.", "Set a longer receive time.", kPractice},
     ReceiveTimeShort},
};

}  // namespace

std::span<const Check> NetworkRules() { return kRules; }

}  // namespace advice
