// What is under way in the tool: commands of the main window, questions, dialogs of the system, the wait for
// a silent host. Meanwhile no other command is taken and the program does not end. The program owns the one
// count, and hands prompts and file dialogs that count themselves to every room.
#pragma once

#include <optional>
#include <string>

#include "ui/file_dialog.h"
#include "ui/prompts.h"

namespace shell {

class Activity {
 public:
  /// Something is under way for as long as this lives.
  class Scope {
   public:
    explicit Scope(Activity& activity) : activity_(activity) { ++activity_.open_; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() { --activity_.open_; }

   private:
    Activity& activity_;
  };

  bool Busy() const { return open_ > 0; }

 private:
  int open_ = 0;
};

class CountedPrompts : public ui::Prompts {
 public:
  CountedPrompts(ui::Prompts& prompts, Activity& activity) : prompts_(prompts), activity_(activity) {}
  ui::Answer Ask(const ui::Prompt& prompt) override {
    const Activity::Scope asking(activity_);
    return prompts_.Ask(prompt);
  }

 private:
  ui::Prompts& prompts_;
  Activity& activity_;
};

class CountedFileDialog : public ui::FileDialog {
 public:
  CountedFileDialog(ui::FileDialog& dialog, Activity& activity) : dialog_(dialog), activity_(activity) {}
  std::optional<std::string> AskSaveFile(const ui::FileRequest& request) override {
    const Activity::Scope asking(activity_);
    return dialog_.AskSaveFile(request);
  }
  std::optional<std::string> AskOpenFile(const ui::FileRequest& request) override {
    const Activity::Scope asking(activity_);
    return dialog_.AskOpenFile(request);
  }

 private:
  ui::FileDialog& dialog_;
  Activity& activity_;
};

}  // namespace shell
