// Texts of a host through the whole tool: one answer of the device's objects, or of the language component,
// is another text while the values of a page are read or its captions set; then the page is edited and saved.
// Whatever the text is, nothing escapes, every transaction is ended once, and the window reads and shows the
// device afterwards.
#include <array>
#include <optional>

#include "fuzz/support/input.h"
#include "tests/core/faulty_host.h"
#include "tests/core/tool.h"

namespace {

constexpr std::size_t kPages = 10;  // those with values

struct PageTool : tests::Tool {
  explicit PageTool(std::size_t page)
      : Tool(simulator::Building(Options()), pages::PageTable().subspan(page, 1)) {
    platform.createObject = [this](std::string_view id) {
      const bool ofLanguage = id == "MVLanguage.Language";
      return tests::FaultyTarget::Wrap(ofLanguage ? languagePlan : plan, Create(id));
    };
    Open(tests::kAssigned);
    Main().Flags().pageSelected = true;
  }

  bool TellsNothing() {
    ClearLog();
    Click("cmdRefresh");
    return Messages().empty();
  }

  void ReadAndSave(std::size_t call, const std::string& text) {
    plan.Arm(tests::Failure::kOtherText, {static_cast<int>(call)}, false);
    plan.otherText = text;
    Click("cmdRefresh");
    plan.Disarm();
    for (ui::Control* control : Main().Pages().Page(0).Controls()) {
      auto* box = dynamic_cast<ui::TextBox*>(control);
      if (box && box->Type(box->Text() + "0")) break;
    }
    Click("cmdApply");
    fuzz::Check(plan.open == 0 && plan.surplus == 0, "every transaction is ended once");
    fuzz::Check(TellsNothing(), "the device can be read afterwards");
  }

  void ShowCaptions(std::size_t call, const std::string& text) {
    const automation::Object language = building.Language();
    language.Put("Language", language.Text("Language") == "German" ? "French" : "German");
    languagePlan.Arm(tests::Failure::kOtherText, {static_cast<int>(call)}, false);
    languagePlan.otherText = text;
    Main().LanguagePage().ReInitializeStrings();
    // Refused for a placeholder that asks for more; the window's command tells it.
    fuzz::Takes<base::Error>([this] { Main().ReInitializeStrings(); });
    languagePlan.Disarm();
    Click("cmdRefresh");
  }

  tests::FailurePlan plan;
  tests::FailurePlan languagePlan;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static std::array<std::optional<PageTool>, kPages> tools;
  fuzz::Input input(data, size);
  const bool captions = input.Byte() % 4 == 0;
  const std::size_t page = input.Byte() % kPages;
  const std::size_t call = 1 + input.Number(199);
  const auto rest = input.Bytes(4096);
  const std::string text(rest.begin(), rest.end());
  std::optional<PageTool>& tool = tools[page];
  if (!tool) tool.emplace(page);
  captions ? tool->ShowCaptions(call, text) : tool->ReadAndSave(call, text);
  return 0;
}
