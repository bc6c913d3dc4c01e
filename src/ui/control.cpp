#include "ui/control.h"

#include <algorithm>

#include "ui/form.h"

namespace ui {
namespace {

/// Answers whether what is `held` was another one.
template <class Held, class Given>
bool Replace(Held& held, const Given& given) {
  if (held == given) return false;
  held = given;
  return true;
}

}  // namespace

Control::Control(Form& form, Kind kind, std::string name) : form_(form), kind_(kind), name_(std::move(name)) {
  form_.Register(*this);
}

void Control::Changed(Aspect aspect) {
  if (Peer* peer = form_.GetPeer()) peer->Changed(*this, aspect);
  const bool content = aspect == Aspect::kText || aspect == Aspect::kContent || aspect == Aspect::kVisible;
  if (content && form_.onContent) form_.onContent(*this);
}

void Control::SetText(std::string_view text) {
  if (Replace(text_, text)) Changed(Aspect::kText);
}

void Control::SetEnabled(bool enabled) {
  if (Replace(enabled_, enabled)) Changed(Aspect::kEnabled);
}

void Control::SetVisible(bool visible) {
  if (Replace(visible_, visible)) Changed(Aspect::kVisible);
}

void Control::SetTip(std::string_view tip) {
  if (Replace(tip_, tip)) Changed(Aspect::kTip);
}

void Control::SetAccessibleName(std::string_view name) {
  if (Replace(accessibleName_, name)) Changed(Aspect::kName);
}

void Control::SetMark(Mark mark, std::string_view reason) {
  const std::string before = ShownTip();
  markReason_ = reason;
  if (Replace(mark_, mark)) Changed(Aspect::kMark);
  if (ShownTip() != before) Changed(Aspect::kTip);
}

std::string Control::ShownTip() const {
  return markReason_ + (markReason_.empty() || tip_.empty() ? "" : "\r\n") + tip_;
}

void Control::SetRoom(std::string_view text) {
  if (Replace(room_, text)) Changed(Aspect::kContent);
}

void Control::Focus() {
  form_.SetFocused(this);
  if (Peer* peer = form_.GetPeer()) peer->TakeFocus(*this);
}

bool Control::EnabledInFrame() const { return enabled_ && (!frame_ || frame_->EnabledInFrame()); }

bool Control::VisibleInFrame() const { return visible_ && (!frame_ || frame_->VisibleInFrame()); }

bool Control::Usable() const { return EnabledInFrame() && VisibleInFrame() && form_.AcceptsInput(); }

void TextBox::SetReadOnly(bool readOnly) {
  readOnly_ = readOnly;
  Changed(Aspect::kContent);
}

bool TextBox::Enter() {
  if (!Usable()) return false;
  GetForm().SetFocused(this);
  if (onFocus) onFocus();
  return true;
}

bool TextBox::Type(std::string_view text) {
  if (!Usable() || readOnly_) return false;
  if (Text() == text) return true;
  SetText(text);
  if (onChange) onChange();
  return true;
}

bool TextBox::Leave() {
  if (GetForm().Focused() == this) GetForm().SetFocused(nullptr);
  if (!onLeave || onLeave()) return true;
  Focus();
  return false;
}

void CheckBox::SetChecked(bool checked) {
  if (Replace(checked_, checked)) Changed(Aspect::kContent);
}

bool CheckBox::Click() {
  if (!Usable()) return false;
  SetChecked(!checked_);
  if (onClick) onClick();
  return true;
}

void Exclusive(const std::vector<OptionButton*>& buttons) {
  for (OptionButton* button : buttons) button->siblings_ = buttons;
}

void OptionButton::Select() {
  for (OptionButton* button : siblings_) {
    if (Replace(button->selected_, button == this)) button->Changed(Aspect::kContent);
  }
}

bool OptionButton::Click() {
  if (!Usable()) return false;
  Select();
  if (onClick) onClick();
  return true;
}

void ListBox::SetItems(std::vector<std::string> items) {
  items_ = std::move(items);
  selected_ = -1;
  Changed(Aspect::kContent);
}

std::string ListBox::SelectedText() const {
  return selected_ < 0 ? std::string() : items_[static_cast<std::size_t>(selected_)];
}

void ListBox::Select(int place) {
  selected_ = place >= 0 && static_cast<std::size_t>(place) < items_.size() ? place : -1;
  Changed(Aspect::kContent);
}

int ListBox::PlaceOf(std::string_view text) const {
  const auto found = std::ranges::find(items_, text);
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

bool ListBox::SelectText(std::string_view text) {
  Select(PlaceOf(text));
  return selected_ >= 0;
}

bool ListBox::Choose(int place) {
  if (!Usable() || place < 0 || static_cast<std::size_t>(place) >= items_.size()) return false;
  Select(place);
  if (onClick) onClick();
  return true;
}

bool ListBox::Choose(std::string_view text) { return Choose(PlaceOf(text)); }

void Button::SetPicture(int picture) {
  if (Replace(picture_, picture)) Changed(Aspect::kContent);
}

bool Button::Click() {
  if (!Usable()) return false;
  if (onClick) onClick();
  return true;
}

void ProgressBar::SetRange(int maximum) {
  maximum_ = std::max(maximum, 0);
  value_ = 0;
  Changed(Aspect::kContent);
}

void ProgressBar::SetValue(int value) {
  value_ = std::clamp(value, 0, maximum_);
  Changed(Aspect::kContent);
}

void PageArea::Embed(Form& form) {
  forms_.push_back(&form);
  form.SetArea(this);
  Changed(Aspect::kContent);
}

void PageArea::Show(Form& form) {
  if (Replace(shown_, &form)) Changed(Aspect::kContent);
}

void PageArea::Clear() {
  shown_ = nullptr;
  forms_.clear();
  Changed(Aspect::kContent);
}

}  // namespace ui
