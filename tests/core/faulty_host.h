// A host whose calls fail as planned: it stands between the tool and the virtual building's objects, counts
// every call, and lets chosen ones fail in one of the ways in which a host can.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/error.h"
#include "automation/object.h"
#include "base/text.h"

namespace tests {

enum class Failure {
  kApplicationError,
  kServerGone,
  kRejected,
  kCancelled,   // a call that hung until the user gave it up
  kAnswerLost,  // carried out, but the answer does not arrive
  kWrongType,
  kEmptyText,
  kShortRecord,
};
constexpr Failure kAllFailures[] = {Failure::kApplicationError, Failure::kServerGone, Failure::kRejected,
                                    Failure::kCancelled,        Failure::kAnswerLost, Failure::kWrongType,
                                    Failure::kEmptyText,        Failure::kShortRecord};

struct FailurePlan {
  Failure failure = Failure::kApplicationError;
  std::set<int> calls;   // counted from 1 since Arm
  bool forever = false;  // from the first of them on
  int seen = 0;
  int failed = 0;
  int transactions = 0;  // begun and not ended, as the host sees it

  void Arm(Failure how, std::set<int> which, bool always) {
    failure = how;
    calls = std::move(which);
    forever = always;
    seen = failed = 0;
  }
  void Disarm() { calls.clear(); }
  bool Due() {
    ++seen;
    return !calls.empty() && (calls.contains(seen) || (forever && seen > *calls.begin()));
  }
};

class FaultyTarget : public automation::Target {
 public:
  FaultyTarget(FailurePlan& plan, automation::Object inner) : plan_(plan), inner_(std::move(inner)) {}

  static automation::Object Wrap(FailurePlan& plan, const automation::Object& inner) {
    return inner ? automation::Object(std::make_shared<FaultyTarget>(plan, inner)) : inner;
  }

  automation::Value Invoke(automation::Access access, std::string_view member,
                           std::span<const automation::Value> arguments) override {
    const bool due = plan_.Due();
    if (due) Refuse();
    automation::Value answer = inner_.GetTarget()->Invoke(access, member, arguments);
    if (member == "BeginTransaction") ++plan_.transactions;
    if (member == "CommitTransaction" || member == "CancelTransaction") --plan_.transactions;
    if (due) answer = Spoil(access, std::move(answer));
    if (const auto* object = std::get_if<automation::Object>(&answer.Get())) return Wrap(plan_, *object);
    return answer;
  }

 private:
  void Refuse() {
    const std::pair<Failure, automation::Error> refusals[] = {
        {Failure::kApplicationError, {automation::kApplicationDefined, "The host refuses.", "Host"}},
        {Failure::kServerGone, {0x800706BA, "The RPC server is unavailable."}},
        {Failure::kRejected, {0x80010001, "Call was rejected by callee."}},
        {Failure::kCancelled, {0x80010002, "Call was canceled by the message filter."}},
    };
    for (const auto& [failure, error] : refusals) {
      if (failure != plan_.failure) continue;
      ++plan_.failed;
      throw error;
    }
  }

  automation::Value Spoil(automation::Access access, automation::Value answer) {
    if (plan_.failure == Failure::kAnswerLost) {
      ++plan_.failed;
      throw automation::Error(0x800706BE, "The remote procedure call failed.");
    }
    if (access == automation::Access::kPut || answer.IsEmpty()) return answer;
    ++plan_.failed;
    const auto* text = std::get_if<std::string>(&answer.Get());
    if (plan_.failure == Failure::kWrongType) {
      return text ? automation::Value(automation::Bytes{1, 2}) : automation::Value("wrong");
    }
    if (!text) return automation::Value();
    if (plan_.failure == Failure::kEmptyText) return automation::Value("");
    const std::vector<std::string> fields = base::Split(*text, " ");
    return automation::Value(
        base::Join({fields.begin(), fields.begin() + static_cast<long>(fields.size() / 2)}, " "));
  }

  FailurePlan& plan_;
  automation::Object inner_;
};

}  // namespace tests
