#include "simulator/controls/about.h"

#include "base/error.h"
#include "base/text.h"
#include "simulator/members.h"

namespace controls {

using automation::Arguments;
using automation::Value;

constexpr automation::MemberOf<About> About::kMembers[] = {
    {"Initialize", nullptr, nullptr, simulator::Run<&About::Initialize>},
    {"Finish", nullptr, nullptr, [](About&, const Arguments&) -> Value { return {}; }},
};

About::About() : MakersControl("About") {
  lblProduct_.SetHeading(true);
  lblLicences_.SetText("Libraries and their licences");
  GetWindow().SetLayout(ui::Stack({
      ui::GrowX(ui::Item(lblProduct_)),
      ui::GrowX(ui::Item(lblVersion_)),
      ui::GrowX(ui::Item(lblMaker_)),
      ui::GrowX(ui::Item(lblLicences_)),
      ui::Grow(ui::Item(lvwLicences_)),
  }));
}

void About::Initialize(const Arguments& arguments) {
  if (arguments[0].AsText().empty()) throw base::Error("Initialize needs the name of the product.");
  lblProduct_.SetText(arguments[0].AsText());
  lblVersion_.SetText("Version " + arguments[1].AsText());
  lblMaker_.SetText(arguments[2].AsText());
  ShowLicences(arguments[3].AsText());
  GetWindow().SetAcceptsInput(true);
}

void About::ShowLicences(const std::string& table) {
  std::vector<ui::ListView::Row> rows;
  for (const std::string& line : base::Split(base::ReplaceAll(table, "\r", ""), "\n")) {
    if (line.empty()) break;
    std::vector<std::string> cells;
    for (const std::string& cell : base::Split(line, "|")) cells.emplace_back(base::Trim(cell));
    rows.push_back({cells.front(), std::move(cells), 0});
  }
  if (!rows.empty()) {
    lvwLicences_.SetColumns(rows.front().cells);
    rows.erase(rows.begin());
  }
  lvwLicences_.SetRows(std::move(rows));
  lvwLicences_.FitColumns();
}

}  // namespace controls
