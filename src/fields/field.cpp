#include "fields/field.h"

#include <algorithm>

#include "base/error.h"
#include "base/text.h"

namespace fields {
namespace {

using ui::Node;

/// Does what a person does to get the content; no when the control cannot show it.
using Act = std::function<bool(const std::string& content)>;

std::string FlagText(bool flag) { return flag ? "1" : "0"; }

/// A place among `count`, or -1.
int PlaceOf(std::string_view content, std::size_t count) {
  const std::size_t place = base::ParseWhole<std::size_t>(content).value_or(count);
  return place < count ? static_cast<int>(place) : -1;
}

int PlaceOf(std::string_view content, const std::vector<std::string>& items) {
  const auto found = std::ranges::find(items, content);
  return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

Field Named(ui::Control& control, std::string name, Kind kind) {
  Field field;
  field.page = control.GetForm().Name();
  field.name = std::move(name);
  field.kind = kind;
  field.control = &control;
  field.cursor = &control;
  field.applies = [&control] { return control.VisibleInFrame(); };
  field.caption = [&control] { return CaptionOf(control); };
  field.shown = [](std::string_view content) { return std::string(content); };
  return field;
}

Field Taking(Field field, const Translate& translate, Act act) {
  field.take = [applies = field.applies, content = field.content, translate,
                act = std::move(act)](std::string_view text) -> std::string {
    const std::string wanted(base::Trim(text));
    if (content() == wanted) return {};
    if (!applies()) return translate("This field is not shown with the present choices.", {});
    if (!act(wanted)) return translate("There is no choice %s1%.", {wanted});
    if (content() == wanted) return {};
    return translate("The page did not take the value.", {});
  };
  return field;
}

void Type(ui::TextBox& box, std::string_view text) {
  box.SetText(text);
  if (box.onChange) box.onChange();
}

// Here and below handlers run as in Type, Click and Choose of the controls, but also where a person could not
// act. The focus stays where it is.
Field TextField(ui::TextBox& box, const Translate& translate) {
  Field field = Named(box, box.Name(), Kind::kText);
  field.content = [&box] { return std::string(base::Trim(box.Text())); };
  return Taking(std::move(field), translate, [&box](const std::string& content) {
    const std::string before = box.Text();
    if (box.onFocus) box.onFocus();
    Type(box, content);
    if (box.onLeave && !box.onLeave()) Type(box, before);
    return true;
  });
}

Field FlagField(ui::CheckBox& box, const Translate& translate) {
  Field field = Named(box, box.Name(), Kind::kFlag);
  field.content = [&box] { return FlagText(box.Checked()); };
  field.shown = [translate](std::string_view content) {
    return content == FlagText(true) ? translate("ON", {}) : translate("OFF", {});
  };
  return Taking(std::move(field), translate, [&box](const std::string& content) {
    if (content != FlagText(true) && content != FlagText(false)) return false;
    box.SetChecked(!box.Checked());
    if (box.onClick) box.onClick();
    return true;
  });
}

Field OptionField(ui::OptionButton& button, const Translate& translate) {
  ui::OptionButton& first = *button.Siblings().front();
  const auto& group = first.Siblings();
  Field field = Named(first, first.Name().substr(0, first.Name().find('(')), Kind::kOption);
  field.caption = [&first] { return CaptionOfGroup(first); };
  field.content = [&group] {
    const auto selected = std::ranges::find_if(group, &ui::OptionButton::Selected);
    return selected == group.end() ? std::string() : std::to_string(selected - group.begin());
  };
  field.shown = [&group](std::string_view content) {
    const int place = PlaceOf(content, group.size());
    return place < 0 ? std::string(content) : OwnCaption(*group[static_cast<std::size_t>(place)]);
  };
  return Taking(std::move(field), translate, [&group](const std::string& content) {
    const int place = PlaceOf(content, group.size());
    if (place < 0) return false;
    ui::OptionButton& chosen = *group[static_cast<std::size_t>(place)];
    chosen.Select();
    if (chosen.onClick) chosen.onClick();
    return true;
  });
}

Field EntryField(ui::ListBox& list, const Translate& translate) {
  Field field = Named(list, list.Name(), Kind::kEntry);
  field.content = [&list] {
    if (!list.Translated() || list.Selected() < 0) return list.SelectedText();
    return std::to_string(list.Selected());
  };
  field.shown = [&list](std::string_view content) {
    const int place = list.Translated() ? PlaceOf(content, list.Items().size()) : -1;
    return place < 0 ? std::string(content) : list.Items()[static_cast<std::size_t>(place)];
  };
  return Taking(std::move(field), translate, [&list](const std::string& content) {
    const int place =
        list.Translated() ? PlaceOf(content, list.Items().size()) : PlaceOf(content, list.Items());
    if (place < 0) return false;
    list.Select(place);
    if (list.onClick) list.onClick();
    return true;
  });
}

bool HoldsShownValue(const Node& node) {
  if (node.control && IsValue(*node.control) && node.control->VisibleInFrame()) return true;
  return std::ranges::any_of(node.children, HoldsShownValue);
}

bool IsFirstOfGroup(const ui::Control& control) {
  if (control.GetKind() != ui::Kind::kOptionButton) return true;
  return static_cast<const ui::OptionButton&>(control).Siblings().front() == &control;
}

void Collect(const Node& node, bool takesTurns, const Translate& translate, std::vector<Field>& fields) {
  ui::Control* control = node.control;
  if (control && IsValue(*control) && IsFirstOfGroup(*control) && (takesTurns || control->VisibleInFrame()))
    fields.push_back(FieldOf(*control, translate));
  takesTurns = takesTurns || (node.type == Node::Type::kOverlay && HoldsShownValue(node));
  for (const Node& child : node.children) Collect(child, takesTurns, translate, fields);
}

std::string Key(std::string_view page, std::string_view control) {
  return std::string(page) + "." + std::string(control);
}

}  // namespace

bool SameContent(const Field& field, const base::Numbers& numbers, std::string_view a, std::string_view b) {
  if (a == b) return true;
  const auto same = [&numbers](std::string_view one, std::string_view other) {
    const auto first = base::ParseEither(numbers, one), second = base::ParseEither(numbers, other);
    return one == other || (first && first == second);
  };
  if (field.kind == Kind::kText) return same(a, b);
  return field.kind == Kind::kRecord && std::ranges::equal(base::Split(a, " "), base::Split(b, " "), same);
}

Field FieldOf(ui::Control& control, const Translate& translate) {
  switch (control.GetKind()) {
    case ui::Kind::kTextBox:
      return TextField(static_cast<ui::TextBox&>(control), translate);
    case ui::Kind::kCheckBox:
      return FlagField(static_cast<ui::CheckBox&>(control), translate);
    case ui::Kind::kOptionButton:
      return OptionField(static_cast<ui::OptionButton&>(control), translate);
    case ui::Kind::kListBox:
      return EntryField(static_cast<ui::ListBox&>(control), translate);
    default:
      throw base::Error(control.Name() + " shows no value");
  }
}

std::vector<Field> FieldsOf(const ui::Form& form, const Translate& translate) {
  std::vector<Field> fields;
  Collect(form.GetLayout(), false, translate, fields);
  return fields;
}

FieldList::FieldList(std::vector<Field> fields) : fields_(std::move(fields)) {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const Field& field = fields_[i];
    if (!places_.emplace(Key(field.page, field.name), i).second)
      throw base::Error(Key(field.page, field.name) + " is the name of two fields");
    if (field.kind != Kind::kOption || !field.control) continue;
    for (const ui::OptionButton* button : static_cast<ui::OptionButton*>(field.control)->Siblings()) {
      places_.emplace(Key(field.page, button->Name()), i);
    }
  }
}

const Field* FieldList::Find(std::string_view page, std::string_view control) const {
  const auto found = places_.find(Key(page, control));
  return found == places_.end() ? nullptr : &fields_[found->second];
}

}  // namespace fields
