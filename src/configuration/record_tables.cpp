// The tables of all pages: page by page, a table for each group box; rows and columns where the page has
// such, a list of names and values elsewhere.
#include <algorithm>
#include <ranges>

#include "configuration/record_parts.h"

namespace configuration::record {
namespace {

using Values = std::vector<const Value*>;

/// Tables of more columns need the whole width of the paper, with columns of one width where there is room;
/// longer ones may go over to the next sheet.
constexpr std::size_t kNarrowColumns = 2, kEvenColumns = 3, kShortRows = 14;

/// Values under one name, in the order of their first appearance.
struct Group {
  std::string name;
  Values values;
};

std::vector<Group> Grouped(const Values& values, const std::function<std::string(const Value&)>& name) {
  std::vector<Group> groups;
  for (const Value* value : values) {
    const std::string own = name(*value);
    auto found = std::ranges::find(groups, own, &Group::name);
    if (found == groups.end()) found = groups.insert(groups.end(), Group{own, {}});
    found->values.push_back(value);
  }
  return groups;
}

/// In an order that is that of every row, as far as there is one.
std::vector<std::string> ColumnsOf(const std::vector<Group>& rows) {
  std::vector<std::string> columns;
  for (const Group& row : rows) {
    auto next = columns.end();
    for (const Value* value : std::views::reverse(row.values)) {
      const std::string& column = value->caption.column;
      const auto found = std::ranges::find(columns, column);
      next = found == columns.end() ? columns.insert(next, column) : found;
    }
  }
  return columns;
}

bool IsNumber(const Value* value) {
  return value->kind == fields::Kind::kText && base::Numbers('.').IsNumber(value->content);
}

/// The marks of the element that holds the value alone.
std::string Marks(const Value& value, std::string_view look) {
  std::string looks(look);
  if (!value.used) looks += looks.empty() ? "off" : " off";
  return Attribute("class", looks) + Attribute("data-field", value.page + "." + value.control);
}

std::string Content(const RecordInput& input, const Value& value) {
  std::string text = Escaped(value.shown.empty() ? kNothing : std::string_view(value.shown));
  if (value.kind == fields::Kind::kText && !value.caption.unit.empty())
    text += " " + Element("span class=\"u\"", Escaped(value.caption.unit));
  if (!value.used) text += Element("span class=\"vh\"", " (" + Word(input, "not used") + ")");
  return text;
}

/// Controls that take turns in one place share its cell.
std::string CellOf(const RecordInput& input, const Values& values) {
  if (values.empty()) return Element("td", "");
  const bool numbers = std::ranges::all_of(values, IsNumber);
  if (values.size() == 1)
    return Element("td" + Marks(*values.front(), numbers ? "n" : ""), Content(input, *values.front()));
  std::string content;
  for (const Value* value : values) {
    if (!content.empty()) content += " / ";
    content += Element("span" + Marks(*value, "nw"), Content(input, *value));
  }
  return Element("td", content);
}

Values InColumn(const Group& row, const std::string& column) {
  Values values;
  std::ranges::copy_if(row.values, std::back_inserter(values),
                       [&](const Value* value) { return value->caption.column == column; });
  return values;
}

/// A caption that says what a heading above it says is for those who cannot see the heading's place.
std::string CaptionOf(std::string_view title, bool repeats) {
  return Element(repeats ? "caption class=\"vh\"" : "caption", Escaped(title));
}

std::string TableStart(std::string_view kind, std::size_t rows) {
  return "table class=\"" + std::string(kind) + (rows <= kShortRows ? " keep\"" : "\"");
}

std::string GridOf(const RecordInput& input, const std::string& caption, const std::vector<Group>& rows,
                   const std::vector<std::string>& columns) {
  std::string heads = "<td></td>";
  for (const std::string& column : columns) {
    const bool numbers = std::ranges::all_of(
        rows, [&](const Group& row) { return std::ranges::all_of(InColumn(row, column), IsNumber); });
    heads += Element(numbers ? "th scope=\"col\" class=\"n\"" : "th scope=\"col\"", Escaped(column));
  }
  std::string body;
  for (const Group& row : rows) {
    std::string cells = Element("th scope=\"row\"", Escaped(row.name));
    for (const std::string& column : columns) cells += CellOf(input, InColumn(row, column));
    body += Element("tr", cells) + "\n";
  }
  const bool even = columns.size() > kNarrowColumns && columns.size() <= kEvenColumns;
  return Table(TableStart(even ? "even" : "grid", rows.size()), caption, heads, body);
}

std::string ListOf(const RecordInput& input, const std::string& caption, const Values& values) {
  std::string body;
  for (const Value* value : values) {
    const std::string name = fields::NameOf(value->caption);
    const std::string& shown = !name.empty()                   ? name
                               : !value->caption.frame.empty() ? value->caption.frame
                                                               : value->control;
    body += Element("tr", Element("th scope=\"row\"", Escaped(shown)) + CellOf(input, {value})) + "\n";
  }
  return Element(TableStart("list", values.size()), caption + "\n" + Element("tbody", "\n" + body)) + "\n";
}

/// The tables of a group box, and whether they fit half the width.
struct Tables {
  std::string markup;
  bool narrow = true;
};

Tables TablesOf(const RecordInput& input, const Group& group, std::string_view title) {
  Values inGrid, listed;
  for (const Value* value : group.values)
    (value->caption.row.empty() || value->caption.column.empty() ? listed : inGrid).push_back(value);
  const std::vector<Group> rows = Grouped(inGrid, [](const Value& value) { return value.caption.row; });
  if (rows.size() < 2) {
    listed = group.values;
    inGrid.clear();
  }
  const fields::Caption& first = group.values.front()->caption;
  const bool named = first.loneFrame || group.name.empty();  // by the heading
  // A group box around one choice is the name of its only row.
  const bool lone = named || (group.values.size() == 1 && fields::NameOf(first).empty());
  const std::string caption = CaptionOf(named ? title : group.name, lone);
  Tables tables;
  if (!inGrid.empty()) {
    const std::vector<std::string> columns = ColumnsOf(rows);
    tables.narrow = columns.size() <= kNarrowColumns;
    tables.markup += GridOf(input, caption, rows, columns);
  }
  if (listed.empty()) return tables;
  tables.markup += ListOf(input, inGrid.empty() ? caption : CaptionOf(group.name, true), listed);
  if (!inGrid.empty()) tables.markup = Element("div class=\"keep\"", "\n" + tables.markup) + "\n";
  return tables;
}

/// Narrow tables stand beside each other, two on a sheet's width.
std::string PageOf(const RecordInput& input, const Group& page) {
  const std::string title = TitleOf(input.pages, page.name);
  std::string markup = Element("h3", Escaped(title)) + "\n", beside;
  const auto close = [&] {
    if (!beside.empty()) markup += Element("div class=\"two\"", "\n" + beside) + "\n";
    beside.clear();
  };
  for (const Group& group : Grouped(page.values, [](const Value& value) { return value.caption.frame; })) {
    const Tables tables = TablesOf(input, group, title);
    if (!tables.narrow) close();
    (tables.narrow ? beside : markup) += tables.markup;
  }
  close();
  return markup;
}

}  // namespace

std::string TableSection(const RecordInput& input) {
  Values values;
  for (const Value& value : input.snapshot.values) values.push_back(&value);
  std::vector<Group> pages = Grouped(values, [](const Value& value) { return value.page; });
  std::ranges::stable_sort(pages, {}, [&](const Group& page) {
    return std::ranges::find(input.pages, page.name, &PageTitle::page) - input.pages.begin();
  });
  std::string markup =
      Element("h2 class=\"annex\"", Word(input, "All values")) + "\n" +
      Element("p class=\"soft\"",
              Word(input, "What is grey and slanted is not used by any assigned function.")) +
      "\n";
  for (const Group& page : pages) markup += PageOf(input, page);
  return markup;
}

}  // namespace configuration::record
