// Orders to the host.
#include <tuple>

#include "base/error.h"
#include "base/registry.h"
#include "platform/win32/registry.h"
#include "simulator/win32/commands.h"
#include "simulator/win32/console.h"
#include "simulator/win32/measure.h"
#include "simulator/win32/tool_process.h"

namespace simhost {
namespace {

// A word in quotation marks is a text; True, False and digits without them are a boolean and a number.
automation::Value Typed(const Word& word) {
  if (word.quoted) return word.text;
  if (word.text == "True") return true;
  if (word.text == "False") return false;
  return WholeNumber(word);
}

void ShowHost(Stage& stage, Words) {
  stage.OnHost([show = stage.showHostWindow](Host&) { show(true); });
}

void StartTool(Stage& stage, Words) {
  stage.Give([](Host& host) { host.StartTool(); });
  stage.order->Wait(stage.patience.limit);
}

void Prepare(Stage& stage, Words words) {
  stage.OnHost([device = words[0].text](Host& host) { host.PrepareTool(host.Device(device)); });
}

void Send(Stage& stage, Words words) {
  stage.Give([command = WholeNumber(words[0]), objectClass = WholeNumber(words[1]),
              key = words[2].text](Host& host) { host.CurrentTool().Send(command, objectClass, key); });
}

void Configure(Stage& stage, Words words) {
  stage.Give([device = words[0].text](Host& host) { host.Configure(device); });
}

// PROPERTY = value, or PROPERTY ?= text
void ToolProperty(Stage& stage, Words words) {
  const std::string name = words[0].text;
  if (words[1].text == "=") {
    stage.OnHost([name, value = Typed(words[2])](Host& host) { host.CurrentTool().Put(name, value); });
  } else if (words[1].text == "?=") {
    stage.patience.Until([&] {
      const std::string now =
          stage.OnHost([name](Host& host) { return host.CurrentTool().Get(name).AsText(); });
      return Difference("tool " + name, words[2].text, now);
    });
  } else {
    throw base::Error("expected = or ?= behind the property");
  }
}

void Release(Stage& stage, Words) {
  stage.OnHost([](Host& host) { host.ReleaseTool(); });
}

// Chooses the language of all plug-ins, past the tool.
void ChooseLanguage(Stage& stage, Words words) {
  stage.OnHost([name = words[0].text](Host& host) { host.GetBuilding().Language().Put("Language", name); });
}

// KEY NAME = text, or KEY NAME ?= text, below the current user.
void UserRegistry(Stage& stage, Words words) {
  win32::WindowsRegistry registry;
  constexpr auto root = base::RegistryRoot::kCurrentUser;
  const auto& [key, name, relation, text] =
      std::tie(words[0].text, words[1].text, words[2].text, words[3].text);
  if (relation == "=") {
    base::WriteRegistryString(registry, root, key, name, text);
  } else if (relation != "?=") {
    throw base::Error("expected = or ?= behind the name");
  }
  stage.patience.Until(
      [&] { return Difference(name, text, base::ReadRegistryString(registry, root, key, name)); });
}

std::size_t PlaceOfEquals(Words words) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i].text == "=" && !words[i].quoted) return i;
  }
  throw base::Error("the = is missing");
}

// NAME = question
void Remember(Stage& stage, Words words) {
  if (PlaceOfEquals(words) != 1) throw base::Error("expected remember NAME = ...");
  stage.remembered[words[0].text] = Answer(stage, words.subspan(2));
}

// What is asked stands before the =, the text expected behind it.
void ExpectAnswer(Stage& stage, const char* what, Words words) {
  const std::size_t equals = PlaceOfEquals(words);
  if (equals + 2 != words.size()) throw base::Error("expected one text behind the =");
  std::vector<Word> question{{what, false}};
  question.insert(question.end(), words.begin(), words.begin() + static_cast<std::ptrdiff_t>(equals));
  stage.patience.Until([&] { return Difference(what, words.back().text, Answer(stage, question)); });
}

void ExpectValue(Stage& stage, Words words) { ExpectAnswer(stage, "value", words); }

void ExpectState(Stage& stage, Words words) { ExpectAnswer(stage, "state", words); }

void Print(Stage&, Words words) {
  std::string line = "        ";
  for (const Word& word : words) line += word.text + ' ';
  WriteLine(line);
}

// Class.Member K [later] [lose], or none
void Fail(Stage& stage, Words words) {
  if (words[0].text == "none") return stage.OnHost([](Host& host) { host.GetBuilding().Faults().Clear(); });
  if (words.size() < 2) throw base::Error("expected the number of the call that is to fail");
  simulator::Fault fault;
  fault.member = words[0].text;
  fault.call = static_cast<std::uint64_t>(WholeNumber(words[1]));
  for (const Word& word : words.subspan(2)) {
    if (word.text == "later")
      fault.once = false;
    else if (word.text == "lose")
      fault.loseAnswer = true;
    else
      throw base::Error("expected later or lose, not \"" + word.text + "\"");
  }
  stage.OnHost([fault](Host& host) { host.GetBuilding().Faults().Fail(fault); });
}

// [LEFT]
void WaitProcessEnd(Stage& stage, Words words) {
  const auto left = words.empty() ? std::size_t{0} : static_cast<std::size_t>(WholeNumber(words[0]));
  stage.patience.Until([left]() -> std::string {
    const std::size_t running = ToolProcesses().size();
    return running <= left ? "" : std::to_string(running) + " processes of the tool are still running";
  });
}

constexpr Command kCommands[] = {
    {"host show", "", 0, 0, ShowHost},
    {"configure", "DEVICE", 1, 1, Configure},
    {"start-tool", "", 0, 0, StartTool},
    {"prepare", "DEVICE", 1, 1, Prepare},
    {"send", "COMMAND CLASS KEY", 3, 3, Send},
    {"tool", "PROPERTY = value | PROPERTY ?= text", 3, 3, ToolProperty},
    {"language", "NAME", 1, 1, ChooseLanguage},
    {"registry", "KEY NAME = text | KEY NAME ?= text", 4, 4, UserRegistry},
    {"release", "", 0, 0, Release},
    {"value", "DEVICE OBJECT NUMBER FORMAT [PRECISION] [field N] = text", 6, 9, ExpectValue},
    {"state", "DEVICE OBJECT = ENABLED|DISABLED [test result]", 4, 4, ExpectState},
    {"remember", "NAME = value ... | state ... | text NAME | tool PROPERTY | \"text\"", 3, 11, Remember},
    {"print", "text ...", 1, 99, Print},
    {"fail", "none | Class.Member K [later] [lose]", 1, 4, Fail},
    {"measure load", "", 0, 0, MeasureLoad},
    {"wait process-end", "[LEFT]", 0, 1, WaitProcessEnd},
};

}  // namespace

std::span<const Command> HostCommands() { return kCommands; }

}  // namespace simhost
