// A program with one empty window of the tool's own toolkit: what the tool's memory is measured against.
#include <exception>

#include "platform/win32/com/apartment.h"
#include "platform/win32/system/process.h"
#include "platform/win32/window/message_loop.h"
#include "platform/win32/window/toolkit.h"

extern "C" int wmain(int /*count*/, wchar_t** /*arguments*/) {
  try {
    const win32::ComApartment apartment;
    win32::MessageLoop loop([](const std::string& fault) { win32::ReportFailure("EmptyWindow", fault); });
    win32::NativeToolkit toolkit(loop);
    ui::Window window("EmptyWindow");
    window.onClosed = [&loop] { loop.Quit(); };
    toolkit.Realize(window);
    window.Show();
    return loop.Run();
  } catch (const std::exception& error) {
    win32::ReportFailure("EmptyWindow", error.what());
    return 1;
  }
}
