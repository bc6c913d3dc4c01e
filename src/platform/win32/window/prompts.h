// Questions and notices in the system's message box.
#pragma once

#include "ui/prompts.h"

namespace win32 {

class NativeToolkit;

class MessagePrompts : public ui::Prompts {
 public:
  explicit MessagePrompts(NativeToolkit& toolkit) : toolkit_(toolkit) {}
  ui::Answer Ask(const ui::Prompt& prompt) override;

 private:
  NativeToolkit& toolkit_;
};

}  // namespace win32
