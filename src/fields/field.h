// The values of a form as data: what each is called, what it holds, and how it takes another content. An
// option group is one field; labels, buttons and frames are none. Whoever marks, lists, searches, compares,
// copies or prints values works on fields and knows no page.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/numbers.h"
#include "fields/caption.h"
#include "ui/form.h"

namespace fields {

/// A record is a text of which each piece between blanks is a value of its own.
enum class Kind { kText, kFlag, kOption, kEntry, kRecord };

/// `text` (English) in the language in use, its placeholders replaced by `arguments`.
using Translate =
    std::function<std::string(std::string_view text, const std::vector<std::string>& arguments)>;

/// Valid as long as its form. What the functions answer is always of the moment.
struct Field {
  std::string page;  // the form's window-class name, "fPID"
  std::string name;  // the control's, "txtPIDTemp(0)"; of an option group without the place, "optTemp"
  Kind kind = Kind::kText;
  std::string source;              // property or variable of the device that holds it; may be empty
  ui::Control* control = nullptr;  // shows it; of an option group the first button; nothing: no control does
  ui::Control* cursor = nullptr;   // takes the keyboard for it: mostly the control itself
  bool ofOneUnit = false;          // names a unit or its place: not for another one

  /// No while another control is shown in the place of this one.
  std::function<bool()> applies = [] { return true; };
  std::function<Caption()> caption;
  /// Independent of the language: a text without the blanks around it; "1" or "0"; the option's number,
  /// counted from 0; the entry of a list, by its place from 0 where the entries are translated. Empty where
  /// nothing is chosen.
  std::function<std::string()> content;
  /// What the device holds, where the field itself knows it; nothing: what it showed after the last fill.
  std::function<std::string()> held;
  /// What is stored, where a page shows something else after a fill already. Taking a content decides about
  /// it.
  std::function<std::string()> stored;
  /// A content, of this field at any time or on any device, as a person reads it.
  std::function<std::string(std::string_view content)> shown;
  /// Acts as a person does: handlers and rules of the page run, and may ask. Only that a control is greyed
  /// does not matter, as the device holds its value all the same. Answers nothing when the field has the
  /// content then, or the reason in the language in use; a refused content leaves the field as it was.
  std::function<std::string(std::string_view content)> take;
};

/// Whether two contents of a field are the same to a person: numbers are compared as numbers, with the user's
/// decimal sign or with a point; those of a record piece by piece.
bool SameContent(const Field& field, const base::Numbers& numbers, std::string_view a, std::string_view b);

/// The field of a control that holds a value; of an option button, that of its group.
Field FieldOf(ui::Control& control, const Translate& translate);

/// The fields of a form in tab order. Hidden controls are none, but for those that take turns with others in
/// the same place.
std::vector<Field> FieldsOf(const ui::Form& form, const Translate& translate);

/// The fields of several forms, to be found by name.
class FieldList {
 public:
  FieldList() = default;
  /// Throws base::Error when two have the same page and name.
  explicit FieldList(std::vector<Field> fields);

  const std::vector<Field>& All() const { return fields_; }
  /// `control` is the field's name or that of any button of its group ("optTemp(1)"). Nothing when there is
  /// none.
  const Field* Find(std::string_view page, std::string_view control) const;

 private:
  std::vector<Field> fields_;
  std::unordered_map<std::string, std::size_t> places_;  // by "page.control"
};

}  // namespace fields
