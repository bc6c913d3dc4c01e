#include "serverlink/transaction.h"

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

// Outside of the array a read of an element gives 0 and a write does nothing. That is deliberate: callers
// rely on sizes that they computed themselves.

/// An index below 0 becomes too large for any array.
std::size_t PlaceOf(const Value& index) { return static_cast<std::size_t>(index.AsWhole()); }

template <auto array>
constexpr Member Reader(std::string_view name) {
  return {name, nullptr, nullptr, [](CTransaction& record, const Arguments& arguments) {
            const Bytes& bytes = record.*array;
            const std::size_t place = PlaceOf(arguments[0]);
            return Value(place < bytes.size() ? std::int32_t{bytes[place]} : 0);
          }};
}

template <auto array>
constexpr Member Writer(std::string_view name) {
  return {name, nullptr, nullptr, [](CTransaction& record, const Arguments& arguments) {
            Bytes& bytes = record.*array;
            const auto value = Narrow<std::uint8_t>(arguments[1]);
            const std::size_t place = PlaceOf(arguments[0]);
            if (place < bytes.size()) bytes[place] = value;
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
    Reader<&CTransaction::RspArgument>("GetRspArgumentElement"),
    Writer<&CTransaction::RspArgument>("SetRspArgumentElement"),
    Reader<&CTransaction::RspHeader>("GetRspHeaderElement"),
    Writer<&CTransaction::RspHeader>("SetRspHeaderElement"),
    Reader<&CTransaction::SndArgument>("GetSndArgumentElement"),
    Writer<&CTransaction::SndArgument>("SetSndArgumentElement"),
    {"ReDimRspArgument", nullptr, nullptr, ReDim},
};

void CTransaction::ReDimRspArgument(std::int32_t index, bool isPreserve) {
  if (index < 0)
    throw automation::Error(automation::kBadIndex,
                            "An array cannot end at the index " + std::to_string(index) + ".");
  const auto size = static_cast<std::size_t>(index) + 1;
  if (isPreserve) {
    RspArgument.resize(size);
  } else {
    RspArgument.assign(size, 0);
  }
}

}  // namespace serverlink
