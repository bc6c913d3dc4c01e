#include "shell/save_report.h"

#include "base/text.h"
#include "fields/caption.h"
#include "logger/message_logger.h"

namespace shell {
namespace {

/// The caption of the field that was written, or the name of the property where no control shows it.
std::string NameOf(const PageContext& context, const host::Difference& field) {
  const auto point = field.control.find('.');
  ISubForm* page =
      point == std::string::npos ? nullptr : context.pages.FindPage(field.control.substr(0, point));
  ui::Control* control = page ? page->Find(field.control.substr(point + 1)) : nullptr;
  if (!control) return field.name;
  const auto* option = dynamic_cast<const ui::OptionButton*>(control);
  const std::string path =
      fields::PathOf(option ? fields::CaptionOfGroup(*option) : fields::CaptionOf(*control));
  return path.empty() ? field.name : path;
}

std::string Lines(const PageContext& context, const std::vector<host::Difference>& differences) {
  const std::string text = context.strings.GetStrings("%s1%: %s2% was written, the device holds %s3%");
  std::vector<std::string> lines;
  for (const host::Difference& field : differences) {
    lines.push_back(ReplacePlaceholders(text, {NameOf(context, field), field.written, field.held}));
  }
  return base::Join(lines, "\r\n");
}

SaveReport Settle(const PageContext& context, std::string_view routine, std::string_view location) {
  const auto text = [&context](std::string_view english) { return context.strings.GetStrings(english); };
  const host::Verdict verdict = host::JudgeLostCommit(context.transactions.GetJournal());
  if (verdict.result == SaveResult::kUnknown) {
    return {SaveResult::kUnknown, text("Some fields were changed in the device, and others were not.") +
                                      "\r\n" + Lines(context, verdict.differences)};
  }
  context.messages.AddMessage(text("The host did not confirm the save; the device was read back."), routine,
                              location, logger::kExclamation);
  return {verdict.result, {}};
}

}  // namespace

SaveResult RunTransaction(const PageContext& context, std::string_view routine, std::string_view location,
                          const std::function<bool()>& work) {
  SaveResult result = SaveResult::kCancelled;
  try {
    host::Transaction transaction(context.transactions);
    if (work() && !context.flags.sessionEnds) {
      result = SaveResult::kUnknown;  // until the host has answered
      transaction.Commit();
      result = SaveResult::kCommitted;
    } else {
      transaction.Cancel();
    }
  } catch (const std::exception& error) {
    context.messages.AddMessage(DescribeError(error), routine, location, logger::kError);
  }
  return result;
}

SaveReport ReportSave(const PageContext& context, SaveResult result, std::string_view routine,
                      std::string_view location) {
  if (result == SaveResult::kCancelled) return {result, {}};
  try {
    context.transactions.EndLeft();
    if (result == SaveResult::kUnknown) return Settle(context, routine, location);
    const auto differences = host::HeldOtherwise(context.transactions.GetJournal());
    context.messages.AddMessage(Lines(context, differences), routine, location, logger::kExclamation);
    return {result, {}, differences};
  } catch (const std::exception& error) {
    if (result == SaveResult::kUnknown) return {result, DescribeError(error)};
    context.messages.AddMessage(
        context.strings.GetStrings("What was saved could not be read back to check it.") + "\r\n" +
            DescribeError(error),
        routine, location, logger::kExclamation);
    return {result, {}};
  }
}

}  // namespace shell
