// Stands between the pages and the person. While a field takes a content for the program (filling in a file,
// copying a unit), nobody is asked: what a page says is kept as the reason, and questions are answered so
// that nothing more happens than was asked for. The main window puts it in front of its pages.
#pragma once

#include <string>
#include <vector>

#include "fields/field.h"
#include "ui/prompts.h"

namespace fields {

class PagePrompts final : public ui::Prompts {
 public:
  explicit PagePrompts(ui::Prompts& person) : person_(person) {}

  ui::Answer Ask(const ui::Prompt& prompt) override;
  bool ProgramFillsIn() const override { return heard_ != nullptr; }

  /// As Field::take, without a box. The reason is what the page said, or else the field's.
  std::string Take(const Field& field, std::string_view content);

 private:
  ui::Prompts& person_;
  std::vector<std::string>* heard_ = nullptr;  // nothing: the person is asked
};

}  // namespace fields
