// Questions and notices in a message box of the platform. A port: implemented by the Windows edge.
#pragma once

#include <string>

namespace ui {

enum class Buttons { kOk, kOkCancel, kYesNo, kYesNoCancel };
enum class Icon { kNone, kInformation, kQuestion, kExclamation, kError };
enum class Answer { kOk, kCancel, kYes, kNo };

struct Prompt {
  std::string text;
  std::string title;
  Buttons buttons = Buttons::kOk;
  Icon icon = Icon::kNone;
};

class Prompts {
 public:
  virtual ~Prompts() = default;
  /// Shows the box over the active window of the tool and waits for the answer. Closing the box is kCancel,
  /// or kOk where there is no such button, or kNo in a yes/no question.
  virtual Answer Ask(const Prompt& prompt) = 0;
  /// Nobody is asked now: the program fills in.
  virtual bool ProgramFillsIn() const { return false; }
};

}  // namespace ui
