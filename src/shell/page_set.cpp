#include "shell/page_set.h"

#include <algorithm>
#include <iterator>

#include "base/error.h"
#include "base/text.h"
#include "host/transaction.h"
#include "logger/message_logger.h"
#include "shell/save_report.h"

namespace shell {
namespace {

// Shows the progress window for the life of the object.
class ProgressShown {
 public:
  ProgressShown(fLoading& progress, const std::string& title, const std::string& label, std::size_t count)
      : progress_(progress) {
    progress_.ShowFLoading(title, label, static_cast<int>(count));
  }
  ProgressShown(const ProgressShown&) = delete;
  ProgressShown& operator=(const ProgressShown&) = delete;
  ~ProgressShown() { progress_.HideFLoading(); }

 private:
  fLoading& progress_;
};

// A page reports its own faults; here they end the loading.
void RequireLoaded(const PageContext& context, const PageEntry& entry) {
  if (!context.flags.errorOccurred) return;
  throw base::Error(
      context.strings.FormatStrings("The page \"%s%\" could not be loaded.", {std::string(entry.title)}));
}

}  // namespace

fields::Translate TranslateBy(const Strings& strings) {
  return [&strings](std::string_view text, const std::vector<std::string>& arguments) {
    return strings.FormatStrings(text, arguments);
  };
}

void PageSet::Show(std::size_t index) {
  if (table_[index].showsDeviceValues) pages_[index]->ShowValue();
}

bool PageSet::Read(std::size_t index) {
  return !table_[index].showsDeviceValues || pages_[index]->ReadValue();
}

ISubForm* PageSet::FindPage(std::string_view pageClass) {
  const auto found = std::ranges::find(pages_, pageClass, [](const auto& page) { return page->Name(); });
  return found == pages_.end() ? nullptr : found->get();
}

void PageSet::CheckOutputDependencies() {
  for (const auto& page : pages_) page->FollowFunctions();
}

void PageSet::CreatePages(const PageContext& context, const std::function<void(ISubForm&)>& embed) {
  context.flags.errorOccurred = false;
  for (const PageEntry& entry : table_) {
    const PagePlace place{entry.pageClass, static_cast<int>(pages_.size()) + 1, entry.helpTopic};
    ISubForm& page = *pages_.emplace_back(entry.create(context, place));
    embed(page);
    RequireLoaded(context, entry);
  }
}

void PageSet::LoadAllPages(const PageContext& context, fLoading& progress) {
  const auto text = [&context](std::string_view english) { return context.strings.GetStrings(english); };
  const ProgressShown shown(progress, text("Loading..."), text("Now loading"), table_.size());
  host::Transaction transaction(context.transactions);
  context.flags.errorOccurred = false;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    progress.AdvanceProgressBar(text(table_[i].listCaption));
    if (Read(i)) Show(i);
    RequireLoaded(context, table_[i]);
  }
  transaction.Commit();
}

SaveResult PageSet::SaveAllPages(const PageContext& context, fLoading& progress,
                                 const std::function<bool()>& mayCommit) {
  const ui::WaitPointer pointer(context.platform.loop);
  const auto text = [&context](std::string_view english) { return context.strings.GetStrings(english); };
  const ProgressShown shown(progress, text("Saving configuration tool data . . ."), text("Now saving"),
                            pages_.size());
  const SaveResult result = RunTransaction(context, "SaveAllPages", "Main", [&] {
    bool allWritten = true;
    for (std::size_t i = 0; i < pages_.size(); ++i) {
      progress.AdvanceProgressBar(text(table_[i].listCaption));
      allWritten = pages_[i]->WriteValue() && allWritten;
    }
    return allWritten && mayCommit();
  });
  if (result == SaveResult::kCommitted) EndWriteValue();
  return result;
}

void PageSet::EndWriteValue() {
  for (const auto& page : pages_) page->EndWriteValue();
}

std::vector<std::string> PageSet::RefreshAllPages(const PageContext& context, fLoading& progress,
                                                  Showing showing) {
  const ui::WaitPointer pointer(context.platform.loop);
  const auto text = [&context](std::string_view english) { return context.strings.GetStrings(english); };
  const ProgressShown shown(progress, text("Refreshing configuration tool . . ."), text("Now refreshing"),
                            pages_.size());
  std::vector<bool> read(pages_.size());
  try {
    host::Transaction transaction(context.transactions);
    for (std::size_t i = 0; i < pages_.size(); ++i) {
      progress.AdvanceProgressBar(text(table_[i].listCaption));
      read[i] = Read(i);
    }
    transaction.Commit();
  } catch (const std::exception& error) {
    context.messages.AddMessage(DescribeError(error), "RefreshAllPages", "Main", logger::kError);
    read.assign(pages_.size(), false);
  }
  const bool all = std::ranges::find(read, false) == read.end();
  std::vector<std::string> unread;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    if (!read[i] && table_[i].showsDeviceValues) unread.emplace_back(base::Trim(text(table_[i].listCaption)));
    if (read[i] && (all || showing == Showing::kWhatWasRead)) Show(i);
  }
  return unread;
}

bool PageSet::AnyPageChanged() const {
  bool changed = false;
  for (const auto& page : pages_) changed = page->IsChanged() || changed;  // every page is asked
  return changed;
}

fields::FieldList PageSet::Fields(const Strings& strings) const {
  std::vector<fields::Field> all;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    if (table_[i].showsDeviceValues)
      std::ranges::move(pages_[i]->ListFields(TranslateBy(strings)), std::back_inserter(all));
  }
  return fields::FieldList(std::move(all));
}

void PageSet::ReInitializeStrings() {
  for (const auto& page : pages_) page->ReInitializeStrings();
}

}  // namespace shell
