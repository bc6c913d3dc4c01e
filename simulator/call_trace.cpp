#include "simulator/call_trace.h"

#include <nlohmann/json.hpp>

#include "automation/error.h"
#include "base/error.h"

namespace simulator {
namespace {

using automation::Access;
using automation::Object;
using automation::Value;
using nlohmann::json;
using Kind = TracedCall::Kind;

json ToJson(const Value& value) {
  return std::visit(
      [](const auto& content) -> json {
        using T = std::decay_t<decltype(content)>;
        if constexpr (std::is_same_v<T, Object> || std::is_same_v<T, automation::List>) {
          throw base::Error("A trace holds no calls with objects or lists as arguments.");
        } else if constexpr (std::is_same_v<T, std::monostate>) {
          return nullptr;
        } else {
          return content;
        }
      },
      value.Get());
}

Value FromJson(const json& value) {
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_number_integer()) return value.get<std::int32_t>();
  if (value.is_number()) return value.get<double>();
  if (value.is_string()) return value.get<std::string>();
  if (value.is_array()) return value.get<automation::Bytes>();
  return {};
}

}  // namespace

std::string CallTrace::ToJson() const {
  json all = json::array();
  for (const Operation& operation : operations) {
    json calls = json::array();
    for (const TracedCall& call : operation.calls) {
      json arguments = json::array();
      for (const Value& value : call.arguments) arguments.push_back(simulator::ToJson(value));
      calls.push_back({call.kind, call.object, call.member, arguments, call.gives});
    }
    all.push_back({{"name", operation.name}, {"calls", calls}});
  }
  return all.dump(0);
}

CallTrace CallTrace::FromJson(std::string_view text) {
  CallTrace trace;
  try {
    for (const json& entry : json::parse(text)) {
      Operation operation{entry.at("name"), {}};
      for (const json& call : entry.at("calls")) {
        TracedCall traced{call.at(0), call.at(1), call.at(2), {}, call.at(4)};
        for (const json& value : call.at(3)) traced.arguments.push_back(simulator::FromJson(value));
        operation.calls.push_back(std::move(traced));
      }
      trace.operations.push_back(std::move(operation));
    }
  } catch (const json::exception& error) {
    throw base::Error(std::string("This is no trace of calls: ") + error.what());
  }
  return trace;
}

class CallRecorder::Target : public automation::Target {
 public:
  Target(CallRecorder& recorder, Object inner)
      : recorder_(recorder), inner_(std::move(inner)), number_(++recorder.objects_) {}
  ~Target() override { recorder_.Note({Kind::kRelease, number_, {}, {}, 0}); }
  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;

  int Number() const { return number_; }

  Value Invoke(Access access, std::string_view member, std::span<const Value> arguments) override {
    constexpr Kind kKinds[] = {Kind::kGet, Kind::kPut, Kind::kCall};  // of Access
    const std::size_t place = recorder_.Note({kKinds[static_cast<int>(access)],
                                              number_,
                                              std::string(member),
                                              {arguments.begin(), arguments.end()},
                                              0});
    Value answer = inner_.GetTarget()->Invoke(access, member, arguments);
    const auto* object = std::get_if<Object>(&answer.Get());
    if (!object || !*object) return answer;
    const auto given = std::make_shared<Target>(recorder_, *object);
    recorder_.trace_.operations.back().calls[place].gives = given->Number();
    return Object(given);
  }

 private:
  CallRecorder& recorder_;
  Object inner_;
  int number_;
};

Object CallRecorder::Created(std::string_view programId, const Object& inner) {
  const auto target = std::make_shared<Target>(*this, inner);
  Note({Kind::kCreate, 0, std::string(programId), {}, target->Number()});
  return Object(target);
}

std::size_t CallRecorder::Note(TracedCall call) {
  auto& calls = trace_.operations.back().calls;
  calls.push_back(std::move(call));
  return calls.size() - 1;
}

void CallReplay::Run(const CallTrace::Operation& operation) {
  for (const TracedCall& call : operation.calls) {
    if (call.kind == Kind::kCreate) {
      objects_[call.gives] = create_(call.member);
      continue;
    }
    if (call.kind == Kind::kRelease) {
      objects_.erase(call.object);
      continue;
    }
    constexpr Access kAccess[] = {Access::kGet, Access::kGet, Access::kPut, Access::kCall};  // of Kind
    try {
      Value answer = objects_.at(call.object)
                         .GetTarget()
                         ->Invoke(kAccess[static_cast<int>(call.kind)], call.member, call.arguments);
      if (call.gives != 0) objects_[call.gives] = answer.AsObject();
    } catch (const automation::Error&) {
      // It failed when it was recorded too; what else goes wrong shows in the number of calls.
    }
  }
}

}  // namespace simulator
