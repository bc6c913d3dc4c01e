// Asks for one line of a table: a unit of the network, a backup.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "configuration/dialog.h"

namespace configuration {

class fPick final : public Question {
 public:
  fPick(const shell::Platform& platform, const shell::Settings& settings, const shell::Strings& strings);

  struct Table {
    std::string title, text;  // what is to be chosen, above the table
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;
    std::string button;  // what is done with the line
  };
  /// The place of the chosen line. All texts are in the language in use.
  std::optional<std::size_t> Ask(const Table& table);

 private:
  ui::Label lblText{*this, "lblText"};
  ui::ListView lvwRows{*this, "lvwRows"};
};

}  // namespace configuration
