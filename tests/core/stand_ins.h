// The platform as tests need it: answers decided beforehand, timers that run when told to, a registry in
// memory. Nothing here stands for the host: tests use the virtual building for that.
#pragma once

#include <deque>
#include <map>
#include <set>

#include "automation/error.h"
#include "base/error.h"
#include "plugin/window_agent.h"
#include "shell/platform.h"

namespace tests {

class ScriptedPrompts : public ui::Prompts {
 public:
  ui::Answer Ask(const ui::Prompt& prompt) override {
    asked.push_back(prompt);
    if (whileAsked) whileAsked();
    if (answers.empty()) return ui::Answer::kOk;
    const ui::Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }

  /// The last question; an empty one when nobody was asked.
  ui::Prompt Last() const { return asked.empty() ? ui::Prompt() : asked.back(); }

  std::vector<ui::Prompt> asked;
  std::deque<ui::Answer> answers;
  std::function<void()> whileAsked;
};

class ManualLoop : public ui::EventLoop {
 public:
  void Turn() override {
    ++turns;
    if (onTurn) onTurn();
  }
  void Post(std::function<void()> work) override { posted.push_back(std::move(work)); }
  /// A dialog is open: `whileOpen` does what the person does in it, and must close it.
  void RunUntil(const std::function<bool()>& done) override {
    if (whileOpen) whileOpen();
    if (!done()) throw base::Error("the dialog was left open");
  }
  void Quit() override {}
  void SetWaiting(bool waiting) override { waitDepth += waiting ? 1 : -1; }

  /// Lets every running timer tick once.
  void Tick() {
    const auto timers = running_;
    for (ui::Timer* timer : timers) timer->onTick();
  }

  std::function<void()> onTurn;
  std::function<void()> whileOpen;
  std::vector<std::function<void()>> posted;
  int turns = 0;
  int waitDepth = 0;

 private:
  void Start(ui::Timer& timer) override { running_.insert(&timer); }
  void Stop(ui::Timer& timer) override { running_.erase(&timer); }

  std::set<ui::Timer*> running_;
};

class MemoryRegistry : public base::Registry {
 public:
  std::optional<std::string> Read(base::RegistryRoot, const std::string& key,
                                  const std::string& name) override {
    const auto found = values.find(key + "|" + name);
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
  bool Write(base::RegistryRoot, const std::string& key, const std::string& name,
             const std::string& text) override {
    values[key + "|" + name] = text;
    return closes;
  }

  std::map<std::string, std::string> values;
  bool closes = true;
};

class FixedLocale : public base::Locale {
 public:
  std::string GetLocaleString(int item) override { return item == base::kLocaleMeasure ? measure : "."; }
  std::string GeneralDateNow() override { return "21/11/2026 10:15:00"; }

  std::string measure = "0";
};

class ChosenFile : public ui::FileDialog {
 public:
  std::optional<std::string> AskSaveFile(const ui::FileRequest& asked) override {
    request = asked;
    if (whileAsked) whileAsked();
    return answer;
  }
  std::optional<std::string> AskOpenFile(const ui::FileRequest& asked) override { return AskSaveFile(asked); }

  std::function<void()> whileAsked;
  ui::FileRequest request;
  std::optional<std::string> answer;
};

class RecordedHelp : public shell::HelpViewer {
 public:
  shell::HelpOutcome Show(const std::string& target, unsigned command, int topic) override {
    shown.push_back(target + " " + std::to_string(command) + " " + std::to_string(topic));
    return missing.empty() || target.find(missing) == target.npos ? outcome : shell::HelpOutcome::kNoFile;
  }

  std::vector<std::string> shown;
  shell::HelpOutcome outcome = shell::HelpOutcome::kOpened;
  std::string missing;  // in the name of a file that is not there
};

/// The maker's controls made by the test; none can be created until it says how to make them.
class MadeControls : public ui::ControlHost {
 public:
  automation::Object Create(ui::ControlSite& site, const std::string& programId,
                            std::function<void(const std::string&)> onFailed) override {
    if (!make) Refuse(programId);
    alive.insert(&site);
    if (onCreate) onCreate(site);
    return make(site.Name(), std::move(onFailed));
  }
  void Check(const std::string& programId) override {
    if (missing.contains(programId)) Refuse(programId);
  }
  void Destroy(ui::ControlSite& site) override { alive.erase(&site); }

  std::function<automation::Object(const std::string&, std::function<void(const std::string&)>)> make;
  std::function<void(ui::ControlSite&)> onCreate;
  std::set<ui::ControlSite*> alive;
  std::set<std::string> missing;  // program ids that the machine does not know

 private:
  [[noreturn]] static void Refuse(const std::string& programId) {
    throw automation::Error(0x800401F3, "The control \"" + programId +
                                            "\" is not registered on this machine (error 0x800401F3).");
  }
};

/// Named memory as the system keeps it: a block lives while a section of it is open.
class MemoryBlocks : public plugin::SharedMemory {
 public:
  std::unique_ptr<plugin::SharedSection> Open(std::int32_t size, const std::string& name) override {
    if (denied) return nullptr;
    auto block = blocks[name].lock();
    if (!block && opens) blocks[name] = block = std::make_shared<Block>(static_cast<std::size_t>(size));
    if (!block || block->size() < static_cast<std::size_t>(size)) return nullptr;
    return std::make_unique<Section>(*this, block);
  }

  bool Denied() const override { return denied; }

  /// The names of the sections that are open.
  std::vector<std::string> OpenNames() const {
    std::vector<std::string> names;
    for (const auto& [name, block] : blocks) {
      if (!block.expired()) names.push_back(name);
    }
    return names;
  }

  using Block = std::vector<char>;
  std::map<std::string, std::weak_ptr<Block>> blocks;
  bool opens = true;
  bool unmaps = true;
  bool denied = false;

 private:
  struct Section : plugin::SharedSection {
    Section(MemoryBlocks& theOwner, std::shared_ptr<Block> theBlock)
        : owner(theOwner), block(std::move(theBlock)) {}
    std::uintptr_t Handle() const override { return 1; }
    void* View() const override { return block ? block->data() : nullptr; }
    bool Unmap() override {
      if (owner.unmaps) block.reset();
      return owner.unmaps;
    }

    MemoryBlocks& owner;
    std::shared_ptr<Block> block;
  };
};

/// Windows that are nothing but a mark and a look, with what was done to them.
class DesktopOfMarks : public plugin::DesktopWindows {
 public:
  void Mark(std::int32_t window, std::int32_t mark) override { marks[window] = mark; }
  plugin::Sight Look(std::int32_t window, std::int32_t mark) override {
    const auto found = marks.find(window);
    return found == marks.end() || found->second != mark ? plugin::Sight::kGone : sight;
  }
  void Show(std::int32_t window, int command) override { Note("show " + std::to_string(command), window); }
  void SetTopmost(std::int32_t window, bool topmost) override {
    Note(topmost ? "topmost" : "not topmost", window);
  }
  void RaiseLoading(std::int32_t window) override { Note("raise what is shown for", window); }
  void Activate(std::int32_t window) override { Note("activate", window); }

  std::map<std::int32_t, std::int32_t> marks;
  plugin::Sight sight = plugin::Sight::kNormal;
  std::vector<std::string> acts;

 private:
  void Note(const std::string& act, std::int32_t window) {
    acts.push_back(act + " " + std::to_string(window));
  }
};

struct StandIns {
  MemoryBlocks memory;
  DesktopOfMarks desktop;
  MadeControls controls;
  ScriptedPrompts prompts;
  ManualLoop loop;
  ChosenFile fileDialog;
  RecordedHelp help;
  MemoryRegistry registry;
  FixedLocale locale;

  /// Without a screen and a host.
  shell::Platform Bare() {
    return {nullptr, prompts, loop, fileDialog, help, controls, registry, locale, {}, {}};
  }
};

}  // namespace tests
