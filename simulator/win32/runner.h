// Works through a script step by step and tells how it went, on the thread of the scripts. A step holds or
// the script ends there. `expect-error "text" ["source"]` behind a step says that this step is to fail with
// exactly that.
#pragma once

#include <filesystem>

#include "simulator/win32/stage.h"

namespace simhost {

class Runner {
 public:
  explicit Runner(Stage& stage) : stage_(stage) {}

  /// Yes when every step held and the tool has ended. Whatever happened, no tool is left running.
  bool Run(const std::filesystem::path& file);

 private:
  void RunSteps(const std::filesystem::path& file);
  void RunStep(const Step& step, const Step* expectedError);
  void Perform(const Step& step);
  void RequireFailure(const Step& step, const Step& expectedError);
  void ReleaseAll(bool held);

  Stage& stage_;
};

}  // namespace simhost
