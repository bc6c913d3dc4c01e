#include "help/generator/fields.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/error.h"
#include "base/text.h"
#include "help/generator/ranges.h"

namespace help {
namespace {

constexpr std::size_t kImperialButton = 1;

// Buttons are explained too.
bool IsExplained(const ui::Control& control) {
  return fields::IsValue(control) || control.GetKind() == ui::Kind::kButton;
}

std::string Accepts(const Language& language, const ui::Control& control, const fields::Caption& caption,
                    const Range* range) {
  switch (control.GetKind()) {
    case ui::Kind::kTextBox:
      if (!range) return "";
      return RangeText(language, range->lowest, range->highest) + (caption.unit.empty() ? "" : " ") +
             caption.unit;
    case ui::Kind::kListBox:
      return base::Join(static_cast<const ui::ListBox&>(control).Items(), "\n");
    case ui::Kind::kCheckBox:
      return std::string(language.onOrOff);
    case ui::Kind::kOptionButton:
      return std::string(language.oneOfGroup);
    default:
      return "";
  }
}

std::vector<Field> FieldsNow(tests::Tool& tool, const Language& language, const Ranges& ranges) {
  std::vector<Field> fields;
  shell::PageSet& pages = tool.Main().Pages();
  for (std::size_t i = 0; i < pages.Count(); ++i) {
    if (!pages.Table()[i].showsDeviceValues) continue;
    const ui::Form& page = pages.Page(i);
    for (const ui::Control* control : ui::PlacedControls(page.GetLayout())) {
      if (!IsExplained(*control)) continue;
      const auto range = ranges.find(page.Name() + "." + control->Name());
      Field field{page.Name(), control->Name(), control->VisibleInFrame(), fields::CaptionOf(*control), "",
                  ""};
      field.metric =
          Accepts(language, *control, field.caption, range == ranges.end() ? nullptr : &range->second);
      fields.push_back(std::move(field));
    }
  }
  return fields;
}

bool Explains(const Note& note, const Field& field) {
  return std::ranges::any_of(note.controls, [&](const auto& name) { return Names(name, field.control); });
}

// A hidden field that nobody explains is none that a person could ask about.
void Check(const Topic& topic, const std::vector<Field>& fields) {
  std::string faults;
  for (const Field& field : fields) {
    if (field.page != topic.page || !field.visible) continue;
    const auto explains = [&](const Note& note) { return Explains(note, field); };
    if (std::ranges::none_of(topic.notes, explains)) faults += "\n  nothing explains " + field.control;
  }
  for (const Note& note : topic.notes) {
    for (const std::string& name : note.controls) {
      const auto named = [&](const Field& field) {
        return field.page == topic.page && Names(name, field.control);
      };
      if (std::ranges::none_of(fields, named)) faults += "\n  there is no " + name;
    }
  }
  if (!faults.empty()) throw base::Error(fmt::format("{} ({}):{}", topic.file, topic.page, faults));
}

std::string Lines(const std::string& text) { return base::ReplaceAll(Escape(text), "\n", "<br>"); }

std::string AcceptsCell(const Field& field) {
  if (field.metric == field.imperial) return Lines(field.metric);
  return Lines(field.metric) + "<br>" + Lines(field.imperial);
}

struct Row {
  std::string frame;
  std::vector<std::string> names;
  std::string accepts;
};

// Names that count on, as "Output 1, Usage" to "Output 7, Usage", stand in one line.
std::vector<std::string> Condensed(const std::vector<std::string>& names, const Language& language) {
  constexpr std::string_view kDigits = "0123456789";
  const auto last = [&](std::size_t first, const std::string& before, const std::string& behind, int number) {
    std::size_t i = first;
    while (i + 1 < names.size() && names[i + 1] == before + std::to_string(number + 1) + behind)
      ++i, ++number;
    return i;
  };
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string& name = names[i];
    const std::size_t digits = name.find_first_of(kDigits);
    lines.push_back(name);
    if (digits == name.npos) continue;
    const std::size_t end = std::min(name.find_first_not_of(kDigits, digits), name.size());
    const std::string before = name.substr(0, digits), behind = name.substr(end);
    const int first = std::stoi(name.substr(digits, end - digits));
    const std::size_t to = last(i, before, behind, first);
    if (to < i + 2) continue;
    const auto count = static_cast<int>(to - i);
    lines.back() =
        before + RangeText(language, std::to_string(first), std::to_string(first + count)) + behind;
    i = to;
  }
  return lines;
}

// Fields that accept the same stand in one row.
std::vector<Row> RowsOf(const Note& note, const std::string& page, const std::vector<Field>& fields) {
  std::vector<const Field*> explained;
  for (const Field& field : fields) {
    if (field.page == page && Explains(note, field)) explained.push_back(&field);
  }
  const auto hidden = [](const Field* field) { return !field->visible; };
  if (!std::ranges::all_of(explained, hidden)) std::erase_if(explained, hidden);
  std::vector<Row> rows;
  for (const Field* field : explained) {
    const std::string accepts = AcceptsCell(*field);
    if (rows.empty() || rows.back().accepts != accepts || rows.back().frame != field->caption.frame)
      rows.push_back({field->caption.frame, {}, accepts});
    rows.back().names.push_back(fields::NameOf(field->caption));
  }
  return rows;
}

std::string CaptionCell(const Row& row, const Language& language) {
  std::string cell;
  if (!row.frame.empty()) cell = fmt::format("<small>{}</small><br>", Escape(row.frame));
  return cell + Lines(base::Join(Condensed(row.names, language), "\n"));
}

}  // namespace

std::string Escape(std::string_view text) {
  std::string escaped(text);
  for (const auto& [character, name] :
       {std::pair("&", "&amp;"), {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}}) {
    escaped = base::ReplaceAll(escaped, character, name);
  }
  return escaped;
}

std::map<std::string, std::vector<Field>, std::less<>> ReadFields() {
  tests::Tool tool;
  tool.Open(tests::kAssigned);
  RangeFinder finder(tool);
  std::map<std::string, std::vector<Field>, std::less<>> all;
  const auto inEachLanguage = [&](const Ranges& ranges, const auto& take) {
    for (const Language& language : Languages()) {
      tool.UseLanguage(std::string(language.name));
      take(all[std::string(language.name)], FieldsNow(tool, language, ranges));
    }
  };
  inEachLanguage(finder.Find(), [](auto& fields, auto now) { fields = std::move(now); });
  tool.Find<ui::OptionButton>(fmt::format("optUnit({})", kImperialButton)).Click();
  inEachLanguage(finder.Find(), [](auto& fields, const auto& now) {
    for (std::size_t i = 0; i < fields.size(); ++i) fields[i].imperial = now.at(i).metric;
  });
  return all;
}

std::string FieldTable(const Topic& topic, const std::vector<Field>& fields, const Language& language) {
  Check(topic, fields);
  std::string html = fmt::format("<table>\n<tr><th>{}</th><th>{}</th><th>{}</th></tr>\n", language.field,
                                 language.accepts, language.meaning);
  for (const Note& note : topic.notes) {
    const std::vector<Row> rows = RowsOf(note, topic.page, fields);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      html += fmt::format("<tr><td>{}</td><td>{}</td>", CaptionCell(rows[i], language), rows[i].accepts);
      if (i == 0) html += fmt::format("<td rowspan=\"{}\">{}</td>", rows.size(), note.text);
      html += "</tr>\n";
    }
  }
  return html + "</table>\n";
}

}  // namespace help
