// Entry point of the stand-in host that measures: its scripts have commands that say what the tool costs.
#include <windows.h>

#include "bench/win32/host/measure.h"
#include "bench/win32/host/replay.h"
#include "simulator/win32/entry.h"

namespace {

// MOST: as many tools may be open at the same time.
void LimitClients(simhost::Stage& stage, simhost::Words words) {
  stage.OnHost([most = simhost::WholeNumber(words[0])](simhost::Host& host) {
    host.GetBuilding().Limits().clients = most;
  });
}

constexpr simhost::Command kCommands[] = {
    {"clients", "MOST", 1, 1, LimitClients},
    {"other-host command", "", 0, 0, simhost::CommandReplay},
    {"replay", "TRACE RESULTS", 2, 2, simhost::ReplayCalls},
    {"measure load", "NAME RESULTS", 2, 2, simhost::MeasureLoad},
    {"measure activation", "NAME", 1, 1, simhost::MeasureActivation},
    {"measure start", "", 0, 0, simhost::MeasureStart},
    {"measure end", "OPERATION RESULTS", 2, 2, simhost::MeasureEnd},
    {"measure memory", "PROGRAM", 1, 1, simhost::MeasureMemory},
    {"measure page", "NAME CAPTION CONTROL", 3, 3, simhost::MeasurePage},
};

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) { return simhost::Main(kCommands); }
