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

// Shows the progress window for the life of the object. Texts are English.
class ProgressShown {
 public:
  ProgressShown(fLoading& progress, const Strings& strings, std::string_view title, std::string_view label,
                std::size_t count)
      : progress_(progress), strings_(strings) {
    progress_.ShowFLoading(strings.GetStrings(title), strings.GetStrings(label), static_cast<int>(count));
  }
  ProgressShown(const ProgressShown&) = delete;
  ProgressShown& operator=(const ProgressShown&) = delete;
  ~ProgressShown() { progress_.HideFLoading(); }

  void Step(const PageEntry& entry) { progress_.AdvanceProgressBar(strings_.GetStrings(entry.listCaption)); }

 private:
  fLoading& progress_;
  const Strings& strings_;
};

// A page reports its own faults; here they end the loading.
void RequireLoaded(const PageContext& context, const PageEntry& entry) {
  if (!context.flags.errorOccurred) return;
  throw base::Error(
      context.strings.FormatStrings("The page \"%s%\" could not be loaded.", {std::string(entry.title)}));
}

}  // namespace

ControlName::ControlName(std::string_view both) {
  const auto point = both.find('.');
  if (point == std::string_view::npos) return;
  page = both.substr(0, point);
  control = both.substr(point + 1);
}

std::string PageName(const PageEntry& entry, const Strings& strings) {
  return std::string(base::Trim(strings.GetStrings(entry.listCaption)));
}

std::string PageName(std::span<const PageEntry> table, std::string_view pageClass, const Strings& strings) {
  if (pageClass == kMainWindow) return strings.GetStrings("Main window");
  const auto entry = std::ranges::find(table, pageClass, &PageEntry::pageClass);
  return entry == table.end() ? std::string(pageClass) : PageName(*entry, strings);
}

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
  ProgressShown shown(progress, context.strings, "Loading...", "Now loading", table_.size());
  host::Transaction transaction(context.transactions);
  context.flags.errorOccurred = false;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    shown.Step(table_[i]);
    if (Read(i)) Show(i);
    RequireLoaded(context, table_[i]);
  }
  transaction.Commit();
}

SaveResult PageSet::SaveAllPages(const PageContext& context, fLoading& progress,
                                 const std::function<bool()>& mayCommit) {
  const ui::WaitPointer pointer(context.platform.loop);
  ProgressShown shown(progress, context.strings, "Saving configuration tool data . . .", "Now saving",
                      pages_.size());
  const SaveResult result = RunTransaction(context, "SaveAllPages", "Main", [&] {
    bool allWritten = true;
    for (std::size_t i = 0; i < pages_.size(); ++i) {
      shown.Step(table_[i]);
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
  ProgressShown shown(progress, context.strings, "Refreshing configuration tool . . .", "Now refreshing",
                      pages_.size());
  std::vector<bool> read(pages_.size());
  try {
    host::Transaction transaction(context.transactions);
    for (std::size_t i = 0; i < pages_.size(); ++i) {
      shown.Step(table_[i]);
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
    if (!read[i] && table_[i].showsDeviceValues) unread.push_back(PageName(table_[i], context.strings));
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
