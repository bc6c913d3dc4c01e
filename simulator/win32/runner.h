// Works through a script step by step and tells how it went, on the thread of the scripts. A step holds or
// the script ends there. `expect-error "text" ["source"]` behind a step says that this step is to fail with
// exactly that; the steps between `each NAME = "texts"` and `end` are done once for each of the texts, which
// stands in ${NAME}.
#pragma once

#include <filesystem>

#include "simulator/win32/commands.h"

namespace simhost {

class Runner {
 public:
  /// `settings` is what every script finds remembered, `more` are commands beside those of all scripts.
  Runner(Stage& stage, Remembered settings, std::span<const Command> more)
      : stage_(stage), settings_(std::move(settings)), more_(more) {}

  /// Yes when every step held and the tool has ended. Whatever happened, no tool is left running.
  bool Run(const std::filesystem::path& file);

 private:
  using Steps = std::span<const Step>;

  void RunSteps(const std::filesystem::path& file, Steps steps);
  /// Runs the steps up to `end` for each text; answers how many steps that were.
  std::size_t RunEach(const std::filesystem::path& file, Steps steps);
  void Perform(const Step& step);
  /// The command that the words begin with, or nothing.
  const Command* FindCommand(Words words) const;
  void RequireFailure(const Step& step, const Step& expectedError);
  void ReleaseAll(bool held);

  Stage& stage_;
  Remembered settings_;
  std::span<const Command> more_;
};

}  // namespace simhost
