// Orders to the host.
#include "base/error.h"
#include "base/registry.h"
#include "platform/win32/system/registry.h"
#include "simulator/win32/commands.h"
#include "simulator/win32/console.h"
#include "simulator/win32/tool_process.h"

namespace simhost {
namespace {

constexpr DWORD kSlowAnswer = 4;  // milliseconds

// A word in quotation marks is a text; True, False and digits without them are a boolean and a number.
automation::Value Typed(const Word& word) {
  if (word.quoted) return word.text;
  if (word.text == "True") return true;
  if (word.text == "False") return false;
  return WholeNumber(word);
}

std::size_t PlaceOfEquals(Words words) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i].text == "=" && !words[i].quoted) return i;
  }
  throw base::Error("the = is missing");
}

void ShowHost(Stage& stage, Words) {
  stage.OnHost([show = stage.showHostWindow](Host&) { show(true); });
}

void Serve(Stage& stage, Words) {
  stage.OnHost([](Host& host) { host.BeFound(); });
}

void StartTool(Stage& stage, Words) {
  stage.Give([](Host& host) { host.StartTool(); });
  stage.WaitOrder();
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

// PROPERTY = value
void SetToolProperty(Stage& stage, Words words) {
  if (PlaceOfEquals(words) != 1) throw base::Error("expected tool PROPERTY = value");
  stage.OnHost(
      [name = words[0].text, value = Typed(words[2])](Host& host) { host.CurrentTool().Put(name, value); });
}

void NewUnit(Stage& stage, Words words) {
  stage.OnHost([name = words[0].text, location = words.size() > 1 ? words[1].text : ""](Host& host) {
    host.GetBuilding().AddUnit(name, location);
  });
}

void RemoveUnit(Stage& stage, Words words) {
  stage.OnHost([name = words[0].text](Host& host) { host.GetBuilding().RemoveUnit(name); });
}

void Release(Stage& stage, Words) {
  stage.OnHost([](Host& host) { host.ReleaseTool(); });
}

// KEY NAME = text, below the current user.
void WriteRegistry(Stage&, Words words) {
  if (PlaceOfEquals(words) != 2) throw base::Error("expected registry KEY NAME = text");
  win32::WindowsRegistry registry;
  base::WriteRegistryString(registry, base::RegistryRoot::kCurrentUser, words[0].text, words[1].text,
                            words[3].text);
}

// Of all plug-ins, before a tool is started.
void ChooseLanguage(Stage& stage, Words words) {
  stage.OnHost([name = words[0].text](Host& host) { host.GetBuilding().Language().Put("Language", name); });
}

// NAME = question
void Remember(Stage& stage, Words words) {
  if (PlaceOfEquals(words) != 1) throw base::Error("expected remember NAME = ...");
  stage.remembered[words[0].text] = Answer(stage, words.subspan(2));
}

// QUESTION = text
void Expect(Stage& stage, Words words) {
  const std::size_t equals = PlaceOfEquals(words);
  if (equals + 2 != words.size()) throw base::Error("expected one text behind the =");
  const Words question = words.first(equals);
  std::string asked;
  for (const Word& word : question) asked += (asked.empty() ? "" : " ") + word.text;
  stage.patience.Until([&] { return Difference(asked, words.back().text, Answer(stage, question)); });
}

void Print(Stage&, Words words) {
  std::string line = "        ";
  for (const Word& word : words) line += word.text + ' ';
  WriteLine(line);
}

// Class.Member K [later] [lose] [die|suspend|slow], or none
void Fail(Stage& stage, Words words) {
  if (words[0].text == "none") return stage.OnHost([](Host& host) { host.GetBuilding().Faults().Clear(); });
  if (words.size() < 2) throw base::Error("expected the number of the call that is to fail");
  simulator::Fault fault;
  if (words[0].text != "*") fault.member = words[0].text;
  fault.call = static_cast<std::uint64_t>(WholeNumber(words[1]));
  for (const Word& word : words.subspan(2)) {
    if (word.text == "later")
      fault.once = false;
    else if (word.text == "lose")
      fault.loseAnswer = true;
    else if (word.text == "die")
      fault.instead = [&host = stage.host] { host.Die(); };
    else if (word.text == "suspend")
      fault.instead = SuspendOwnProcess;
    else if (word.text == "slow")
      fault.instead = [] { Sleep(kSlowAnswer); };  // and then the call is carried out
    else if (!word.text.empty())
      throw base::Error("expected later, lose, die, suspend or slow, not \"" + word.text + "\"");
  }
  stage.OnHost([fault](Host& host) { host.GetBuilding().Faults().Fail(fault); });
}

// SCRIPT [NAME=text ...]
void StartOtherHost(Stage& stage, Words words) {
  std::vector<std::string> settings;
  for (const Word& word : words.subspan(1)) settings.push_back(word.text);
  stage.otherHost = std::make_unique<OtherHost>();
  stage.otherHost->Start(words[0].text, settings);
}

OtherHost& Other(Stage& stage) {
  if (!stage.otherHost) throw base::Error("no other host was started");
  return *stage.otherHost;
}

void SuspendOtherHost(Stage& stage, Words) { Other(stage).Suspend(); }

void ResumeOtherHost(Stage& stage, Words) { Other(stage).Resume(); }

// [killed]
void WaitOtherHost(Stage& stage, Words words) {
  Other(stage).WaitEnd(stage.patience, !words.empty() && words[0].text == "killed");
}

// What another host has stored is read again.
void ReopenStore(Stage& stage, Words) {
  stage.OnHost([](Host& host) { host.Reopen(); });
}

void SetPatience(Stage& stage, Words words) {
  stage.patience.limit = std::chrono::seconds(WholeNumber(words[0]));
}

void KillTool(Stage&, Words) { EndToolProcesses(); }

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
    {"new unit", "NAME [LOCATION]", 1, 2, NewUnit},
    {"remove unit", "NAME", 1, 1, RemoveUnit},
    {"serve", "", 0, 0, Serve},
    {"start-tool", "", 0, 0, StartTool},
    {"prepare", "DEVICE", 1, 1, Prepare},
    {"send", "COMMAND CLASS KEY", 3, 3, Send},
    {"tool", "PROPERTY = value", 3, 3, SetToolProperty},
    {"registry", "KEY NAME = text", 4, 4, WriteRegistry},
    {"language", "NAME", 1, 1, ChooseLanguage},
    {"release", "", 0, 0, Release},
    {"expect", "QUESTION = text", 3, 10, Expect},
    {"remember", "NAME = QUESTION | \"text\"", 3, 10, Remember},
    {"print", "text ...", 1, 99, Print},
    {"fail", "none | Class.Member|* K [later] [lose] [die|suspend|slow]", 1, 5, Fail},
    {"other-host start", "SCRIPT [NAME=text ...]", 1, 9, StartOtherHost},
    {"other-host suspend", "", 0, 0, SuspendOtherHost},
    {"other-host resume", "", 0, 0, ResumeOtherHost},
    {"other-host end", "[killed]", 0, 1, WaitOtherHost},
    {"reopen", "", 0, 0, ReopenStore},
    {"kill-tool", "", 0, 0, KillTool},
    {"patience", "SECONDS", 1, 1, SetPatience},
    {"wait process-end", "[LEFT]", 0, 1, WaitProcessEnd},
};

}  // namespace

std::span<const Command> HostCommands() { return kCommands; }

}  // namespace simhost
