// The installer's choice of metric or imperial units, kept between runs under the current user in the
// registry.
#pragma once

#include "base/numbers.h"
#include "base/registry.h"

namespace shell {

/// The stored choice (0 metric, 1 imperial); another stored number leaves `present` as it is. Without a
/// stored choice the user's locale decides: metric only where its measurement system is the metric one.
bool ReadUnitChoice(base::Registry& registry, base::Locale& locale, const base::Numbers& numbers,
                    bool present);

void StoreUnitChoice(base::Registry& registry, bool isImperial);

}  // namespace shell
