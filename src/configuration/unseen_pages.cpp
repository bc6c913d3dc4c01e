#include "configuration/unseen_pages.h"

#include <algorithm>
#include <iterator>

#include "base/error.h"
#include "base/text.h"
#include "logger/message_logger.h"
#include "shell/save_report.h"

namespace configuration {
namespace {

std::vector<shell::PageEntry> WithValues(std::span<const shell::PageEntry> table) {
  std::vector<shell::PageEntry> entries;
  std::ranges::copy_if(table, std::back_inserter(entries), &shell::PageEntry::showsDeviceValues);
  return entries;
}

shell::Platform WithoutWindows(const shell::Platform& platform, ui::Prompts& prompts) {
  shell::Platform unseen = platform.Asking(prompts);
  unseen.toolkit = nullptr;
  return unseen;
}

}  // namespace

ui::Answer UnseenPages::Nobody::Ask(const ui::Prompt& prompt) {
  return prompt.buttons == ui::Buttons::kOk         ? ui::Answer::kOk
         : prompt.buttons == ui::Buttons::kOkCancel ? ui::Answer::kCancel
                                                    : ui::Answer::kNo;
}

UnseenPages::UnseenPages(const Surroundings& surroundings, shell::Strings& strings,
                         host::Transactions& transactions)
    : progress_(surroundings.progress),
      table_(WithValues(surroundings.table)),
      platform_(WithoutWindows(surroundings.platform, prompts_)),
      transactions_(transactions),
      context_{platform_, surroundings.settings, device_, strings,       *this, flags_,
               pages_,    selections_,           *this,   transactions_, none_, none_},
      pages_(table_) {
  pages_.CreatePages(context_, [](shell::ISubForm&) {});
  const shell::Strings::Hold hold(strings);
  pages_.ReInitializeStrings();
}

void UnseenPages::Load(const host::DeviceObjects& device, bool imperial) {
  device_ = device;
  device_.IsImperial = imperial;
  told_.clear();
  try {
    pages_.ReInitializeStrings();  // units stand beside the boxes
    pages_.LoadAllPages(context_, progress_);
    for (std::size_t i = 0; i < pages_.Count(); ++i) pages_.Page(i).SettingsOutdated();
  } catch (const std::exception& error) {
    told_.push_back(shell::DescribeError(error));
    throw base::Error(base::Join(told_, "\r\n"));
  }
}

void UnseenPages::ReadSettings() {
  for (std::size_t i = 0; i < pages_.Count(); ++i) pages_.Page(i).ReadSettings();
}

std::vector<fields::Wanted> UnseenPages::Take(const std::vector<fields::Wanted>& wanted) {
  flags_.pageSelected = true;
  const fields::FieldList fields = Fields();
  return fields::TakeAll(
      wanted, [&fields](auto page, auto field) { return fields.Find(page, field); },
      context_.settings.numbers, prompts_);
}

UnseenPages::Saved UnseenPages::Save(const std::function<bool()>& mayCommit) {
  told_.clear();
  refused_ = false;
  const shell::SaveResult ended = pages_.SaveAllPages(context_, progress_, mayCommit);
  const shell::SaveReport report = shell::ReportSave(context_, ended, "Save", "Configuration");
  if (report.result == shell::SaveResult::kCommitted && ended != report.result) pages_.EndWriteValue();
  if (!report.reason.empty()) told_.push_back(report.reason);
  const auto refused = [](const host::Written& entry) { return !entry.refused.empty(); };
  refused_ = refused_ || std::ranges::any_of(transactions_.GetJournal().Entries(), refused);
  return {report.result, refused_, base::Join(told_, "\r\n")};
}

void UnseenPages::AddMessage(std::string_view message, std::string_view, std::string_view, int level) {
  if ((level == logger::kError || level == logger::kExclamation) && !message.empty())
    told_.emplace_back(message);
}

}  // namespace configuration
