#include "pages/page_table.h"

#include "pages/control/fPID.h"

namespace pages {
namespace {

template <class Page>
std::unique_ptr<shell::ISubForm> Create(const shell::PageContext& context, int helpTopic) {
  return std::make_unique<Page>(context, helpTopic);
}

constexpr shell::PageEntry kTable[] = {
    {"PID", "PID", "fPID", 45, true, Create<fPID>},
};

}  // namespace

std::span<const shell::PageEntry> PageTable() { return kTable; }

}  // namespace pages
