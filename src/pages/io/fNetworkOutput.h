// Network outputs: how often each output variable is sent: at the latest after its heartbeat, at the earliest
// after its throttle time, and the analogue ones when they have changed by a delta. Variables that are not
// listed follow the two times of the node.
#pragma once

#include <vector>

#include "pages/io/network_page.h"

namespace pages {

class fNetworkOutput final : public NetworkPage {
 public:
  fNetworkOutput(const shell::PageContext& context, const shell::PagePlace& place);

 private:
  static constexpr std::size_t kVariableCount = 15;
  static constexpr std::size_t kDeltaCount = 3;   // the first variables are the analogue ones
  static constexpr std::size_t kFirstOutput = 6;  // from here on the variables have a throttle time

  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  void BuildLayout();
  std::vector<Field> Fields();

  ui::Frame fraState{*this, "fraState"};
  ui::Frame fraOther{*this, "fraOther"};
  ui::Frame fraOutput{*this, "fraOutput"};
  ui::LabelArray<3> lblHeartbeat{*this, "lblHeartbeat"};
  ui::LabelArray<2> lblThrottle{*this, "lblThrottle"};
  ui::Label lblDelta{*this, "lblDelta"};
  ui::LabelArray<kVariableCount> lblNvo{*this, "lblNvo"};
  ui::TextBoxArray<kVariableCount> txtNvo{*this, "txtNvo"};
  ui::LabelArray<kVariableCount> lblNvoUnit{*this, "lblNvoUnit"};
  ui::TextBoxArray<kDeltaCount> txtDelta{*this, "txtDelta"};
  ui::LabelArray<kDeltaCount> lblDeltaUnit{*this, "lblDeltaUnit"};
  ui::TextBoxArray<kVariableCount - kFirstOutput> txtOutput{*this, "txtOutput", kFirstOutput};
  ui::LabelArray<kVariableCount - kFirstOutput> lblOutputUnit{*this, "lblOutputUnit", kFirstOutput};
  ui::Label lblOther{*this, "lblOther"};
  ui::TextBox txtnciSndHrtBt{*this, "txtnciSndHrtBt"};
  ui::TextBox txtnciMinSendTime{*this, "txtnciMinSendTime"};
  ui::LabelArray<2> lblOtherUnit{*this, "lblOtherUnit"};
};

}  // namespace pages
