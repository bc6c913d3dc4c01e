// Texts that a script can ask for, to compare or to remember.
#include <fmt/format.h>

#include "base/error.h"
#include "base/numbers.h"
#include "base/record.h"
#include "base/registry.h"
#include "base/text.h"
#include "platform/win32/system/registry.h"
#include "simulator/win32/commands.h"
#include "simulator/win32/foreign.h"

namespace simhost {
namespace {

std::string StoredValue(Stage& stage, Words words) {
  int field = -1;
  if (words.size() >= 6 && words[words.size() - 2].text == "field") {
    field = WholeNumber(words.back());
    words = words.first(words.size() - 2);
  }
  const int precision = words.size() == 5 ? WholeNumber(words[4]) : -1;
  std::string text =
      stage.OnHost([device = words[0].text, object = words[1].text, number = WholeNumber(words[2]),
                    format = words[3].text, precision](Host& host) {
        return host.GetBuilding().StoredText(device, object, number, format, precision);
      });
  if (field < 0) return text;
  return std::string(base::Record(text).Field(static_cast<std::size_t>(field)));
}

std::string UnitNames(Stage& stage, Words) {
  std::vector<std::string> names;
  for (const auto& unit : stage.OnHost([](Host& host) { return host.GetBuilding().Devices(); }))
    names.push_back(unit.name);
  return base::Join(names, ", ");
}

std::string ObjectState(Stage& stage, Words words) {
  return stage.OnHost([device = words[0].text, object = words[1].text](Host& host) {
    return host.GetBuilding().StateOfObject(device, object);
  });
}

std::string ShownText(Stage& stage, Words words) { return TextOf(Named(stage, words[0].text)); }

std::string IsEnabled(Stage& stage, Words words) {
  return IsWindowEnabled(Named(stage, words[0].text)) ? "yes" : "no";
}

std::string IsVisible(Stage& stage, Words words) {
  return OnScreen(Named(stage, words[0].text)) ? "yes" : "no";
}

std::string CheckedState(Stage& stage, Words words) {
  return IsChecked(Named(stage, words[0].text)) ? "on" : "off";
}

std::string FrontCaption(Stage&, Words) {
  HWND front = GetForegroundWindow();
  return front ? TextOf(front) : std::string();
}

std::string PromptText(Stage&, Words) {
  for (HWND dialog : Dialogs()) {
    if (std::string text = DialogText(dialog); !text.empty()) return text;
  }
  return {};
}

std::string RegistryText(Stage&, Words words) {
  win32::WindowsRegistry registry;
  return base::ReadRegistryString(registry, base::RegistryRoot::kCurrentUser, words[0].text, words[1].text);
}

std::string ToolProperty(Stage& stage, Words words) {
  return stage.OnHost([name = words[0].text](Host& host) { return host.CurrentTool().Get(name).AsText(); });
}

struct Question {
  std::string_view name;
  std::string_view usage;
  std::size_t least;  // number of words behind the name
  std::size_t most;
  std::string (*answer)(Stage&, Words);
};

constexpr Question kQuestions[] = {
    {"text", "NAME", 1, 1, ShownText},
    {"enabled", "NAME", 1, 1, IsEnabled},     // yes or no
    {"visible", "NAME", 1, 1, IsVisible},     // yes or no
    {"checked", "NAME", 1, 1, CheckedState},  // on or off
    {"front", "", 0, 0, FrontCaption},        // of the window that has the keyboard, on the whole desktop
    {"prompt", "", 0, 0, PromptText},         // of the message box that is open; empty for none
    {"value", "DEVICE OBJECT NUMBER FORMAT [PRECISION] [field N]", 4, 7, StoredValue},
    {"units", "", 0, 0, UnitNames},                 // names in the order of the list
    {"state", "DEVICE OBJECT", 2, 2, ObjectState},  // ENABLED or DISABLED, and a test's result
    {"tool", "PROPERTY", 1, 1, ToolProperty},
    {"registry", "KEY NAME", 2, 2, RegistryText},  // below the current user
};

}  // namespace

std::int32_t WholeNumber(const Word& word) {
  if (const auto number = base::ParseWhole<std::int32_t>(word.text)) return *number;
  throw base::Error("\"" + word.text + "\" is no whole number");
}

std::string Answer(Stage& stage, Words question) {
  if (question.size() == 1 && question[0].quoted) return question[0].text;
  for (const Question& entry : kQuestions) {
    if (question.empty() || entry.name != question[0].text) continue;
    const Words rest = question.subspan(1);
    if (rest.size() < entry.least || rest.size() > entry.most)
      throw base::Error(fmt::format("it is written: {} {}", entry.name, entry.usage));
    return entry.answer(stage, rest);
  }
  throw base::Error("expected a text in quotation marks, or one of:\n" + QuestionUsage());
}

std::string QuestionUsage() {
  std::string all;
  for (const Question& entry : kQuestions) all += fmt::format("  {} {}\n", entry.name, entry.usage);
  return all;
}

HWND Named(Stage& stage, const std::string& name) {
  HWND window = nullptr;
  stage.patience.Until([&] { return (window = FindNamed(name)) != nullptr; }, "there is no \"" + name + "\"");
  return window;
}

std::string Difference(std::string_view what, std::string_view expected, std::string_view there) {
  if (expected == there) return {};
  return std::string(what) + ": expected \"" + std::string(expected) + "\", there was \"" +
         std::string(there) + "\"";
}

}  // namespace simhost
