#include "shell/read_back.h"

namespace shell {
namespace {

bool SameValue(const base::Numbers& numbers, const std::string& a, const std::string& b) {
  if (a == b) return true;
  const auto first = numbers.Parse(a);
  return first && first == numbers.Parse(b);
}

struct Votes {
  int committed = 0;
  int cancelled = 0;
};

void Compare(const base::Numbers& numbers, const PageContent& before, const PageContent& typed,
             const PageContent& device, Votes& votes) {
  for (std::size_t i = 0; i < typed.size() && i < before.size() && i < device.size(); ++i) {
    if (SameValue(numbers, typed[i], before[i])) continue;
    // The device may have rounded what it took, but it never rounds back to what it had.
    ++(SameValue(numbers, device[i], before[i]) ? votes.cancelled : votes.committed);
  }
}

Votes ReadVotes(const PageContext& context, const PageSet& pages, fLoading& progress) {
  host::DeviceObjects device = context.device;
  PageFlags flags;
  SelectedTypes selections;
  PageSet reader(pages.Table());
  const PageContext apart{
      context.platform, context.settings, device,       context.strings, context.messages,    flags,
      reader,           selections,       context.work, context.network, context.objectServer};
  reader.CreatePages(apart, [](ISubForm&) {});
  reader.LoadAllPages(apart, context.network, progress);
  Votes votes;
  for (std::size_t i = 0; i < pages.Count(); ++i) {
    Compare(context.settings.numbers, pages.Filled(i), ContentOf(pages.Page(i)), reader.Filled(i), votes);
  }
  return votes;
}

}  // namespace

ReadBack ReadSaveBack(const PageContext& context, const PageSet& pages, fLoading& progress) {
  const auto text = [&context](std::string_view english) { return context.strings.GetStrings(english); };
  try {
    const Votes votes = ReadVotes(context, pages, progress);
    if (votes.committed > 0 && votes.cancelled == 0) return {SaveResult::kCommitted, {}};
    if (votes.cancelled > 0 && votes.committed == 0) return {SaveResult::kCancelled, {}};
    if (votes.committed == 0) return {SaveResult::kUnknown, text("No field shows a difference.")};
    return {SaveResult::kUnknown, text("Some fields were changed in the device, and others were not.")};
  } catch (const std::exception& error) {
    return {SaveResult::kUnknown, DescribeError(error)};
  }
}

}  // namespace shell
