// The makers of the native control kinds, for MakeNativeControl alone.
#pragma once

#include <memory>

#include "platform/win32/window/control_native.h"

namespace win32 {

using NativeMaker = std::unique_ptr<NativeControl>(NativeForm& form, ui::Control& control);

NativeMaker MakeLabel;
NativeMaker MakeFrame;
NativeMaker MakeTextBox;
NativeMaker MakeCheckBox;
NativeMaker MakeOptionButton;
NativeMaker MakeListBox;
NativeMaker MakeButton;
NativeMaker MakeListView;
NativeMaker MakeProgressBar;
NativeMaker MakePageArea;
NativeMaker MakeControlSite;

}  // namespace win32
