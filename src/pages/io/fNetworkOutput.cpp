#include "pages/io/fNetworkOutput.h"

namespace pages {
namespace {

constexpr const char* kVariables[] = {
    "nvoSpaceTemp",   "nvoTerminalLoad", "nvoTermLoadInAvg", "nvoEconoEnable", "nvoEffectSetPt",
    "nvoOccState",    "nvoCtrlOutput1",  "nvoCtrlOutput2",   "nvoCtrlOutput3", "nvoCtrlOutput4",
    "nvoCtrlOutput5", "nvoCtrlOutput6",  "nvoCtrlOutput7",   "nvoFanSpeed",    "nvoUnitStatus",
};

// Configuration properties of a variable, and of the node.
enum VariableProperty { kHeartbeat = 1, kDelta = 2, kThrottle = 2 };
enum NodeProperty { kMaxSendTime = 3, kMinSendTime = 4 };

constexpr int kTimeDecimals = 1, kTemperatureDecimals = 2, kPercentDecimals = 3;

}  // namespace

fNetworkOutput::fNetworkOutput(const shell::PageContext& context, const shell::PagePlace& place)
    : NetworkPage(context, place, "Network Output") {
  static_assert(std::size(kVariables) == kVariableCount);
  for (const Field& field : Fields()) Watch(field.box);
  BuildLayout();
}

void fNetworkOutput::BuildLayout() {
  using ui::Empty, ui::Item, ui::Line;
  std::vector<ui::Node> states = {Empty(), Item(lblHeartbeat[0]), Item(lblDelta)};
  std::vector<ui::Node> outputs = {Empty(), Item(lblHeartbeat[1]), Item(lblThrottle[0])};
  for (std::size_t i = 0; i < kVariableCount; ++i) {
    auto& cells = i < kFirstOutput ? states : outputs;
    cells.push_back(Item(lblNvo[i]));
    cells.push_back(Line({Item(txtNvo[i]), Item(lblNvoUnit[i])}));
    if (i >= kFirstOutput) {
      cells.push_back(Line({Item(txtOutput[i - kFirstOutput]), Item(lblOutputUnit[i - kFirstOutput])}));
    } else {
      cells.push_back(i < kDeltaCount ? Line({Item(txtDelta[i]), Item(lblDeltaUnit[i])}) : Empty());
    }
  }
  const auto others = ui::Grid(3, {Empty(), Item(lblHeartbeat[2]), Item(lblThrottle[1]), Item(lblOther),
                                   Line({Item(txtnciSndHrtBt), Item(lblOtherUnit[0])}),
                                   Line({Item(txtnciMinSendTime), Item(lblOtherUnit[1])})});
  SetLayout(ui::Line({
      ui::GrowX(ui::AlignGrids(
          ui::Stack({ui::Box(fraState, ui::Grid(3, std::move(states))), ui::Box(fraOther, others)}))),
      ui::GrowX(ui::Stack({ui::Box(fraOutput, ui::Grid(3, std::move(outputs)))})),
  }));
}

void fNetworkOutput::InitStrings() {
  fraState.SetText(Translate("Measured values and states"));
  fraOther.SetText(Translate("Other NVO"));
  fraOutput.SetText(Translate("Control outputs and unit"));
  lblDelta.SetText(Translate("Send on Delta"));
  lblOther.SetText(Translate("All other variables"));
  SetTexts(lblHeartbeat, Translate("Heartbeat"));
  SetTexts(lblThrottle, Translate("Throttle"));
  for (std::size_t i = 0; i < kVariableCount; ++i) lblNvo[i].SetText(kVariables[i]);
  SetTexts(lblNvoUnit, Translate("sec"));
  SetTexts(lblOutputUnit, Translate("sec"));
  SetTexts(lblOtherUnit, Translate("sec"));
  SetTexts(lblDeltaUnit, "%", 1);
}

std::vector<NetworkPage::Field> fNetworkOutput::Fields() {
  const char* temperature = IsImperial() ? "SCPTminDeltaTemp#US" : "SCPTminDeltaTemp#SI";
  std::vector<Field> fields;
  for (std::size_t i = 0; i < kVariableCount; ++i)
    fields.push_back({txtNvo[i], kVariables[i], kHeartbeat, {}, kTimeDecimals});
  for (std::size_t i = 0; i < kDeltaCount; ++i) {
    fields.push_back({txtDelta[i], kVariables[i], kDelta, i == 0 ? temperature : "SNVT_lev_percent",
                      i == 0 ? kTemperatureDecimals : kPercentDecimals});
  }
  for (std::size_t i = kFirstOutput; i < kVariableCount; ++i) {
    fields.push_back({txtOutput[i - kFirstOutput], kVariables[i], kThrottle, {}, kTimeDecimals});
  }
  fields.push_back({txtnciSndHrtBt, {}, kMaxSendTime, "SCPTmaxSendTime", kTimeDecimals});
  fields.push_back({txtnciMinSendTime, {}, kMinSendTime, "SCPTminSendTime", kTimeDecimals});
  return fields;
}

void fNetworkOutput::Fill() {
  ReadFields(Fields());
  ShowUnit(kTemperatureUnit, lblDeltaUnit[0]);
}

bool fNetworkOutput::Write() {
  if (!IsChanged()) return true;
  WriteFields(Fields());
  return true;
}

}  // namespace pages
