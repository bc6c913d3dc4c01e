#include "platform/win32/control/kinds.h"

#include <iterator>

namespace win32 {

std::unique_ptr<NativeControl> MakeNativeControl(NativeForm& form, ui::Control& control) {
  // In the order of ui::Kind.
  static constexpr NativeMaker* kMakers[] = {
      MakeLabel,  MakeFrame,    MakeTextBox,     MakeCheckBox, MakeOptionButton, MakeListBox,
      MakeButton, MakeListView, MakeProgressBar, MakePageArea, MakeControlSite,
  };
  static_assert(std::size(kMakers) == static_cast<std::size_t>(ui::Kind::kCount));
  return kMakers[static_cast<int>(control.GetKind())](form, control);
}

}  // namespace win32
