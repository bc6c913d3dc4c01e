// Advice that a person has accepted as it is, with a name, a time and a reason. It holds as long as every
// field concerned holds what it held then; a change of units or notation is none. Kept in files and records
// by others.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "advice/advice.h"
#include "configuration/document.h"

namespace advice {

struct Accepted {
  std::string rule;               // its name
  std::vector<Concerned> fields;  // with what they held when it was accepted
  std::string who;
  std::string when;  // UTC: "2026-11-22T14:05:00Z"
  std::string reason;
};

Accepted Accept(const Advice& advice, std::string who, std::string when, std::string reason);

/// Whether this is about the same rule and fields, and nothing has changed since.
bool Holds(const Accepted& accepted, const Advice& advice);

/// As a file has it, and back; a line that somebody has damaged holds for nothing.
configuration::Line ToLine(const Accepted& accepted);
Accepted FromLine(const configuration::Line& line);

/// The acceptance of an advice that still holds, the latest of several; nothing: the advice is open.
const Accepted* AcceptanceOf(const Advice& advice, std::span<const Accepted> accepted);

}  // namespace advice
