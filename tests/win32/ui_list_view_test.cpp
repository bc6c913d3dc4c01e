// List views: rows and their pictures, selections, columns and the pop-up menu.
#include "ui_support.h"

#include <bit>

#include "logger/message_logger.h"
#include "tests/core/stand_ins.h"

namespace ui_test {
namespace {

class Log : public ui::Window {
 public:
  Log() : Window("fLog") {
    list.SetColumns({"User", "Message"});
    list.onSelect = [this](std::size_t place) { selected.push_back(place); };
    SetLayout(ui::Grow(ui::Item(list)));
  }

  void Add(int level, const std::string& message) {
    const std::string number = std::to_string(list.Rows().size() + 1);
    list.AddRow({number + "Key", {number, message}, level});
  }

  ui::ListView list{*this, "list"};
  std::vector<std::size_t> selected;
};

class UiListView : public UiTest {
 protected:
  void Open(bool multiSelect) {
    log_.list.SetMultiSelect(multiSelect);
    for (const int level : {64, 48, 16, 0, 99}) log_.Add(level, "level " + std::to_string(level));
    Show(log_);
  }

  HWND View() const { return Native(log_.list); }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(View(), message, wParam, lParam);
  }
  std::string Cell(int row, int column) const {
    wchar_t text[128] = {};
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 128;
    Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return win32::Utf8(text);
  }
  int Picture(int row) const {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    Send(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iImage;
  }

  Log log_;
};

TEST_F(UiListView, RowsShowTheirCellsAndLevels) {
  Open(true);
  ASSERT_EQ(Send(LVM_GETITEMCOUNT), 5);
  EXPECT_EQ(Cell(1, 0), "2");
  EXPECT_EQ(Cell(1, 1), "level 48");
  EXPECT_NE(Picture(0), Picture(1));
  EXPECT_NE(Picture(1), Picture(2));
  EXPECT_EQ(Picture(4), Picture(2)) << "an unknown level is an error";
  EXPECT_EQ(Picture(3), -1);

  Send(LVM_ENSUREVISIBLE, 4, FALSE);
  log_.Add(16, "added °");
  Settle();
  EXPECT_EQ(Cell(5, 1), "added °");
  for (int i = 0; i < 100; ++i) log_.Add(64, "more");
  Settle();
  EXPECT_LT(Send(LVM_GETTOPINDEX), 50);
  log_.list.ScrollToEnd();
  Settle();
  EXPECT_GE(Send(LVM_GETTOPINDEX) + Send(LVM_GETCOUNTPERPAGE), 106);
  log_.list.SetRows({{"k", {"only"}, 64}});
  Settle();
  EXPECT_EQ(Send(LVM_GETITEMCOUNT), 1);
  EXPECT_EQ(Cell(0, 1), "") << "a row may have fewer cells than columns";
}

TEST_F(UiListView, ASingleSelectionGoesBothWays) {
  Open(false);
  SelectRow(View(), 2);
  Settle();
  EXPECT_EQ(log_.selected, std::vector<std::size_t>{2});
  EXPECT_EQ(log_.list.Selection(), std::vector<std::size_t>{2});
  SelectRow(View(), 2, false);
  Settle();
  EXPECT_EQ(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 2) << "one row stays selected";
  log_.list.SetSelection({4});
  Settle();
  EXPECT_EQ(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 4);
  EXPECT_EQ(log_.selected.size(), 1u) << "code runs no handler";
  SetFocus(View());
  Press(VK_UP);
  EXPECT_EQ(log_.selected, (std::vector<std::size_t>{2, 3}));
}

TEST_F(UiListView, ManyRowsAreSelectedAtOnceAndColumnsFitTheirLongestCell) {
  Open(true);
  SelectRow(View(), -1);
  SelectRow(View(), 1, false);
  Settle();
  EXPECT_EQ(log_.list.Selection(), (std::vector<std::size_t>{0, 2, 3, 4}));

  log_.list.SetRows({{"k", {"a first cell that is much longer than its title", "short"}, 0}});
  log_.list.FitColumns();
  Settle();
  EXPECT_GE(Send(LVM_GETCOLUMNWIDTH, 0),
            Send(LVM_GETSTRINGWIDTHW, 0,
                 reinterpret_cast<LPARAM>(L"a first cell that is much longer than its title")));
  log_.list.SetColumns({"One", "Two", "Three"});
  Settle();
  EXPECT_EQ(SendMessageW(reinterpret_cast<HWND>(Send(LVM_GETHEADER)), HDM_GETITEMCOUNT, 0, 0), 3);
}

TEST_F(UiListView, TheMenuKeyOpensThePopup) {
  Open(true);
  std::vector<std::string> ran;
  log_.list.popup = {{"Clear", [&] { ran.emplace_back("clear"); }, {}},
                     {"Save", [&] { ran.emplace_back("save"); }, {}}};
  SetFocus(View());
  loop_.Post([&] {
    for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN})
      PostMessageW(toolkit_.HandleOf(log_), WM_KEYDOWN, key, 1);
  });
  SendMessageW(View(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(View()), -1);
  EXPECT_EQ(ran, std::vector<std::string>{"save"});
}

TEST_F(UiListView, ALetterGoesToTheNextRowThatBeginsSo) {
  Open(false);
  std::vector<ui::ListView::Row> rows;
  for (const char* name : {"Alarm", "Inputs", "Fan", "information", "PID"}) rows.push_back({name, {name}, 0});
  log_.list.SetRows(rows);
  Settle();
  SetFocus(View());
  std::vector<std::size_t> visited;
  log_.list.onSelect = [&](std::size_t place) { visited.push_back(place); };
  for (const char letter : {'i', 'i', 'i', 'p'}) {
    PostMessageW(View(), WM_CHAR, static_cast<WPARAM>(letter), 1);
    Settle();
    Sleep(600);  // sooner, and the next one is the second letter of a word
  }
  EXPECT_EQ(visited, (std::vector<std::size_t>{1, 3, 1, 4}));
}

TEST_F(UiListView, ALongCellIsShownToItsEnd) {
  Open(false);
  const std::string blank(300, ' ');
  log_.list.SetRows(
      {{"1", {"1", blank + "HHHH"}, 0}, {"2", {"2", blank + "    "}, 0}, {"3", {"3", "H" + blank}, 0}});
  log_.list.FitColumns();
  Settle();
  // Where something stands in a row, in pixels from one of the ends of its cell.
  const auto inked = [&](int row, bool atEnd) {
    RECT cell = {LVIR_LABEL, 1, 0, 0};
    Send(LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
    const HDC context = GetDC(View());
    int place = 0;
    const auto colour = [&] {
      return GetPixel(context, atEnd ? cell.right - place : cell.left + place, (cell.top + cell.bottom) / 2);
    };
    while (place < 60 && colour() != GetSysColor(COLOR_WINDOWTEXT)) ++place;
    ReleaseDC(View(), context);
    return place;
  };
  Send(LVM_SCROLL, 100'000, 0);
  UpdateWindow(View());
  EXPECT_LT(inked(0, true), 60);
  EXPECT_EQ(inked(1, true), 60);
  Send(LVM_SCROLL, static_cast<WPARAM>(-100'000), 0);
  UpdateWindow(View());
  EXPECT_LT(inked(2, false), 12);
  const HWND frame = toolkit_.HandleOf(log_);
  ChangeDensity(frame, 192, RectOf(frame));
  UpdateWindow(View());
  EXPECT_GE(inked(2, false), 12) << "in the density of another screen";
}

// Milliseconds of the processor that this program has used: others may be running.
ULONGLONG TimeUsed() {
  FILETIME times[4];
  GetProcessTimes(GetCurrentProcess(), &times[0], &times[1], &times[2], &times[3]);
  return (std::bit_cast<ULONGLONG>(times[2]) + std::bit_cast<ULONGLONG>(times[3])) / 10'000;
}

TEST_F(UiListView, AFloodOfMessagesLeavesTheWindowUsable) {
  tests::StandIns platform;
  logger::fMessage logger({platform.registry, platform.locale, loop_, platform.fileDialog, &toolkit_,
                           "Software\\Key", "C:\\", [](std::string_view text) { return std::string(text); }});
  constexpr int kMessages = 10'000;
  const ULONGLONG before = TimeUsed();
  for (int i = 1; i <= kMessages; ++i) {
    logger.AddMessage("The property " + std::to_string(i) + " could not be read.", "FillValue", "PID", 16);
    if (i % 100 == 0) loop_.Turn();
  }
  auto& list = dynamic_cast<ui::ListView&>(*logger.Find("ListView1"));
  ASSERT_TRUE(RunUntil([&] { return list.Fits() > 0 && list.Scrolls() > 0; }));
  Settle();
  EXPECT_LT(TimeUsed() - before, 2000u);
  const HWND view = Native(list);
  EXPECT_EQ(SendMessageW(view, LVM_GETITEMCOUNT, 0, 0), kMessages);
  SetFocus(view);
  Press(VK_END);
  EXPECT_EQ(list.Selection(), std::vector<std::size_t>{kMessages - 1});
}

}  // namespace
}  // namespace ui_test
