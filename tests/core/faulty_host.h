// A host whose calls fail as planned: it stands between the tool and the virtual building's objects, counts
// every call, lets chosen ones fail in one of the ways in which a host can, and follows the transactions.
#pragma once

#include <functional>
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
  kOtherText,  // as the plan says
};
constexpr Failure kAllFailures[] = {Failure::kApplicationError, Failure::kServerGone, Failure::kRejected,
                                    Failure::kCancelled,        Failure::kAnswerLost, Failure::kWrongType,
                                    Failure::kEmptyText,        Failure::kShortRecord};

struct FailurePlan {
  Failure failure = Failure::kApplicationError;
  std::string otherText;
  std::set<int> calls;   // counted from 1 since Arm
  bool forever = false;  // from the first of them on
  int seen = 0;
  int failed = 0;
  std::vector<std::string> concerned;  // what the failing calls were about: property, owner
  int open = 0;                        // transactions begun and not ended, as the host sees it
  int surplus = 0;                     // ends that were asked for although the tool knew of the end
  bool ended = true;                   // the tool knows that none is open
  std::function<void(int call)> onCall;

  void Arm(Failure how, std::set<int> which, bool always) {
    failure = how;
    calls = std::move(which);
    forever = always;
    seen = failed = 0;
    concerned.clear();
  }
  void Disarm() { calls.clear(); }
  bool Due() {
    ++seen;
    if (onCall) onCall(seen);
    return !calls.empty() && (calls.contains(seen) || (forever && seen > *calls.begin()));
  }
};

class FaultyTarget : public automation::Target {
 public:
  FaultyTarget(FailurePlan& plan, automation::Object inner, std::string owner)
      : plan_(plan), inner_(std::move(inner)), owner_(std::move(owner)) {}

  /// `owner` is the name of the host's object that `inner` is or belongs to.
  static automation::Object Wrap(FailurePlan& plan, const automation::Object& inner,
                                 const std::string& owner = {}) {
    return inner ? automation::Object(std::make_shared<FaultyTarget>(plan, inner, owner)) : inner;
  }

  automation::Value Invoke(automation::Access access, std::string_view member,
                           std::span<const automation::Value> arguments) override {
    const bool due = plan_.Due();
    const bool begins = member == "BeginTransaction";
    const bool ends = member == "CommitTransaction" || member == "CancelTransaction";
    if (begins) plan_.ended = false;
    plan_.surplus += ends && plan_.ended;
    if (due) NoteConcerned(member);
    if (due) Refuse();
    automation::Value answer = inner_.GetTarget()->Invoke(access, member, arguments);
    plan_.open += begins - ends;
    if (ends) plan_.ended = !due;
    if (due) answer = Spoil(access, std::move(answer));
    const auto* object = std::get_if<automation::Object>(&answer.Get());
    if (!object) return answer;
    const bool byName = member == "Item" && std::holds_alternative<std::string>(arguments[0].Get());
    return Wrap(plan_, *object, byName ? arguments[0].AsText() : owner_);
  }

 private:
  void NoteConcerned(std::string_view member) {
    const bool ofProperty = member == "Value" || member == "formatName" || member == "Precision";
    if (ofProperty) plan_.concerned.push_back(inner_.Text("Name"));
    const bool named = ofProperty || member == "MvFormatType";
    plan_.concerned.push_back(named ? owner_ : "");  // anything may be told of the others
  }

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
    if (plan_.failure == Failure::kOtherText) return automation::Value(plan_.otherText);
    const std::vector<std::string> fields = base::Split(*text, " ");
    return automation::Value(
        base::Join({fields.begin(), fields.begin() + static_cast<long>(fields.size() / 2)}, " "));
  }

  FailurePlan& plan_;
  automation::Object inner_;
  std::string owner_;
};

/// For Tool::throughHost: every object of the host fails as planned.
inline auto FailingBy(FailurePlan& plan) {
  return [&plan](std::string_view, const automation::Object& object) {
    return FaultyTarget::Wrap(plan, object);
  };
}

}  // namespace tests
