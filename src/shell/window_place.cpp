#include "shell/window_place.h"

#include "base/error.h"
#include "base/record.h"

namespace shell {
namespace {

constexpr const char* kName = "WindowPlace";  // left, top, width, height in pixels

}  // namespace

void RestorePlace(ui::Window& window, base::Registry& registry, const Settings& settings) {
  const base::Record place(ReadChoice(registry, settings, kName));
  if (place.Count() != 4) return;
  try {
    const auto number = [&](std::size_t field) { return settings.numbers.ToInt16(place.Field(field)); };
    const ui::Bounds bounds = {number(0), number(1), number(2), number(3)};
    window.Move(bounds.left, bounds.top);
    window.Resize(bounds.width, bounds.height);
  } catch (const base::Error&) {
    // Whatever stands there is no place.
  }
}

void KeepPlace(const ui::Window& window, base::Registry& registry, const Settings& settings) {
  if (window.State() != ui::WindowState::kNormal) return;
  const auto [left, top, width, height] = window.GetBounds();
  KeepChoice(registry, settings, kName,
             std::to_string(left) + " " + std::to_string(top) + " " + std::to_string(width) + " " +
                 std::to_string(height));
}

}  // namespace shell
