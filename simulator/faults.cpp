#include "simulator/faults.h"

#include <utility>

#include "base/error.h"
#include "base/text.h"

namespace simulator {

void Faults::StartCounting() {
  counts_.clear();
  counting_ = active_ = true;
}

std::uint64_t Faults::Count(std::string_view member) const {
  const auto found = counts_.find(member);
  return found == counts_.end() ? 0 : found->second;
}

void Faults::Fail(Fault fault) {
  if (fault.call == 0) throw base::Error("Calls are counted from 1.");
  fault_ = std::move(fault);
  seen_ = 0;
  armed_ = active_ = true;
}

void Faults::Slow(std::string_view className, std::string_view member) {
  if (counting_) {
    last_ = std::chrono::steady_clock::now();
    if (counts_.empty()) first_ = last_;
    ++counts_[std::string(className) + "." + std::string(member)];
  }
  if (armed_ && !fault_.loseAnswer && Matches(className, member)) Strike();
}

void Faults::After(std::string_view className, std::string_view member) {
  if (armed_ && fault_.loseAnswer && Matches(className, member)) Strike();
}

bool Faults::Matches(std::string_view className, std::string_view member) const {
  if (fault_.member.empty()) return true;
  return base::EqualsNoCase(fault_.member, std::string(className) + "." + std::string(member));
}

void Faults::Strike() {
  if (++seen_ < fault_.call) return;
  if (fault_.once) armed_ = false;
  if (!fault_.instead) throw automation::Error(fault_.code, fault_.text);
  fault_.instead();
}

}  // namespace simulator
