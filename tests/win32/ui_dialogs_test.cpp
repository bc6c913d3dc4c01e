// The system's own dialogs: message boxes, the dialog for saving a file, and help.
#include "platform/win32/system/handle.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/text.h"
#include "platform/win32/window/dialogs.h"
#include "ui_support.h"
// After windows.h, which it needs.
#include <commctrl.h>

namespace ui_test {
namespace {

constexpr unsigned kAskedFor = 0x1004;  // no box for "read only", and a file that is there
constexpr int kNameBox = 0x47C;         // the edit of the file dialog's combo box

class UiDialogs : public UiTest {
 protected:
  UiDialogs() {
    window_.SetTitle("Tool");
    window_.SetLayout(ui::Item(box_));
    Show(window_);
  }
  ~UiDialogs() override { toolkit_.Discard(window_); }

  void WhenAnotherDialogOpens(HWND before, const std::function<void(HWND)>& act) {
    loop_.Post([=, this] {
      if (IsWindowVisible(before)) return WhenAnotherDialogOpens(before, act);
      WhenDialogOpens(act);
    });
  }

  ui::Window window_{"fTool"};
  ui::TextBox box_{window_, "box"};
};

TEST_F(UiDialogs, QuestionsOfferTheirButtonsAndTellTheAnswer) {
  win32::MessagePrompts prompts(toolkit_);
  ui::Window other("fOther");
  toolkit_.Realize(other);
  const struct {
    ui::Buttons buttons;
    std::vector<int> offered;
    WPARAM pressed;
    ui::Answer answer;
  } cases[] = {
      {ui::Buttons::kOk, {IDOK}, IDOK, ui::Answer::kOk},
      {ui::Buttons::kOkCancel, {IDOK, IDCANCEL}, IDCANCEL, ui::Answer::kCancel},
      {ui::Buttons::kYesNo, {IDYES, IDNO}, IDNO, ui::Answer::kNo},
      {ui::Buttons::kYesNoCancel, {IDYES, IDNO, IDCANCEL}, IDYES, ui::Answer::kYes},
  };
  for (const auto& test : cases) {
    std::vector<int> offered;
    std::string title;
    bool blocked = false;
    WhenDialogOpens([&](HWND dialog) {
      for (const int id : {IDOK, IDYES, IDNO, IDCANCEL}) {
        if (IsWindowVisible(GetDlgItem(dialog, id))) offered.push_back(id);
      }
      title = TextOf(dialog);
      blocked = !IsWindowEnabled(toolkit_.HandleOf(window_)) && !IsWindowEnabled(ByName("fOther"));
      PostMessageW(dialog, WM_COMMAND, test.pressed, 0);
    });
    EXPECT_EQ(prompts.Ask({"Are you sure?", "Tool °", test.buttons, ui::Icon::kQuestion}), test.answer);
    EXPECT_EQ(offered, test.offered);
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

LRESULT CALLBACK LookAtTheEnd(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                              DWORD_PTR enabled) {
  if (message == WM_DESTROY)
    *reinterpret_cast<bool*>(enabled) = IsWindowEnabled(GetWindow(dialog, GW_OWNER)) != FALSE;
  return DefSubclassProc(dialog, message, wParam, lParam);
}

// Else the system would bring another program to the front.
TEST_F(UiDialogs, TheOwnerIsEnabledWhenItsBoxGoes) {
  win32::MessagePrompts prompts(toolkit_);
  for (const bool busy : {false, true}) {
    SCOPED_TRACE(busy);
    window_.SetAcceptsInput(!busy);
    {
      const win32::NativeToolkit::Modal box(toolkit_);
      EXPECT_TRUE(IsWindowEnabled(box.Owner())) << "the system enables again only what it disabled itself";
    }
    bool enabled = false;
    WhenDialogOpens([&](HWND dialog) {
      EXPECT_EQ(GetWindow(dialog, GW_OWNER), toolkit_.HandleOf(window_));
      EXPECT_FALSE(IsWindowEnabled(toolkit_.HandleOf(window_)));
      window_.SetAcceptsInput(!busy);
      EXPECT_FALSE(IsWindowEnabled(toolkit_.HandleOf(window_))) << "its own business while the box is open";
      {
        const win32::NativeToolkit::Modal second(toolkit_);
        EXPECT_EQ(second.Owner(), dialog) << "a second box stands over the first one";
      }
      SetWindowSubclass(dialog, LookAtTheEnd, 1, reinterpret_cast<DWORD_PTR>(&enabled));
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

TEST_F(UiDialogs, TheFileNameDialogProposesAndAnswersAName) {
  win32::FileNameDialog dialog(toolkit_);
  wchar_t folder[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, folder);
  const std::string proposed = win32::Utf8(folder) + "PlugIn.log";
  const ui::FileRequest request = {"Log files (*.log)|*.log|Text files (*.txt)|*.txt", proposed, kAskedFor};

  std::string offered;
  WhenDialogOpens([&](HWND window) {
    offered = TextOf(GetDlgItem(window, kNameBox));
    SetTextOf(GetDlgItem(window, kNameBox), "Überblick");
    PostMessageW(window, WM_COMMAND, IDOK, 0);
  });
  const auto chosen = dialog.AskSaveFile(request);
  EXPECT_EQ(offered, "PlugIn.log");
  EXPECT_EQ(chosen, win32::Utf8(folder) + "Überblick.log");

  WhenDialogOpens([](HWND window) { PostMessageW(window, WM_COMMAND, IDCANCEL, 0); });
  EXPECT_EQ(dialog.AskSaveFile(request), std::nullopt);
}

TEST_F(UiDialogs, TheFileNameDialogLeavesNoFolderOrFileThatCannotBeWritten) {
  win32::FileNameDialog dialog(toolkit_);
  const auto type = [this](const char* name) {
    WhenDialogOpens([name](HWND window) {
      SetTextOf(GetDlgItem(window, kNameBox), name);
      PostMessageW(window, WM_COMMAND, IDOK, 0);
    });
  };
  // What may not be written in is left for the documents; a new name is taken in spite of "must exist".
  type("first");
  const auto first =
      dialog.AskSaveFile({"Log files (*.log)|*.log", "C:\\no such folder\\PlugIn.log", kAskedFor});
  ASSERT_TRUE(first);
  EXPECT_NE(first->find("Documents\\first.log"), std::string::npos) << *first;
  EXPECT_EQ(GetFileAttributesW(win32::Wide(*first).c_str()), INVALID_FILE_ATTRIBUTES)
      << "nothing is left behind";

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
  const auto second = dialog.AskSaveFile({"Log files (*.log)|*.log", *first, kAskedFor});
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
