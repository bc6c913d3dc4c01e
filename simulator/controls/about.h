// The control "MVAbout.About": product, version and maker of the tool that shows it, and the licences of the
// libraries in it.
#pragma once

#include "automation/local_object.h"
#include "simulator/controls/makers_control.h"

namespace controls {

class About : public MakersControl, public automation::LocalClass<About> {
 public:
  About();

  /// Initialize(product, version, maker, licences): `licences` is a table with one line for each library, its
  /// cells separated by "|" and its first line the titles; it ends at an empty line. Finish.
  static const automation::MemberOf<About> kMembers[2];

 private:
  void Initialize(const automation::Arguments& arguments);
  void ShowLicences(const std::string& table);

  ui::Label lblProduct_{GetWindow(), "lblProduct"};
  ui::Label lblVersion_{GetWindow(), "lblVersion"};
  ui::Label lblMaker_{GetWindow(), "lblMaker"};
  ui::Label lblLicences_{GetWindow(), "lblLicences"};
  ui::ListView lvwLicences_{GetWindow(), "lvwLicences"};
};

}  // namespace controls
