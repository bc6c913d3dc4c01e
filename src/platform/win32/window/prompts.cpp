#include "platform/win32/window/prompts.h"

#include <windows.h>

#include "platform/win32/system/utf.h"
#include "platform/win32/window/toolkit.h"

namespace win32 {
namespace {

constexpr UINT kButtons[] = {MB_OK, MB_OKCANCEL, MB_YESNO, MB_YESNOCANCEL};
constexpr UINT kIcons[] = {0, MB_ICONINFORMATION, MB_ICONQUESTION, MB_ICONEXCLAMATION, MB_ICONERROR};

}  // namespace

ui::Answer MessagePrompts::Ask(const ui::Prompt& prompt) {
  const NativeToolkit::Modal modal(toolkit_);
  const UINT style =
      kButtons[static_cast<int>(prompt.buttons)] | kIcons[static_cast<int>(prompt.icon)] | MB_SETFOREGROUND;
  switch (MessageBoxW(modal.Owner(), Wide(prompt.text).c_str(), Wide(prompt.title).c_str(), style)) {
    case IDOK:
      return ui::Answer::kOk;
    case IDYES:
      return ui::Answer::kYes;
    case IDNO:
      return ui::Answer::kNo;
    default:
      break;
  }
  // Closed, or the system could not show it: the answer that changes nothing.
  if (prompt.buttons == ui::Buttons::kOk) return ui::Answer::kOk;
  return prompt.buttons == ui::Buttons::kYesNo ? ui::Answer::kNo : ui::Answer::kCancel;
}

}  // namespace win32
