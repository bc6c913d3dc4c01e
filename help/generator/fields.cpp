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

std::string Accepts(const ui::Control& control, const fields::Caption& caption, const Range* range) {
  switch (control.GetKind()) {
    case ui::Kind::kTextBox:
      if (!range) return "";
      return fmt::format("{} to {}{}{}", range->lowest, range->highest, caption.unit.empty() ? "" : " ",
                         caption.unit);
    case ui::Kind::kListBox:
      return base::Join(static_cast<const ui::ListBox&>(control).Items(), "\n");
    case ui::Kind::kCheckBox:
      return "on or off";
    case ui::Kind::kOptionButton:
      return "one of the group";
    default:
      return "";
  }
}

std::vector<Field> FieldsNow(tests::Tool& tool, const Ranges& ranges) {
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
      field.metric = Accepts(*control, field.caption, range == ranges.end() ? nullptr : &range->second);
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

std::string CaptionCell(const fields::Caption& caption) {
  std::string cell;
  if (!caption.frame.empty()) cell = fmt::format("<small>{}</small><br>", Escape(caption.frame));
  return cell + Escape(fields::NameOf(caption));
}

std::string AcceptsCell(const Field& field) {
  if (field.metric == field.imperial) return Lines(field.metric);
  return Lines(field.metric) + "<br>" + Lines(field.imperial);
}

struct Row {
  std::string captions;
  std::string accepts;
  std::string frame;
};

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
    if (!rows.empty() && rows.back().accepts == accepts && rows.back().frame == field->caption.frame) {
      rows.back().captions += "<br>" + Escape(fields::NameOf(field->caption));
    } else {
      rows.push_back({CaptionCell(field->caption), accepts, field->caption.frame});
    }
  }
  return rows;
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

std::vector<Field> ReadFields() {
  tests::Tool tool;
  tool.Open(tests::kAssigned);
  RangeFinder finder(tool);
  std::vector<Field> fields = FieldsNow(tool, finder.Find());
  tool.Find<ui::OptionButton>(fmt::format("optUnit({})", kImperialButton)).Click();
  const std::vector<Field> imperial = FieldsNow(tool, finder.Find());
  for (std::size_t i = 0; i < fields.size(); ++i) fields[i].imperial = imperial.at(i).metric;
  return fields;
}

std::string FieldTable(const Topic& topic, const std::vector<Field>& fields) {
  Check(topic, fields);
  std::string html = "<table>\n<tr><th>Field</th><th>Accepts</th><th>Meaning</th></tr>\n";
  for (const Note& note : topic.notes) {
    const std::vector<Row> rows = RowsOf(note, topic.page, fields);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      html += fmt::format("<tr><td>{}</td><td>{}</td>", rows[i].captions, rows[i].accepts);
      if (i == 0) html += fmt::format("<td rowspan=\"{}\">{}</td>", rows.size(), note.text);
      html += "</tr>\n";
    }
  }
  return html + "</table>\n";
}

}  // namespace help
