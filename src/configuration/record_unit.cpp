// The unit as a drawing: the air's way from outdoors through the unit to the space and back, and what is
// assigned at each place. The drawing grows with the number of terminals at one place; widths are fixed.
#include <algorithm>
#include <array>

#include "base/text.h"
#include "configuration/record_parts.h"
#include "configuration/record_places.h"

namespace configuration::record {
namespace {

constexpr std::string_view kInputPage = "fHardwareInput", kOutputPage = "fControlOutput";

/// An input or output as it stands in the drawing.
struct Terminal {
  std::string mark;  // "O3", "I2"
  bool output = false;
  std::string function, signal;
  std::string manual;  // the value that it is held at; empty where the control decides
};

std::string Control(std::string_view name, std::size_t i) {
  return std::string(name) + "(" + std::to_string(i) + ")";
}

/// What an output with a permitted override is held at; on/off or a number by its function.
std::string ManualValue(const Snapshot& snapshot, const std::string& function, std::size_t i) {
  const Value* permit = snapshot.Find(kOutputPage, Control("chkOver", i));
  if (!permit || permit->content != "1") return {};
  const char* control = function.ends_with("_MOD") ? "txtValue" : "cboONOFF";
  const Value* value = snapshot.Find(kOutputPage, Control(control, i));
  return value ? WithUnit(*value) : std::string(kNothing);
}

std::vector<Terminal> Terminals(const RecordInput& input, bool outputs) {
  const std::vector<std::string>& signals = outputs ? input.signals : input.sensors;
  const std::string letter = input.strings.GetStrings(outputs ? "O" : "I");
  std::vector<Terminal> terminals;
  for (std::size_t i = 0;; ++i) {
    const Value* value = outputs ? input.snapshot.Find(kOutputPage, Control("cboOutput", i))
                                 : input.snapshot.Find(kInputPage, Control("cboInput", i));
    if (!value) return terminals;
    Terminal terminal{letter + std::to_string(i + 1), outputs, value->content, {}, {}};
    if (i < signals.size()) terminal.signal = signals[i];
    if (outputs) terminal.manual = ManualValue(input.snapshot, terminal.function, i);
    terminals.push_back(std::move(terminal));
  }
}

// --- geometry: everything that is fixed is measured from the upper edge of the duct ---

constexpr int kWidth = 800, kDuctHeight = 84, kTitleHeight = 14, kLineHeight = 12, kGap = 4;
constexpr int kAbove = 10;       // from labels to the duct below them
constexpr int kBelow = 20;       // from the duct to the labels below it
constexpr int kOutdoorTop = 54;  // labels below the air's way in
constexpr int kRiser = 780;      // the way down to the space
constexpr int kBypass = 600, kReturnRiser = 168;
constexpr int kSpaceLeft = 650, kSpaceRight = 796;

/// The labels of a place: their left edge and how wide they may be.
struct Spot {
  Place place;
  int x, width;
};
constexpr Spot kSpotsAbove[] = {{Place::kDamper, 98, 106},     {Place::kCooling, 208, 106},
                                {Place::kHeating, 318, 104},   {Place::kDehumidifier, 426, 86},
                                {Place::kHumidifier, 516, 86}, {Place::kFan, 606, 100}};
constexpr Spot kSpotsBelow[] = {{Place::kMixed, 190, 116},
                                {Place::kWater, 330, 116},
                                {Place::kFanState, 550, 112},
                                {Place::kSupply, 670, 104}};
constexpr Spot kOutdoorSpot = {Place::kOutdoor, 2, 94}, kContactSpot = {Place::kContacts, 2, 156},
               kReturnSpot = {Place::kReturn, 190, 130}, kBypassSpot = {Place::kBypass, 474, 112},
               kSpaceSpot = {Place::kSpace, kSpaceLeft + 10, 116};

/// What is drawn at a place, with its look while something is assigned there.
struct Part {
  Place place;
  const char *look, *path;
};
constexpr Part kParts[] = {
    {Place::kOutdoor, "in paper", "M44 42a6 6 0 1 0 12 0a6 6 0 1 0-12 0"},
    {Place::kDamper, "ink", "M116 8l16 20M116 32l16 20M116 56l16 20M152 8V-8"},
    {Place::kMixed, "in paper", "M190 42a6 6 0 1 0 12 0a6 6 0 1 0-12 0M196 48V100"},
    {Place::kCooling, "cool paper", "M242 8h36v68h-36zM248 70l24-56M248 42l14-32M258 76l14-32M260 8V-8"},
    {Place::kHeating, "heat paper",
     "M352 8h36v68h-36zM358 24q6-9 12 0t12 0M358 42q6-9 12 0t12 0M358 60q6-9 12 0t12 0M370 8V-8"},
    {Place::kWater, "in paper", "M361 76V102M379 76V92M373 98a6 6 0 1 0 12 0a6 6 0 1 0-12 0"},
    {Place::kDehumidifier, "cool paper",
     "M466 14c9 14 14 21 14 30a14 14 0 0 1-28 0c0-9 5-16 14-30zM459 46h14M466 14V-8"},
    {Place::kHumidifier, "cool paper",
     "M556 14c9 14 14 21 14 30a14 14 0 0 1-28 0c0-9 5-16 14-30zM549 46h14M556 39v14M556 14V-8"},
    {Place::kFan, "ink paper",
     "M612 42a30 30 0 1 0 60 0a30 30 0 1 0-60 0M622 20L670 32M622 64L670 52M642 12V-8"},
    {Place::kFanState, "in paper", "M636 84a6 6 0 1 0 12 0a6 6 0 1 0-12 0M642 72V78M642 90V100"},
    {Place::kSupply, "in paper", "M716 42a6 6 0 1 0 12 0a6 6 0 1 0-12 0M722 48V100"},
};
/// There whatever is assigned.
constexpr std::string_view kDuct =
    "<rect class=\"air\" x=\"96\" width=\"604\" height=\"84\" rx=\"5\"/><path d=\"M4 42H90\"/>"
    "<path class=\"tip\" d=\"M86 36l10 6-10 6z\"/><path stroke-dasharray=\"4 3\" d=\"M222 8V60M230 8V60\"/>";

class UnitDrawing {
 public:
  explicit UnitDrawing(const RecordInput& input) : input_(input) {
    for (const bool outputs : {true, false}) {
      for (Terminal& terminal : Terminals(input, outputs)) Put(std::move(terminal));
    }
  }

  std::string Markup();
  /// What stands below the drawing, plain.
  std::vector<std::string> Remarks() const;

 private:
  using Path = std::initializer_list<int>;

  void Put(Terminal terminal);
  const std::vector<Terminal>& At(Place place) const { return places_[static_cast<std::size_t>(place)]; }
  std::string Title(Place place) const {
    return input_.strings.GetStrings(kPlaceTitles[static_cast<std::size_t>(place)]);
  }
  std::string Caption(const Terminal& terminal) const {
    return input_.strings.GetStrings(PlaceOf(terminal.function)->caption);
  }
  std::string Manual(const Terminal& terminal) const {
    return Filled(input_, "in manual: %s1%", {terminal.manual});
  }
  static bool HoldsOutputs(Place place);
  int HeightOf(Place place) const;
  /// Labels from `y` down.
  void Labels(const Spot& spot, int y);
  int DrawTerminal(const Terminal& terminal, const Spot& spot, int y);
  void DrawPart(Place place, std::string_view look, std::string_view path);
  /// A way of the air through these points, x and y in turns.
  void Way(Path points);
  void DrawUnit();
  /// The way from the unit through the space and back; answers where the drawing ends.
  int DrawLoop();
  std::string Description() const;

  const RecordInput& input_;
  std::array<std::vector<Terminal>, kPlaces> places_;
  std::vector<std::string> unassigned_, unknown_;  // plain
  std::string drawn_;
};

void UnitDrawing::Put(Terminal terminal) {
  if (IsUnassigned(terminal.function)) {
    unassigned_.push_back(terminal.mark);
  } else if (const FunctionPlace* found = PlaceOf(terminal.function)) {
    // A valve for both stands at both coils.
    if (terminal.function.starts_with("HEAT_COOL_"))
      places_[static_cast<std::size_t>(Place::kHeating)].push_back(terminal);
    places_[static_cast<std::size_t>(found->place)].push_back(std::move(terminal));
  } else {
    std::string text = terminal.mark + " " + terminal.function;
    if (!terminal.signal.empty()) text += " (" + terminal.signal + ")";
    if (!terminal.manual.empty()) text += ", " + Manual(terminal);
    unknown_.push_back(std::move(text));
  }
}

bool UnitDrawing::HoldsOutputs(Place place) {
  return place == Place::kBypass ||
         std::ranges::find(kSpotsAbove, place, &Spot::place) != std::end(kSpotsAbove);
}

int UnitDrawing::HeightOf(Place place) const {
  int height = kTitleHeight;
  if (At(place).empty() && HoldsOutputs(place)) height += kLineHeight;
  for (const Terminal& terminal : At(place))
    height += kLineHeight * (1 + !terminal.signal.empty() + !terminal.manual.empty()) + kGap;
  return height;
}

int UnitDrawing::DrawTerminal(const Terminal& terminal, const Spot& spot, int y) {
  constexpr int kMark = 22;
  drawn_ += "<rect class=\"mark paper " + std::string(terminal.output ? "ink" : "in") + "\" x=\"" +
            std::to_string(spot.x) + "\" y=\"" + std::to_string(y + 1) + "\" width=\"" +
            std::to_string(kMark - 3) + "\" height=\"12\"" + (terminal.output ? "" : " rx=\"6\"") + "/>";
  drawn_ += DrawnText(spot.x + (kMark - 3) / 2, y + 10, "b", terminal.mark);
  const int width = spot.width - kMark;
  drawn_ += DrawnText(spot.x + kMark, y + 10, "", Caption(terminal), width);
  const auto below = [&](std::string_view look, const std::string& text) {
    y += kLineHeight;
    drawn_ += DrawnText(spot.x + kMark, y + 10, look, text, width);
  };
  if (!terminal.signal.empty()) below("s", terminal.signal);
  if (!terminal.manual.empty()) below("m", Manual(terminal));
  return y + kLineHeight + kGap;
}

void UnitDrawing::Labels(const Spot& spot, int y) {
  const bool idle = At(spot.place).empty();
  drawn_ += DrawnText(spot.x, y + 10, idle ? "p" : "t", Title(spot.place), spot.width);
  y += kTitleHeight;
  if (idle && HoldsOutputs(spot.place))
    drawn_ += DrawnText(spot.x, y + 9, "p", input_.strings.GetStrings("not assigned"), spot.width);
  for (const Terminal& terminal : At(spot.place)) y = DrawTerminal(terminal, spot, y);
}

void UnitDrawing::DrawPart(Place place, std::string_view look, std::string_view path) {
  const bool idle = At(place).empty();
  std::string looks(idle ? "idle" : look);
  if (idle && look.ends_with("paper")) looks += " paper";
  drawn_ += "<path class=\"" + looks + "\" d=\"" + std::string(path) + "\"/>\n";
}

void UnitDrawing::Way(Path points) {
  std::string path;
  for (const int number : points) path += (path.empty() ? "M" : " ") + std::to_string(number);
  drawn_ += "<path d=\"" + path + "\"/>";
}

void UnitDrawing::DrawUnit() {
  drawn_ += kDuct;
  drawn_ += DrawnText(226, 76, "s c", input_.strings.GetStrings("Filter"), 44);
  for (const Part& part : kParts) DrawPart(part.place, part.look, part.path);
  for (const Spot& spot : kSpotsAbove) Labels(spot, -kAbove - HeightOf(spot.place));
  for (const Spot& spot : kSpotsBelow) Labels(spot, kDuctHeight + kBelow);
  Labels(kOutdoorSpot, kOutdoorTop);
}

int UnitDrawing::DrawLoop() {
  int bypassTop = kOutdoorTop + HeightOf(Place::kOutdoor);
  for (const Spot& spot : kSpotsBelow)
    bypassTop = std::max(bypassTop, kDuctHeight + kBelow + HeightOf(spot.place));
  bypassTop += kGap;
  const int back = bypassTop + std::max(60, HeightOf(Place::kBypass) + kGap);  // the way back to the unit
  const int spaceTop = bypassTop + 24;
  const int spaceBottom = std::max(back + 14, spaceTop + HeightOf(Place::kSpace) + 12);
  Way({700, kDuctHeight / 2, kRiser, kDuctHeight / 2, kRiser, spaceTop - 8});
  Way({kSpaceLeft, back, kReturnRiser, back, kReturnRiser, kDuctHeight + 8});
  drawn_ += "<path class=\"tip\" d=\"M774 " + std::to_string(spaceTop - 10) + "l6 10 6-10z\"/>";
  drawn_ += "<path class=\"tip\" d=\"M162 94l6-10 6 10z\"/>";
  const std::string top = std::to_string(bypassTop), bottom = std::to_string(back);
  DrawPart(
      Place::kBypass, "ink",
      "M780 " + top + "H600V" + bottom + "M590 " + std::to_string((bypassTop + back) / 2 - 8) + "l20 16");
  DrawPart(Place::kSpace, "ink paper",
           "M650 " + std::to_string(spaceTop) + "H796V" + std::to_string(spaceBottom) + "H650z");
  DrawPart(Place::kReturn, "in paper", "M244 " + bottom + "a6 6 0 1 0 12 0a6 6 0 1 0-12 0");
  Labels(kBypassSpot, bypassTop + kGap);
  Labels(kSpaceSpot, spaceTop + 5);
  Labels(kReturnSpot, back + 8);
  Labels(kContactSpot, bypassTop);
  return std::max({spaceBottom, back + 8 + HeightOf(Place::kReturn), bypassTop + HeightOf(Place::kContacts)});
}

std::string UnitDrawing::Description() const {
  std::vector<std::string> sentences;
  for (std::size_t i = 0; i < kPlaces; ++i) {
    std::vector<std::string> here;
    for (const Terminal& terminal : places_[i]) {
      here.push_back(terminal.mark + " " + Caption(terminal));
      if (!terminal.signal.empty()) here.back() += " " + terminal.signal;
      if (!terminal.manual.empty()) here.back() += " " + Manual(terminal);
    }
    if (!here.empty()) sentences.push_back(Title(static_cast<Place>(i)) + ": " + base::Join(here, ", "));
  }
  return base::Join(sentences, "; ");
}

std::string UnitDrawing::Markup() {
  DrawUnit();
  const int bottom = DrawLoop();
  int above = 0;
  for (const Spot& spot : kSpotsAbove) above = std::max(above, HeightOf(spot.place));
  above += kAbove + 2;
  return Drawing("unit", kWidth, above + bottom + 4, Word(input_, "The unit"), Escaped(Description()),
                 Element("g transform=\"translate(0 " + std::to_string(above) + ")\"", drawn_));
}

std::vector<std::string> UnitDrawing::Remarks() const {
  const auto list = [&](std::string_view text, const std::vector<std::string>& items) {
    return Filled(input_, text, {base::Join(items, ", ")});
  };
  std::vector<std::string> remarks = {
      input_.strings.GetStrings("O: output, I: input, pale: nothing assigned. Outputs follow the control "
                                "unless they are in manual.")};
  if (!unassigned_.empty()) remarks.push_back(list("Not assigned: %s1%", unassigned_));
  if (!unknown_.empty())
    remarks.push_back(list("Functions that have no place in this drawing: %s1%", unknown_));
  return remarks;
}

}  // namespace

std::string UnitSection(const RecordInput& input) {
  UnitDrawing drawing(input);
  std::string markup = Heading(input, "The unit") + drawing.Markup() + "\n";
  for (const std::string& remark : drawing.Remarks())
    markup += Element("p class=\"soft\"", Escaped(remark)) + "\n";
  return markup;
}

}  // namespace configuration::record
