// A group of settings that belong together, built from a plan: a frame with rows of boxes, or with one list
// of choices, or with a sentence where there is nothing to set. One section is shown at a time, the one of
// the chosen sensor type or signal.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "simulator/controls/binding.h"
#include "ui/form.h"

namespace controls {

struct SectionPlan {
  struct Column {
    std::string title = {};  // empty: none
    std::string unit = {};   // empty: see Section::SetUnit
  };

  std::string formName;
  std::string caption;
  int property = 0;  // 0: nothing to set
  std::string format = {};
  std::vector<std::string> rows = {};
  std::vector<Column> columns = {};  // the record holds all rows of the first column, then all of the next
  std::size_t blocks = 1;            // how many blocks of rows stand side by side
  std::vector<Choice> choices = {};  // not empty: one list in the only row
  std::string note = {};
};

class Section : public ui::Form {
 public:
  explicit Section(const SectionPlan& plan);

  /// Reads and shows the settings of the object; no more than nothing when there are none.
  void Attach(const automation::Object& lonMarkObject);
  /// The unit of the columns without one of their own.
  void SetUnit(const std::string& unit);
  /// Null when there is nothing to set.
  Binding* Settings() const { return binding_.get(); }

 private:
  ui::Label& AddLabel(const std::string& text);
  ui::Node BoxGrid();
  ui::Node BlockOf(std::size_t first, std::size_t count);
  ui::Node ChoiceLine();

  SectionPlan plan_;
  ui::Frame frame_{*this, "fra"};
  std::vector<std::unique_ptr<ui::Label>> labels_;
  std::vector<ui::Label*> openUnits_;
  std::vector<std::unique_ptr<ui::TextBox>> boxes_;
  std::unique_ptr<ui::ListBox> list_;
  std::unique_ptr<Binding> binding_;
};

}  // namespace controls
