// The system's own dialogs: message boxes, the dialog for saving a file, and help.
#include "platform/win32/system/handle.h"
#include "platform/win32/system/process.h"
#include "platform/win32/window/dialogs.h"
#include "ui_support.h"

namespace ui_test {
namespace {

constexpr unsigned kAskedFor = 0x1004;  // no box for "read only", and a file that is there
constexpr int kNameBox = 0x47C;         // the edit of the file dialog's combo box

class UiDialogs : public UiTest {
 protected:
  UiDialogs() {
    window_.SetLayout(ui::Item(box_));
    Show(window_);
  }

  /// Writes `name` over the one that the file dialog proposes when it comes up, and accepts it.
  void WhenAskedEnter(const char* name) {
    WhenDialogOpens([name](HWND window) {
      const HWND box = GetDlgItem(window, kNameBox);
      EXPECT_EQ(TextOf(box), "PlugIn.log");
      SetTextOf(box, name);
      PostMessageW(window, WM_COMMAND, IDOK, 0);
    });
  }
  void WhenAnotherDialogOpens(HWND before, const std::function<void(HWND)>& act) {
    loop_.Post([=, this] {
      if (IsWindowVisible(before)) return WhenAnotherDialogOpens(before, act);
      WhenDialogOpens(act);
    });
  }

  ui::Window window_{"fTool"};
  ui::TextBox box_{window_, "box"};
  win32::FileNameDialog fileDialog_{toolkit_};
};

TEST_F(UiDialogs, QuestionsOfferTheirButtonsAndTellTheAnswer) {
  win32::MessagePrompts prompts(toolkit_);
  ui::Window other("fOther");
  toolkit_.Realize(other);
  using Ids = std::vector<WPARAM>;
  const std::tuple<ui::Buttons, Ids, WPARAM, ui::Answer> cases[] = {
      {ui::Buttons::kOk, {IDOK}, IDOK, ui::Answer::kOk},
      {ui::Buttons::kOkCancel, {IDOK, IDCANCEL}, IDCANCEL, ui::Answer::kCancel},
      {ui::Buttons::kYesNo, {IDYES, IDNO}, IDNO, ui::Answer::kNo},
      {ui::Buttons::kYesNoCancel, {IDYES, IDNO, IDCANCEL}, IDYES, ui::Answer::kYes},
  };
  for (const auto& [buttons, expected, pressed, answer] : cases) {
    Ids offered;
    std::string title;
    bool blocked = false;
    WhenDialogOpens([&, button = pressed](HWND dialog) {
      for (const int id : {IDOK, IDYES, IDNO, IDCANCEL}) {
        if (IsWindowVisible(GetDlgItem(dialog, id))) offered.push_back(static_cast<WPARAM>(id));
      }
      title = TextOf(dialog);
      blocked = !IsWindowEnabled(toolkit_.HandleOf(window_)) && !IsWindowEnabled(ByName("fOther"));
      PostMessageW(dialog, WM_COMMAND, button, 0);
    });
    EXPECT_EQ(prompts.Ask({"Are you sure?", "Tool °", buttons, ui::Icon::kQuestion}), answer);
    EXPECT_EQ(offered, expected);
    EXPECT_EQ(title, "Tool °");
    EXPECT_TRUE(blocked);
  }
  Settle();
  EXPECT_TRUE(IsWindowEnabled(toolkit_.HandleOf(window_)));
  EXPECT_TRUE(IsWindowEnabled(ByName("fOther")));
  toolkit_.Discard(other);
  EXPECT_EQ(GetActiveWindow(), toolkit_.HandleOf(window_));
  EXPECT_EQ(Focused(), "fTool.box");
}

// Else the system would bring another program to the front.
TEST_F(UiDialogs, TheOwnerIsEnabledWhenItsBoxGoes) {
  win32::MessagePrompts prompts(toolkit_);
  for (const bool busy : {false, true}) {
    SCOPED_TRACE(busy);
    window_.SetAcceptsInput(!busy);
    // The system enables again only what it disabled itself.
    EXPECT_TRUE(IsWindowEnabled(win32::NativeToolkit::Modal(toolkit_).Owner()));
    bool enabled = false;
    WhenDialogOpens([&](HWND dialog) {
      EXPECT_EQ(GetWindow(dialog, GW_OWNER), toolkit_.HandleOf(window_));
      EXPECT_FALSE(IsWindowEnabled(toolkit_.HandleOf(window_)));
      window_.SetAcceptsInput(!busy);
      EXPECT_FALSE(IsWindowEnabled(toolkit_.HandleOf(window_))) << "its own business while the box is open";
      EXPECT_EQ(win32::NativeToolkit::Modal(toolkit_).Owner(), dialog) << "of a second box";
      Watch(dialog, [&, dialog](UINT message, LPARAM) {
        if (message == WM_DESTROY) enabled = IsWindowEnabled(GetWindow(dialog, GW_OWNER)) != FALSE;
      });
      PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    prompts.Ask({"Done", "Tool", ui::Buttons::kOk, ui::Icon::kNone});
    EXPECT_TRUE(enabled);
    EXPECT_EQ(GetActiveWindow(), toolkit_.HandleOf(window_));
    EXPECT_EQ(IsWindowEnabled(toolkit_.HandleOf(window_)) != FALSE, !busy);
  }
  window_.SetAcceptsInput(true);
  Settle();
  EXPECT_EQ(Focused(), "fTool.box");
}

// A call that is not answered may hold up the loop of the box itself.
TEST_F(UiDialogs, AWindowThatIsMeantToTakesInputWhileABoxIsOpen) {
  win32::MessagePrompts prompts(toolkit_);
  ui::Window wait("fWait");
  ui::Button button(wait, "button");
  wait.resizable = false;
  wait.duringDialogs = true;
  wait.SetLayout(ui::Item(button));
  button.onClick = [&] { wait.Close(); };
  WhenDialogOpens([&](HWND dialog) {
    toolkit_.Realize(wait);
    wait.Show();
    wait.BringToFront();
    EXPECT_TRUE(IsWindowEnabled(toolkit_.HandleOf(wait)));
    Click(Native(button));
    EXPECT_FALSE(wait.Visible());
    EXPECT_TRUE(RunUntil([&] { return GetForegroundWindow() == dialog; })) << "has the keyboard again";
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  });
  prompts.Ask({"Done", "Tool", ui::Buttons::kOk, ui::Icon::kNone});
  toolkit_.Discard(wait);
}

TEST_F(UiDialogs, TheFileNameDialogProposesAndAnswersAName) {
  wchar_t folder[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, folder);
  const ui::FileRequest request = {"Log files (*.log)|*.log|Text files (*.txt)|*.txt",
                                   win32::Utf8(folder) + "PlugIn.log", kAskedFor};
  WhenAskedEnter("Überblick");
  EXPECT_EQ(fileDialog_.AskSaveFile(request), win32::Utf8(folder) + "Überblick.log");

  WhenDialogOpens([](HWND window) { PostMessageW(window, WM_COMMAND, IDCANCEL, 0); });
  EXPECT_EQ(fileDialog_.AskSaveFile(request), std::nullopt);
}

TEST_F(UiDialogs, TheFileNameDialogLeavesNoFolderOrFileThatCannotBeWritten) {
  // What may not be written in is left for the documents; a new name is taken in spite of "must exist".
  WhenAskedEnter("first");
  const auto first =
      fileDialog_.AskSaveFile({"Log files (*.log)|*.log", "C:\\no such folder\\PlugIn.log", kAskedFor});
  ASSERT_TRUE(first);
  EXPECT_NE(first->find("Documents\\first.log"), std::string::npos) << *first;
  EXPECT_EQ(GetFileAttributesW(win32::Wide(*first).c_str()), INVALID_FILE_ATTRIBUTES);  // nothing is left

  // Another program has the file to itself.
  const win32::Handle other(CreateFileW(win32::Wide(*first).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  std::string told;
  int dialogs = 0;
  const std::function<void(HWND)> act = [&](HWND window) {
    if (const HWND name = GetDlgItem(window, kNameBox)) {
      SetTextOf(name, ++dialogs == 1 ? "first.log" : "second.log");
    } else {
      for (HWND text = nullptr; (text = FindWindowExW(window, text, L"Static", nullptr));)
        told += TextOf(text);
    }
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    if (dialogs < 2) WhenAnotherDialogOpens(window, act);
  };
  WhenDialogOpens(act);
  const auto second = fileDialog_.AskSaveFile({"Log files (*.log)|*.log", *first, kAskedFor});
  ASSERT_TRUE(second);
  EXPECT_NE(second->find("second.log"), std::string::npos);
  EXPECT_NE(told.find(*first + "\n"), std::string::npos) << told;
  EXPECT_NE(told.find("(32)"), std::string::npos) << told;
}

TEST_F(UiDialogs, HelpSaysWhatIsMissing) {
  win32::HtmlHelpViewer help;
  const auto show = [&help](const std::string& file) {
    return help.Show(file + ">Main", shell::kHelpContext, 45);
  };
  EXPECT_EQ(show("C:\\nowhere\\Help File.chm"), shell::HelpOutcome::kNoFile);
  EXPECT_EQ(show(win32::ProgramPath()), shell::HelpOutcome::kNoViewer);  // a file that no viewer opens
}

}  // namespace
}  // namespace ui_test
