// Controls as plain data. A control holds what a person sees (text, enabled, visible, content) and the
// handlers that run when the person acts. Pages read and write controls and never a window; a renderer
// mirrors each control to a native one through its Peer. What code sets never runs a handler; what a person
// does (Type, Click, Choose, Leave) runs exactly the handlers that the native control would, so tests act as
// a person does.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ui {

class Control;
class Form;
class Frame;

enum class Kind {
  kLabel,
  kFrame,
  kTextBox,
  kCheckBox,
  kOptionButton,
  kListBox,
  kButton,
  kListView,
  kProgressBar,
  kPageArea,
  kControlSite,
  kCount
};

/// What changed about a control: caption or typed text, enabled, visible, tip, accessible name, mark, or its
/// content (checked, entries, selection, rows, progress, picture, hosted page).
enum class Aspect { kText, kEnabled, kVisible, kTip, kName, kMark, kContent };

/// Why a control stands out from the others: what it shows is not stored yet, or was refused.
enum class Mark { kNone, kChanged, kRefused };

/// The native side of the controls of one form; implemented by a renderer, absent in tests.
class Peer {
 public:
  virtual ~Peer() = default;
  virtual void Changed(Control& control, Aspect aspect) = 0;
  virtual void TakeFocus(Control& control) = 0;
  /// The form has another layout of the same controls.
  virtual void LayoutChanged() = 0;
};

class Control {
 public:
  Control(Form& form, Kind kind, std::string name);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  Form& GetForm() const { return form_; }
  Kind GetKind() const { return kind_; }
  const std::string& Name() const { return name_; }

  /// Caption ("&" marks the mnemonic), or the content of a text box.
  const std::string& Text() const { return text_; }
  void SetText(std::string_view text);

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  const std::string& Tip() const { return tip_; }
  void SetTip(std::string_view tip);
  /// What a screen reader calls the control ("Space Temperature, Proportional Gain, % / °C"); empty: the
  /// native control's own name, its caption or the label before it.
  const std::string& AccessibleName() const { return accessibleName_; }
  void SetAccessibleName(std::string_view name);

  /// A mark, and what the tip says of it above the control's own.
  Mark GetMark() const { return mark_; }
  void SetMark(Mark mark, std::string_view reason = {});
  /// The whole tip as shown: what the mark says and the control's own.
  std::string ShownTip() const;

  /// The layout keeps room for each line of this text too: behind every entry of a list, or instead of a
  /// caption.
  const std::string& Room() const { return room_; }
  void SetRoom(std::string_view text);

  /// Moves the keyboard focus here.
  void Focus();

  /// The group box around the control, or nothing; the layout of the form says which.
  Frame* GetFrame() const { return frame_; }
  void SetFrame(Frame* frame) { frame_ = frame; }
  /// Enabled, and so are all group boxes around it.
  bool EnabledInFrame() const;
  /// Visible, and so are all group boxes around it.
  bool VisibleInFrame() const;

  /// True when a person could act on the control: enabled, visible, and its form accepts input.
  bool Usable() const;

 protected:
  void Changed(Aspect aspect);

 private:
  Form& form_;
  Kind kind_;
  std::string name_;
  std::string text_;
  std::string tip_;
  std::string accessibleName_;
  std::string room_;
  std::string markReason_;
  Mark mark_ = Mark::kNone;
  Frame* frame_ = nullptr;
  bool enabled_ = true;
  bool visible_ = true;
};

class Label : public Control {
 public:
  Label(Form& form, std::string name) : Control(form, Kind::kLabel, std::move(name)) {}

  /// A heading is shown in larger letters; set before the window is first shown.
  bool Heading() const { return heading_; }
  void SetHeading(bool heading) { heading_ = heading; }

 private:
  bool heading_ = false;
};

/// The border and caption of a group of controls. A disabled one disables, and an invisible one hides, all it
/// holds.
class Frame : public Control {
 public:
  Frame(Form& form, std::string name) : Control(form, Kind::kFrame, std::move(name)) {}
};

class TextBox : public Control {
 public:
  TextBox(Form& form, std::string name) : Control(form, Kind::kTextBox, std::move(name)) {}

  std::function<void()> onChange;
  std::function<void()> onFocus;
  /// Runs when a person leaves the box; "no" puts the focus back into it.
  std::function<bool()> onLeave;

  /// Width in average characters, for the layout.
  int Columns() const { return columns_; }
  void SetColumns(int columns) { columns_ = columns; }

  bool ReadOnly() const { return readOnly_; }
  void SetReadOnly(bool readOnly);

  /// What a person does. Type replaces the whole text. Each answers no when the box cannot be used.
  bool Enter();
  bool Type(std::string_view text);
  /// Yes when the content was accepted.
  bool Leave();

 private:
  int columns_ = 9;
  bool readOnly_ = false;
};

class CheckBox : public Control {
 public:
  CheckBox(Form& form, std::string name) : Control(form, Kind::kCheckBox, std::move(name)) {}

  std::function<void()> onClick;

  bool Checked() const { return checked_; }
  void SetChecked(bool checked);
  /// A person's click: turns the mark over and runs onClick.
  bool Click();

 private:
  bool checked_ = false;
};

/// One of several choices of which exactly one is selected; see Exclusive.
class OptionButton : public Control {
 public:
  OptionButton(Form& form, std::string name) : Control(form, Kind::kOptionButton, std::move(name)) {}

  std::function<void()> onClick;

  bool Selected() const { return selected_; }
  /// Selects this button and clears the others of its group.
  void Select();
  /// A person's click: selects and runs onClick, also when it was selected already.
  bool Click();

  const std::vector<OptionButton*>& Siblings() const { return siblings_; }

 private:
  friend void Exclusive(const std::vector<OptionButton*>& buttons);

  bool selected_ = false;
  std::vector<OptionButton*> siblings_;  // the whole group, this one included
};

/// Makes one group of the buttons; selects none.
void Exclusive(const std::vector<OptionButton*>& buttons);

/// A drop-down list without free text.
class ListBox : public Control {
 public:
  ListBox(Form& form, std::string name) : Control(form, Kind::kListBox, std::move(name)) {}

  std::function<void()> onClick;

  const std::vector<std::string>& Items() const { return items_; }
  /// Replaces the entries; nothing is selected afterwards.
  void SetItems(std::vector<std::string> items);
  /// Place of the selected entry, or -1.
  int Selected() const { return selected_; }
  std::string SelectedText() const;
  /// True where the entries are words of the tool, which change with the language; otherwise they are the
  /// device's own names.
  bool Translated() const { return translated_; }
  void SetTranslated(bool translated) { translated_ = translated; }
  void Select(int place);
  /// Selects the entry with exactly this text; answers no and selects none when there is no such entry.
  bool SelectText(std::string_view text);

  /// A person's choice: selects and runs onClick.
  bool Choose(int place);
  bool Choose(std::string_view text);

 private:
  int PlaceOf(std::string_view text) const;

  std::vector<std::string> items_;
  int selected_ = -1;
  bool translated_ = false;
};

class Button : public Control {
 public:
  Button(Form& form, std::string name) : Control(form, Kind::kButton, std::move(name)) {}

  std::function<void()> onClick;

  /// Number of the picture shown: 0 none, 1 log, 2 error, 3 warning.
  int Picture() const { return picture_; }
  void SetPicture(int picture);
  bool Click();

 private:
  int picture_ = 0;
};

class ProgressBar : public Control {
 public:
  ProgressBar(Form& form, std::string name) : Control(form, Kind::kProgressBar, std::move(name)) {}

  int Value() const { return value_; }
  int Maximum() const { return maximum_; }
  void SetRange(int maximum);
  /// 0 to Maximum; more or less is cut.
  void SetValue(int value);

 private:
  int value_ = 0;
  int maximum_ = 0;
};

/// The place in a window where one of several forms is shown. Disabled, its forms show everything and take
/// nothing.
class PageArea : public Control {
 public:
  PageArea(Form& form, std::string name) : Control(form, Kind::kPageArea, std::move(name)) {}

  const std::vector<Form*>& Forms() const { return forms_; }
  /// Makes `form` one of the area's forms; it outlives the area or is removed by Clear.
  void Embed(Form& form);
  Form* Shown() const { return shown_; }
  void Show(Form& form);
  void Clear();

 private:
  std::vector<Form*> forms_;
  Form* shown_ = nullptr;
};

/// The place in a window where a control of another maker is created at run time; see ControlHost.
class ControlSite : public Control {
 public:
  /// `width` and `height` in dialog units.
  ControlSite(Form& form, std::string name, int width, int height)
      : Control(form, Kind::kControlSite, std::move(name)), width_(width), height_(height) {}

  int Width() const { return width_; }
  int Height() const { return height_; }

 private:
  int width_;
  int height_;
};

/// N controls of one kind, named "name(first)" to "name(first+N-1)"; places count from 0 in any case.
template <class T, std::size_t N>
class ControlArray {
 public:
  ControlArray(Form& form, const std::string& name, std::size_t first = 0) {
    for (std::size_t i = 0; i < N; ++i)
      items_[i] = std::make_unique<T>(form, name + "(" + std::to_string(first + i) + ")");
  }

  static constexpr std::size_t Size() { return N; }
  T& operator[](std::size_t index) const { return *items_.at(index); }

 private:
  std::array<std::unique_ptr<T>, N> items_;
};

template <std::size_t N>
using TextBoxArray = ControlArray<TextBox, N>;
template <std::size_t N>
using LabelArray = ControlArray<Label, N>;

/// N exclusive option buttons.
template <std::size_t N>
class OptionGroup : public ControlArray<OptionButton, N> {
 public:
  OptionGroup(Form& form, const std::string& name) : ControlArray<OptionButton, N>(form, name) {
    std::vector<OptionButton*> buttons;
    for (std::size_t i = 0; i < N; ++i) buttons.push_back(&(*this)[i]);
    Exclusive(buttons);
  }
};

}  // namespace ui
