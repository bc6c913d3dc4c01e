#include "fields/take_all.h"

namespace fields {
namespace {

// Two fields that undo each other would go on for ever.
constexpr int kMostPasses = 10;

}  // namespace

std::vector<Wanted> TakeAll(const std::vector<Wanted>& wanted, const FindField& find,
                            const base::Numbers& numbers, PagePrompts& prompts) {
  std::vector<Wanted> left;
  bool moved = true;
  for (int pass = 0; moved && pass < kMostPasses; ++pass) {
    moved = false;
    left.clear();
    for (Wanted one : wanted) {
      const Field* field = find(one.page, one.field);
      const bool decided = pass > 0 || (field && !field->stored);
      if (field && decided && SameContent(*field, numbers, field->content(), one.content)) continue;
      if (field) one.reason = prompts.Take(*field, one.content);
      if (field && one.reason.empty()) {
        moved = true;
      } else {
        left.push_back(std::move(one));
      }
    }
  }
  return left;
}

}  // namespace fields
