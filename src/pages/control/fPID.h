// PID loops: the tuning records of the five regulation loops (space temperature, supply temperature, CO2
// level, humidity, pressure). A record holds proportional gain, dead band, integral gain, integral time,
// derivative gain and derivative time; gains are in percent of the output per unit of the measured value,
// times in seconds.
#pragma once

#include <array>

#include "pages/control/control_page.h"

namespace pages {

class fPID final : public ControlPage {
 public:
  fPID(const shell::PageContext& context, const shell::PagePlace& place);

  void FollowFunctions() override { EnableUsableLoops(SelectedFunctions()); }

 private:
  static constexpr std::size_t kFields = 6;  // shown of each record
  using Boxes = ui::TextBoxArray<kFields>;

  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  void BuildLayout();
  void EnableUsableLoops(const std::vector<std::string>& functions);

  ui::Frame fraLoops{*this, "fraLoops"};
  ui::LabelArray<4> lblColumn{*this, "lblColumn"};
  ui::LabelArray<5> lblPart{*this, "lblPart"};  // the sub-captions below them

  ui::LabelArray<2> lblLoop{*this, "lblLoop"};  // captions of the temperature loops
  Boxes txtPIDTemp{*this, "txtPIDTemp"};
  Boxes txtPIDTempDisch{*this, "txtPIDTempDisch"};
  ui::LabelArray<6> lblUnit{*this, "lblUnit"};                  // gains of the temperature loops
  ui::LabelArray<2> lblDeadBandUnit{*this, "lblDeadBandUnit"};  // their dead bands
  ui::LabelArray<4> lblSec{*this, "lblSec"};                    // their times

  // Of the three other loops: 0 the row caption, 1 and 2 the units of the times; CO2 and humidity also 3 to 5
  // the units of the gains and 6 that of the dead band.
  Boxes txtCO2Level{*this, "txtCO2Level"};
  ui::LabelArray<7> lblCo{*this, "lblCo"};
  Boxes txtHumidity{*this, "txtHumidity"};
  ui::LabelArray<7> lblHumid{*this, "lblHumid"};
  Boxes txtPressure{*this, "txtPressure"};
  ui::LabelArray<5> lblPress{*this, "lblPress"};        // 3 and 4 show nothing
  ui::LabelArray<3> lblPressure{*this, "lblPressure"};  // its gains
  ui::Label lblPressD{*this, "lblPressD"};              // its dead band

  ui::CheckBox chkPID{*this, "chkPID"};

  // The boxes of each record, in the order in which the records are read and written.
  const std::array<const Boxes*, 5> loops_{&txtPIDTemp, &txtPIDTempDisch, &txtCO2Level, &txtHumidity,
                                           &txtPressure};
};

}  // namespace pages
