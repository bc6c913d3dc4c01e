#include "serverlink/wire.h"

#include <string>
#include <utility>

#include "base/error.h"

namespace serverlink {

void RaiseOverflow(std::int64_t value, std::size_t bytes) {
  throw base::Error("Overflow: " + std::to_string(value) + " does not fit into " + std::to_string(bytes) +
                    " bytes.");
}

std::int16_t ToShort(std::int64_t value) {
  if (!std::in_range<std::int16_t>(value)) RaiseOverflow(value, 2);
  return static_cast<std::int16_t>(value);
}

}  // namespace serverlink
