#include "pages/io/fChangeType.h"

#include <algorithm>
#include <utility>

namespace pages {

fChangeType::fChangeType(const shell::PageContext& context) : Window("fChangeType"), context_(context) {
  using ui::Item;
  SetLayout(ui::Stack({
      ui::Grow(ui::Line({ui::Grow(Item(lvwVariable)), ui::Grow(Item(lvwType))})),
      ui::GrowX(Item(lblPresent)),
      ui::GrowX(Item(lblNote)),
      ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), Item(cmdOK), Item(cmdCancel)})),
  }));
  lvwVariable.onSelect = [this](std::size_t place) { ShowVariable(place); };
  lvwType.onSelect = [this](std::size_t place) {
    variables_[shown_].type = variables_[shown_].allowed[place];
  };
  cmdOK.onClick = [this] {
    accepted_ = true;
    Hide();
  };
  cmdCancel.onClick = [this] { Close(); };
  resizable = false;
  defaultButton = &cmdOK;
  cancelButton = &cmdCancel;
}

fChangeType::~fChangeType() {
  if (context_.platform.toolkit) context_.platform.toolkit->Discard(*this);
}

void fChangeType::InitStrings() {
  shell::Strings& strings = context_.strings;
  strings.ReloadStrings();
  SetTitle(strings.GetStrings("Change type"));
  lvwVariable.SetColumns({strings.GetStrings("Network variable")});
  lvwType.SetColumns({strings.GetStrings("Type")});
  lblNote.SetText(strings.GetStrings("The device takes a new type with Apply or OK of the main window."));
  cmdOK.SetText(strings.GetStrings("&OK"));
  cmdCancel.SetText(strings.GetStrings("Cancel"));
}

std::vector<ChangeableVariable> fChangeType::Open(std::vector<ChangeableVariable> variables,
                                                  std::size_t first) {
  InitStrings();
  variables_ = variables;
  accepted_ = false;
  std::vector<ui::ListView::Row> rows;
  for (const ChangeableVariable& variable : variables_) rows.push_back({variable.name, {variable.name}});
  lvwVariable.SetRows(std::move(rows));
  lvwVariable.SetSelection({first});
  ShowVariable(first);
  context_.work.RunModal(*this);
  return accepted_ ? std::move(variables_) : std::move(variables);
}

void fChangeType::ShowVariable(std::size_t place) {
  shown_ = place;
  const ChangeableVariable& variable = variables_[place];
  std::vector<ui::ListView::Row> rows;
  for (const std::string& type : variable.allowed) rows.push_back({type, {type}});
  lvwType.SetRows(std::move(rows));
  const auto chosen = std::ranges::find(variable.allowed, host::BareType(variable.type), host::BareType);
  // A type that the host does not list is shown below only.
  if (chosen != variable.allowed.end()) {
    lvwType.SetSelection({static_cast<std::size_t>(chosen - variable.allowed.begin())});
  }
  lblPresent.SetText(shell::ReplacePlaceholders(context_.strings.GetStrings("Type in the device: %s1%"),
                                                {variable.present}));
}

}  // namespace pages
