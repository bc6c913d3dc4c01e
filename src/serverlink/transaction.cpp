#include "serverlink/transaction.h"

#include <limits>

namespace serverlink {

using automation::Arguments;
using automation::Value;

namespace {

using Member = automation::MemberOf<CTransaction>;

/// A whole number that must fit into the narrower type of the member.
template <class Number>
Number Narrow(const Value& value) {
  const std::int32_t whole = value.AsWhole();
  if (std::in_range<Number>(whole)) return static_cast<Number>(whole);
  throw automation::Error(automation::kOverflow, "Overflow: " + std::to_string(whole) + " does not fit.");
}

template <auto field>
constexpr Member Number(std::string_view name) {
  return {name, [](CTransaction& record, const Arguments&) { return Value(std::int32_t{record.*field}); },
          [](CTransaction& record, const Value& value) {
            record.*field = Narrow<std::remove_reference_t<decltype(record.*field)>>(value);
          }};
}

template <auto field>
constexpr Member Array(std::string_view name) {
  return {name, [](CTransaction& record, const Arguments&) { return Value(record.*field); },
          [](CTransaction& record, const Value& value) { record.*field = value.AsBytes(); }};
}

template <auto get>
constexpr Member Reader(std::string_view name) {
  return {name, nullptr, nullptr, [](CTransaction& record, const Arguments& arguments) {
            return Value(std::int32_t{(record.*get)(arguments[0].AsWhole())});
          }};
}

template <auto set>
constexpr Member Writer(std::string_view name) {
  return {name, nullptr, nullptr, [](CTransaction& record, const Arguments& arguments) {
            (record.*set)(arguments[0].AsWhole(), Narrow<std::uint8_t>(arguments[1]));
            return Value();
          }};
}

Value ReDim(CTransaction& record, const Arguments& arguments) {
  record.ReDimRspArgument(arguments[0].AsWhole(), arguments[1].AsBool());
  return {};
}

}  // namespace

// In the order of the type library; a caller's member id is the place in the table plus 1.
const Member CTransaction::kMembers[13] = {
    Number<&CTransaction::State>("State"),
    Number<&CTransaction::SeqNumber>("SeqNumber"),
    Number<&CTransaction::ReceivedBytesArg>("ReceivedBytesArg"),
    Array<&CTransaction::RspArgument>("RspArgument"),
    Array<&CTransaction::RspHeader>("RspHeader"),
    Array<&CTransaction::SndArgument>("SndArgument"),
    Reader<&CTransaction::GetRspArgumentElement>("GetRspArgumentElement"),
    Writer<&CTransaction::SetRspArgumentElement>("SetRspArgumentElement"),
    Reader<&CTransaction::GetRspHeaderElement>("GetRspHeaderElement"),
    Writer<&CTransaction::SetRspHeaderElement>("SetRspHeaderElement"),
    Reader<&CTransaction::GetSndArgumentElement>("GetSndArgumentElement"),
    Writer<&CTransaction::SetSndArgumentElement>("SetSndArgumentElement"),
    {"ReDimRspArgument", nullptr, nullptr, ReDim},
};

void CTransaction::ReDimRspArgument(std::int32_t index, bool isPreserve) {
  if (index < 0) {
    throw automation::Error(automation::kBadIndex,
                            "An array cannot end at the index " + std::to_string(index) + ".");
  }
  const auto size = static_cast<std::size_t>(index) + 1;
  if (isPreserve) {
    RspArgument.resize(size);
  } else {
    RspArgument.assign(size, 0);
  }
}

std::uint8_t CTransaction::Element(const Bytes& array, std::int32_t index) {
  const auto place = static_cast<std::size_t>(index);  // below 0 it becomes too large for any array
  return place < array.size() ? array[place] : std::uint8_t{0};
}

void CTransaction::Element(Bytes& array, std::int32_t index, std::uint8_t value) {
  const auto place = static_cast<std::size_t>(index);
  if (place < array.size()) array[place] = value;
}

}  // namespace serverlink
