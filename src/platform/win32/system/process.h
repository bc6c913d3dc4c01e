// What the running program knows of itself: its file, its version, its command line, and a way to tell its
// starter that something failed before there is a window. Used by the entry points.
#pragma once

#include <string>

namespace win32 {

/// Full path of the executable, and its folder without a trailing backslash.
std::string ProgramPath();
std::string ProgramFolder();
/// Full path of the executable or library that this code is part of.
std::string ModulePath();

/// The executable's version resource; empty and 0.0.0 when it has none.
struct ProgramVersion {
  std::string product;
  std::string company;
  int major = 0;
  int minor = 0;
  int revision = 0;
};
ProgramVersion OwnVersion();

/// The executable's data resource of this number as a text; empty when it has none.
std::string OwnText(int resource);

/// From now on no library is taken from the folder that the user happens to work in. To be called first of
/// all. The search path stays: libraries of other makers' controls may lie there. What the tool itself loads
/// it names with its folder.
void LimitLibraryFolders();

/// The name of the user that runs the program; empty where the system does not tell it.
std::string UserName();

/// What was written behind the program's name.
std::string CommandTail();

/// True when the first word is the switch with which the system starts an automation server.
bool StartedByActivation(const std::string& commandTail);

/// Ends the process here and now, without the farewells of COM and libraries; nothing may be left to be
/// saved.
[[noreturn]] void EndProcess();

/// A line on the standard output, or on the console that the program was started from; nothing where there is
/// neither.
void ReportDone(const std::string& title, const std::string& text);

/// To the standard error output when the starter gave one, else in a message box.
void ReportFailure(const std::string& title, const std::string& text);

}  // namespace win32
