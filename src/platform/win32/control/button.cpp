// Check boxes, option buttons and push buttons.
#include <algorithm>

#include "platform/win32/control/kinds.h"
#include "platform/win32/system/text.h"
#include "platform/win32/window/form_native.h"
#include "platform/win32/window/window_native.h"

namespace win32 {
namespace {

constexpr int kMark = 20;       // pixels at 96 dots per inch: the mark of a check box and the gap to its text
constexpr int kMarkHeight = 4;  // pixels above the line height
constexpr int kButtonWidth = 50;  // dialog units, after the platform's guidelines
constexpr int kButtonHeight = 14;
constexpr int kButtonPadding = 10;  // dialog units beside the text, both sides
constexpr int kPictureGap = 6;      // pixels around a picture

bool IsClick(UINT code) { return code == BN_CLICKED || code == BN_DBLCLK; }

class NativeMark : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override {
    // With room for the mark of a change, which makes the text bold.
    const ui::Size text = Metrics().Caption(Caption(), Metrics().Bold());
    return {text.width + Metrics().Scale(kMark),
            std::max(text.height, Metrics().LineHeight()) + Metrics().Scale(kMarkHeight)};
  }

  void Mirror(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::kContent) Send(BM_SETCHECK, Marked() ? BST_CHECKED : BST_UNCHECKED);
    NativeControl::Mirror(aspect);
  }

 private:
  virtual bool Marked() const = 0;
};

class NativeCheckBox : public NativeMark {
 public:
  using NativeMark::NativeMark;

  void Command(UINT code) override {
    if (IsClick(code)) Act([this] { Box().Click(); });
  }

 private:
  ui::CheckBox& Box() const { return static_cast<ui::CheckBox&>(Control()); }
  bool Marked() const override { return Box().Checked(); }
  Style GetStyle() const override { return {L"BUTTON", BS_AUTOCHECKBOX | BS_MULTILINE | WS_TABSTOP}; }
};

class NativeOptionButton : public NativeMark {
 public:
  using NativeMark::NativeMark;

  void Command(UINT code) override {
    if (code == BN_CLICKED) Act([this] { Button().Click(); });
    // The native group has moved its mark by itself.
    for (ui::OptionButton* sibling : Button().Siblings()) {
      if (NativeControl* native = Form().Alive() ? Form().Find(*sibling) : nullptr)
        native->Mirror(ui::Aspect::kContent);
    }
  }

 private:
  ui::OptionButton& Button() const { return static_cast<ui::OptionButton&>(Control()); }
  bool Marked() const override { return Button().Selected(); }
  Style GetStyle() const override { return {L"BUTTON", BS_AUTORADIOBUTTON | BS_MULTILINE | WS_TABSTOP}; }
  // The focus alone is no click: it comes back here after a question, too.
  void Created() override { Send(BM_SETDONTCLICK, TRUE, 0); }
};

class NativeButton : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override {
    const int text =
        std::max(Metrics().Caption(Caption(), TextFont()).width, Metrics().Width(Wide(Control().Room())));
    const int picture = Button().Picture() ? Images().Width() + Metrics().Scale(kPictureGap) : 0;
    return {std::max(Metrics().X(kButtonWidth), text + picture + Metrics().X(kButtonPadding)),
            Metrics().Y(kButtonHeight)};
  }

  void Mirror(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::kContent) ShowPicture();
    NativeControl::Mirror(aspect);
  }

  void FontChanged() override {
    shownPicture_ = 0;
    if (Window()) ShowPicture();
    NativeControl::FontChanged();
  }

  void Command(UINT code) override {
    if (!IsClick(code)) return;
    const auto click = [this] { Button().Click(); };
    // Cancelling never asks for a better entry first.
    if (!Form().Top().IsCancelButton(Control())) return Act(click);
    Context().loop.RunOutsideSend(Form().Later(click));
  }

 private:
  ui::Button& Button() const { return static_cast<ui::Button&>(Control()); }

  Style GetStyle() const override {
    const bool isDefault = Form().Top().IsDefaultButton(Control());
    return {L"BUTTON", static_cast<DWORD>(isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | WS_TABSTOP};
  }

  void ShowPicture() {
    if (shownPicture_ == Button().Picture()) return;
    shownPicture_ = Button().Picture();
    BUTTON_IMAGELIST picture = {};
    picture.himl = Images().Button(shownPicture_);
    const int gap = Metrics().Scale(kPictureGap);
    picture.margin = {gap, 0, 0, 0};
    picture.uAlign = Caption().empty() ? BUTTON_IMAGELIST_ALIGN_CENTER : BUTTON_IMAGELIST_ALIGN_LEFT;
    Send(BCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(&picture));
    InvalidateRect(Window(), nullptr, TRUE);
  }

  int shownPicture_ = 0;
};

}  // namespace

std::unique_ptr<NativeControl> MakeCheckBox(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeCheckBox>(form, control);
}

std::unique_ptr<NativeControl> MakeOptionButton(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeOptionButton>(form, control);
}

std::unique_ptr<NativeControl> MakeButton(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeButton>(form, control);
}

}  // namespace win32
