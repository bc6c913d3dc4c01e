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

  /// Sizes RspArgument to the indexes 0 to `index`: what was there is kept, or all is zero. Throws
  /// automation::Error kBadIndex when `index` is below 0.
  void ReDimRspArgument(std::int32_t index, bool isPreserve);
};

}  // namespace serverlink
