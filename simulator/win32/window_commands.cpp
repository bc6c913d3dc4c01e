// What a person does at the tool's windows and sees there.
#include "base/error.h"
#include "base/text.h"
#include "simulator/win32/commands.h"
#include "simulator/win32/foreign.h"
#include "simulator/win32/foreign_list.h"
#include "simulator/win32/person.h"
#include "simulator/win32/shot.h"

namespace simhost {
namespace {

constexpr char kMainWindow[] = "fMain";
constexpr char kProgressWindow[] = "fLoading";
constexpr char kPageList[] = "fMain.lvwConfig";
constexpr char kLogList[] = "fMessage.ListView1";
constexpr char kTextsOfTool[] = "RoofTopConfiguration";

bool Shown(const std::string& name) {
  HWND window = FindNamed(name);
  return window && OnScreen(window);
}

std::string OpenDialog() {
  for (HWND dialog : Dialogs()) {
    return "a message box \"" + TextOf(dialog) +
           "\" is open: " + base::ReplaceAll(DialogText(dialog), "\n", " / ");
  }
  return {};
}

Patience Seconds(Stage& stage, Words words, std::size_t place) {
  if (words.size() <= place) return stage.patience;
  return stage.patience.With(std::chrono::seconds(WholeNumber(words[place])));
}

void WaitWindow(Stage& stage, Words words) {
  Seconds(stage, words, 1).Until([&]() -> std::string {
    if (Shown(words[0].text)) return {};
    const std::string dialog = OpenDialog();
    return "the window \"" + words[0].text + "\" is not there" + (dialog.empty() ? "" : "; ") + dialog;
  });
}

void WaitGone(Stage& stage, Words words) {
  Seconds(stage, words, 1)
      .Until([&] { return !Shown(words[0].text); }, "\"" + words[0].text + "\" is still there");
}

// Nothing is under way any more: no order of the host, no progress window, and the main window takes input.
void WaitIdle(Stage& stage, Words words) {
  Seconds(stage, words, 0).Until([&]() -> std::string {
    if (stage.Ordered()) return "the tool is still carrying out the host's order";
    if (Shown(kProgressWindow)) return "the tool still shows its progress";
    if (std::string dialog = OpenDialog(); !dialog.empty()) return dialog;
    HWND main = FindNamed(kMainWindow);
    return !main || !IsWindowVisible(main) || IsWindowEnabled(main) ? "" : "the main window takes no input";
  });
}

// The tool comes up on the device, and is done with that.
void Open(Stage& stage, Words words) {
  constexpr char kSeconds[] = "60";
  const Word window[] = {{kMainWindow}, {kSeconds}};
  stage.Give([device = words[0].text](Host& host) { host.Configure(device); });
  WaitWindow(stage, window);
  WaitIdle(stage, Words(window).last(1));
}

// What the tool shows for an English text in the language chosen for all plug-ins; other texts as they are.
std::string InLanguage(Stage& stage, const std::string& text) {
  return stage.OnHost([text](Host& host) {
    try {
      const auto texts = host.GetBuilding().Language().Call("Section", kTextsOfTool).AsObject();
      return texts.Get("Item", base::Upper(base::Trim(text))).AsText();
    } catch (const automation::Error&) {
      return text;
    }
  });
}

void Page(Stage& stage, Words words) {
  person::ClickRow(Named(stage, kPageList), InLanguage(stage, words[0].text), stage.patience);
  WaitIdle(stage, {});
}

// What a person does to the window or control that the first word names.
template <void (*act)(HWND, const Patience&)>
void Act(Stage& stage, Words words) {
  act(Named(stage, words[0].text), stage.patience);
}

// The same with the text of the second word.
template <void (*act)(HWND, std::string_view, const Patience&)>
void ActWithText(Stage& stage, Words words) {
  act(Named(stage, words[0].text), words[1].text, stage.patience);
}

void PressKeys(Stage& stage, Words words) {
  for (const Word& key : words.subspan(1)) person::Press(Named(stage, words[0].text), key.text);
}

// A letter, or the underlined one of an English caption in the language of the tool.
char MenuLetter(Stage& stage, const std::string& word) {
  if (word.size() == 1) return word[0];
  const std::string caption = InLanguage(stage, word);
  const std::size_t mark = caption.find('&');
  if (mark + 1 >= caption.size()) throw base::Error("\"" + caption + "\" has no underlined letter");
  return caption[mark + 1];
}

void Menu(Stage& stage, Words words) {
  WaitIdle(stage, {});
  const char menu = MenuLetter(stage, words[0].text);
  person::ChooseInMenu(Named(stage, kMainWindow), menu, MenuLetter(stage, words[1].text), stage.patience);
}

void Popup(Stage& stage, Words words) {
  if (words[1].text.size() != 1) throw base::Error("expected the letter of an entry");
  person::ChooseInPopup(Named(stage, words[0].text), words[1].text[0], stage.patience);
}

void LeaveField(Stage& stage, Words) {
  HWND main = Named(stage, kMainWindow);
  HWND focus = FocusOf(main);
  if (!focus) throw base::Error("no field has the keyboard");
  person::Leave(focus, stage.patience);
}

void Check(Stage& stage, Words words) {
  if (words[1].text != "on" && words[1].text != "off") throw base::Error("expected on or off");
  HWND box = Named(stage, words[0].text);
  if (IsChecked(box) != (words[1].text == "on")) person::Click(box, stage.patience);
}

void AnswerPrompt(Stage& stage, Words words) {
  HWND dialog = nullptr;
  stage.patience.Until([&] { return (dialog = FindDialog(words[0].text)) != nullptr; },
                       "there is no message box \"" + words[0].text + "\"");
  person::Answer(dialog, words[1].text, stage.patience);
}

std::string MissingRow(const std::string& list, const std::string& text) {
  HWND window = FindNamed(list);
  if (!window) return "there is no \"" + list + "\"";
  const ForeignList rows(window);
  if (rows.FindRowContaining(text) >= 0) return {};
  std::string all;
  for (int row = 0; row < rows.Rows(); ++row) {
    all += "\n          ";
    for (int column = 0; column < rows.Columns(); ++column)
      all += (column ? " | " : "") + rows.Cell(row, column);
  }
  return "no row of " + list + " contains \"" + text + "\"; the rows are:" + all;
}

void ExpectRow(Stage& stage, Words words) {
  stage.patience.Until([&] { return MissingRow(words[0].text, words[1].text); });
}

void LogContains(Stage& stage, Words words) {
  stage.patience.Until([&] { return MissingRow(kLogList, words[0].text); });
}

void CloseNamed(Stage& stage, Words words) { person::CloseWindow(Named(stage, words[0].text)); }

// A picture of the named window, of the message box when the name is "prompt", else of the main window.
void Shot(Stage& stage, Words words) {
  const std::string name = words.size() > 1 ? words[1].text : kMainWindow;
  HWND window = nullptr;
  if (name == "prompt") {
    for (HWND dialog : Dialogs()) window = dialog;
    if (!window) throw base::Error("there is no message box");
  } else {
    window = Named(stage, name);
  }
  TakeShot(window, words[0].text, stage.patience);
}

void ShotFolder(Stage&, Words words) { UseShotFolder(words[0].text); }

// A picture of each page, named by its window class.
void ShotPages(Stage& stage, Words) {
  const ForeignList list(Named(stage, kPageList));
  for (int row = 0; row < list.Rows(); ++row) {
    const std::string caption = list.Cell(row, 0);
    person::ClickRow(FindNamed(kPageList), caption, stage.patience);
    WaitIdle(stage, {});
    HWND main = Named(stage, kMainWindow);
    TakeShot(main, "page-" + ShownForm(main), stage.patience);
  }
}

constexpr Command kCommands[] = {
    {"open", "DEVICE", 1, 1, Open},
    {"wait window", "NAME [SECONDS]", 1, 2, WaitWindow},
    {"wait gone", "NAME [SECONDS]", 1, 2, WaitGone},
    {"wait idle", "[SECONDS]", 0, 1, WaitIdle},
    {"page", "CAPTION", 1, 1, Page},
    {"select", "LIST text", 2, 2, ActWithText<person::ClickRow>},
    {"type", "NAME text", 2, 2, ActWithText<person::Type>},
    {"key", "NAME {TAB} ...", 2, 20, PressKeys},
    {"menu", "LETTER|CAPTION LETTER|CAPTION", 2, 2, Menu},
    {"popup", "NAME LETTER", 2, 2, Popup},
    {"open row", "LIST text", 2, 2, ActWithText<person::OpenRow>},
    {"wheel", "NAME", 1, 1, Act<person::TurnWheel>},
    {"leave", "", 0, 0, LeaveField},
    {"click", "NAME", 1, 1, Act<person::Click>},
    {"choose", "NAME text", 2, 2, ActWithText<person::Choose>},
    {"check", "NAME on|off", 2, 2, Check},
    {"answer", "TITLE OK|Cancel|Yes|No", 2, 2, AnswerPrompt},
    {"row", "LIST text", 2, 2, ExpectRow},
    {"log contains", "text", 1, 1, LogContains},
    {"close", "WINDOW", 1, 1, CloseNamed},
    {"shot", "NAME [WINDOW|prompt]", 1, 2, Shot},
    {"shot-folder", "NAME", 1, 1, ShotFolder},
    {"shot-pages", "", 0, 0, ShotPages},
};

}  // namespace

std::span<const Command> WindowCommands() { return kCommands; }

}  // namespace simhost
