// The about page: the maker's control that shows which tool this is, who makes it, and whose libraries are in
// it.
#pragma once

#include "pages/info/hosted_page.h"

namespace pages {

class fAbout final : public HostedPage {
 public:
  fAbout(const shell::PageContext& context, const shell::PagePlace& place);

 private:
  void Initialize(const automation::Object& control) override;
};

}  // namespace pages
