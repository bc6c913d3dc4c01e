// The record of one exchange with the server: what was sent, how far the answer has arrived, and the answer
// itself. The protocol client makes one for each request and keeps it; callers in other processes reach its
// members by name, as it is an automation class of the tool.
#pragma once

#include <cstdint>

#include "automation/local_object.h"

namespace serverlink {

using automation::Bytes;

/// Values of CTransaction::State.
inline constexpr std::int16_t kIdle = 0;       // free, or finished and consumed
inline constexpr std::int16_t kBuilding = 1;   // its request is being built
inline constexpr std::int16_t kSent = 2;       // awaits the header of the response
inline constexpr std::int16_t kReceiving = 3;  // awaits the rest of the argument
inline constexpr std::int16_t kComplete = 4;

class CTransaction : public automation::LocalClass<CTransaction> {
 public:
  static const automation::MemberOf<CTransaction> kMembers[13];

  CTransaction() { RspHeader.reserve(24); }  // every answer has one

  std::int16_t State = kIdle;
  std::int16_t SeqNumber = 0;
  std::int32_t ReceivedBytesArg = 0;
  Bytes RspArgument;  // while it arrives it may be longer than what has arrived
  Bytes RspHeader;
  Bytes SndArgument;
  /// Nobody waits for the answer any more, so its bytes are not kept. For the client alone: no member by
  /// name.
  bool IsGivenUp = false;

  /// Outside of the array a read gives 0 and a write does nothing. That is deliberate: callers rely on sizes
  /// that they computed themselves.
  std::uint8_t GetRspArgumentElement(std::int32_t index) const { return Element(RspArgument, index); }
  void SetRspArgumentElement(std::int32_t index, std::uint8_t value) { Element(RspArgument, index, value); }
  std::uint8_t GetRspHeaderElement(std::int32_t index) const { return Element(RspHeader, index); }
  void SetRspHeaderElement(std::int32_t index, std::uint8_t value) { Element(RspHeader, index, value); }
  std::uint8_t GetSndArgumentElement(std::int32_t index) const { return Element(SndArgument, index); }
  void SetSndArgumentElement(std::int32_t index, std::uint8_t value) { Element(SndArgument, index, value); }

  /// Sizes RspArgument to the indexes 0 to `index`: what was there is kept, or all is zero. Throws
  /// automation::Error kBadIndex when `index` is below 0.
  void ReDimRspArgument(std::int32_t index, bool isPreserve);

 private:
  static std::uint8_t Element(const Bytes& array, std::int32_t index);
  static void Element(Bytes& array, std::int32_t index, std::uint8_t value);
};

}  // namespace serverlink
