// What is kept of a copy: the lines in the log, the page or table with its records.
#include "base/files.h"
#include "base/text.h"
#include "fleet/fCopy.h"
#include "logger/message_logger.h"

namespace fleet {
namespace {

constexpr const char* kLocation = "Fleet";  // in the log

/// As a link writes it: what is not plain is a percent sign and two digits (RFC 3986, 2.1).
std::string Linked(std::string_view path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string link;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                       std::string_view("-._~/").find(c) != std::string_view::npos;
    if (plain) {
      link += c;
    } else {
      link.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
    }
  }
  return link;
}

}  // namespace

void fCopy::Log() {
  std::vector<std::string> details;
  for (const UnitLine& line : lines_) {
    if (line.state == UnitState::kWaiting || line.state == UnitState::kNotTaken) continue;
    details.push_back(line.unit.name + ": " + StateText(strings_, line) +
                      (line.reason.empty() ? "" : ": " + base::ReplaceAll(line.reason, "\r\n", " ")));
  }
  main_.AddMessage(Text("Copy to units") + ": " + SourceName() + ": " + lblCount.Text(), "CopyToUnits",
                   kLocation, logger::kInformation);
  main_.Logger().AddDetails(details);
  BringToFront();  // the log comes up over the table
}

void fCopy::SaveResult() {
  const auto file = platform_.fileDialog.AskSaveFile(
      {Text("Results (*.html)|*.html|Tables (*.csv)|*.csv"),
       settings_.documentsFolder + "\\" + configuration::SafeName(main_.Opened.networkName) + ".html",
       configuration::kAskBeforeReplacing});
  if (!file) return;
  try {
    const std::filesystem::path path = base::PathOf(*file);
    Result result{
        SourceName(), main_.Opened.networkName, platform_.locale.GeneralDateNow(), settings_.userName, lines_,
        pages_};
    if (base::EqualsNoCase(base::PathText(path.extension()), ".csv")) {
      base::ReplaceFile(path, WriteResultCsv(result, strings_, settings_.numbers));
      return;
    }
    const std::string folder = base::PathText(path.stem()) + " " + Text("records");
    const auto name = [](const UnitLine& line) { return configuration::SafeName(line.unit.name) + ".html"; };
    for (const UnitLine& line : lines_) {
      if (line.record.empty()) continue;
      base::ReplaceFile(path.parent_path() / base::PathOf(folder) / base::PathOf(name(line)),
                        base::ReadFile(line.record, configuration::kLargestFile));
    }
    result.record = [&](const UnitLine& line) {
      return line.record.empty() ? std::string() : Linked(folder + "/" + name(line));
    };
    base::ReplaceFile(path, WriteResult(result, strings_));
  } catch (const std::exception& error) {
    Tell(error);
  }
}

}  // namespace fleet
