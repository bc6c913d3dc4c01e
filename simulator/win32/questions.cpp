// Texts that a script can ask for, to compare or to remember.
#include <charconv>

#include "base/error.h"
#include "base/record.h"
#include "simulator/win32/commands.h"
#include "simulator/win32/foreign.h"

namespace simhost {
namespace {

// DEVICE OBJECT NUMBER FORMAT [PRECISION] [field N]
std::string StoredValue(Stage& stage, Words words) {
  int field = -1;
  if (words.size() >= 6 && words[words.size() - 2].text == "field") {
    field = WholeNumber(words.back());
    words = words.first(words.size() - 2);
  }
  if (words.size() < 4 || words.size() > 5)
    throw base::Error("value wants DEVICE OBJECT NUMBER FORMAT [PRECISION]");
  const int precision = words.size() == 5 ? WholeNumber(words[4]) : -1;
  std::string text =
      stage.OnHost([device = words[0].text, object = words[1].text, number = WholeNumber(words[2]),
                    format = words[3].text, precision](Host& host) {
        return host.GetBuilding().StoredText(device, object, number, format, precision);
      });
  if (field < 0) return text;
  return std::string(base::Record(text).Field(static_cast<std::size_t>(field)));
}

// DEVICE OBJECT
std::string ObjectState(Stage& stage, Words words) {
  if (words.size() != 2) throw base::Error("state wants DEVICE OBJECT");
  return stage.OnHost([device = words[0].text, object = words[1].text](Host& host) {
    return host.GetBuilding().StateOfObject(device, object);
  });
}

std::string ShownText(Stage& stage, Words words) {
  if (words.size() != 1) throw base::Error("text wants the NAME of a window or control");
  HWND window = nullptr;
  stage.patience.Until([&]() -> std::string {
    window = FindNamed(words[0].text);
    return window ? "" : "there is no \"" + words[0].text + "\"";
  });
  return TextOf(window);
}

std::string ToolProperty(Stage& stage, Words words) {
  if (words.size() != 1) throw base::Error("tool wants the name of a PROPERTY");
  return stage.OnHost([name = words[0].text](Host& host) { return host.CurrentTool().Get(name).AsText(); });
}

struct Question {
  std::string_view name;
  std::string (*answer)(Stage&, Words);
};

constexpr Question kQuestions[] = {
    {"value", StoredValue}, {"state", ObjectState}, {"text", ShownText}, {"tool", ToolProperty}};

}  // namespace

std::int32_t WholeNumber(const Word& word) {
  std::int32_t number = 0;
  const char* end = word.text.data() + word.text.size();
  const auto [stop, error] = std::from_chars(word.text.data(), end, number);
  if (error == std::errc() && stop == end) return number;
  throw base::Error("\"" + word.text + "\" is no whole number");
}

std::string Answer(Stage& stage, Words question) {
  if (question.size() == 1 && question[0].quoted) return question[0].text;
  for (const Question& entry : kQuestions) {
    if (!question.empty() && entry.name == question[0].text) return entry.answer(stage, question.subspan(1));
  }
  throw base::Error("expected a text in quotation marks, or one of value, state, text, tool");
}

std::string Difference(std::string_view what, std::string_view expected, std::string_view there) {
  if (expected == there) return {};
  return std::string(what) + ": expected \"" + std::string(expected) + "\", there was \"" +
         std::string(there) + "\"";
}

}  // namespace simhost
