// The whole tool over the virtual building, without a screen: what the composition root does on Windows.
#pragma once

#include <algorithm>
#include <filesystem>
#include <memory>
#include <random>
#include <string>

#include "base/text.h"
#include "pages/page_table.h"
#include "plugin/plugin_api.h"
#include "plugin/startup.h"
#include "simulator/building.h"
#include "stand_ins.h"

namespace tests {

constexpr const char* kAssigned = "RTU-1 North wing";  // fresh-air damper and humidifier, no pressure output
constexpr const char* kUnassigned = "RTU-2 South wing";  // no output assigned, no location stored
constexpr const char* kPressure = "RTU-3 Laboratory";    // fan speed and bypass damper
constexpr const char* kNoTemplate = "Cold store (old program)";

struct Tool : StandIns {
  explicit Tool(const simulator::BuildingOptions& options = Options(), ui::Toolkit* toolkit = nullptr)
      : Tool(simulator::Building(options), pages::PageTable(), toolkit) {}
  /// A further tool in a building that exists, with all pages or some of them.
  explicit Tool(const simulator::Building& existing,
                std::span<const shell::PageEntry> pageTable = pages::PageTable(),
                ui::Toolkit* toolkit = nullptr, char decimalSeparator = '.')
      : building(existing), table(pageTable), screen(toolkit), decimal(decimalSeparator) {
    api.Put("NetworkName", building.NetworkName());
    api.Put("NetworkIpAddress", building.IpAddress());
    api.Put("NetworkIpPort", building.Port());
    api.Put("OvxServerVersion", "2.7");
    api.Put("DeviceName", kAssigned);
    api.Put("LmoIndex", "1");
  }

  /// Where the user's files are while a test program runs; empty at its end.
  static const std::string& Documents() {
    static const struct Folder {
      Folder() { std::filesystem::create_directories(name); }
      ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(name, ignored);
      }
      std::string name =
          (std::filesystem::temp_directory_path() / ("tarn-" + std::to_string(std::random_device()())))
              .string();
    } folder;
    return folder.name;
  }

  static simulator::BuildingOptions Options() {
    simulator::BuildingOptions options;
    options.dataFolder = SIM_DATA_DIR;
    return options;
  }

  automation::Object Create(std::string_view programId) {
    return throughHost(programId, CreateInHost(programId));
  }
  automation::Object CreateInHost(std::string_view programId) const {
    if (programId == "MVPlugInLib.ObjectServer") return building.ObjectServer();
    if (programId == "MVPlugInLib.Registration") return building.Registration();
    if (programId == "MVLanguage.Language") return building.Language();
    throw automation::Error(0x80040154, "\"" + std::string(programId) + "\" is not registered.");
  }

  automation::Bytes ReadFile(const std::string& path) {
    if (path != "C:\\LonWorks\\Apps\\QVR KV\\OvxCommonFiles\\Templates\\8000AB0C12340001_3_1.bin") {
      throw base::Error(path + " is missing.");
    }
    return templateContent.empty() ? building.TemplateBytes() : templateContent;
  }

  void Open(const std::string& device) {
    program.Prepare();
    api.Put("DeviceName", device);
    api.Call("SendCommand", 0, 0, "");
  }

  /// Opens the window and selects the page in its list.
  void OpenPage(const std::string& device, const std::string& pageClass) {
    Open(device);
    ChoosePage(pageClass);
  }
  void ChoosePage(const std::string& pageClass) {
    auto& list = Find<ui::ListView>("lvwConfig");
    for (std::size_t i = 0; i < list.Rows().size(); ++i) {
      if (list.Rows()[i].key == pageClass) list.Choose(i);
    }
  }

  /// Chooses a function for an output (1 to 7) or an input (1 to 6) on its page, without saving.
  void AssignOutput(int output, std::string_view function) {
    Usable(
        "output list",
        Find<ui::ListBox>("fControlOutput.cboOutput(" + std::to_string(output - 1) + ")").Choose(function));
  }
  void AssignInput(int input, std::string_view function) {
    Usable("input list",
           Find<ui::ListBox>("fHardwareInput.cboInput(" + std::to_string(input - 1) + ")").Choose(function));
  }

  shell::fMain& Main() {
    if (!program.Window()) throw base::Error("the tool shows no window; " + Told());
    return *program.Window();
  }
  /// A page by its class.
  shell::ISubForm& Page(std::string_view pageClass) {
    shell::ISubForm* page = Main().Pages().FindPage(pageClass);
    if (!page) throw base::Error("no page " + std::string(pageClass) + "; " + Told());
    return *page;
  }
  template <class T>
  T& Companion() {
    for (const auto& companion : Main().Companions()) {
      if (T* typed = dynamic_cast<T*>(companion.get())) return *typed;
    }
    throw base::Error("no such companion");
  }
  /// A control of the main window, or of the page named before the point ("fPID.txtPIDTemp(0)").
  template <class T = ui::Control>
  T& Find(const std::string& name) {
    const auto point = name.find('.');
    const ui::Form& form =
        point == std::string::npos ? static_cast<ui::Form&>(Main()) : Page(name.substr(0, point));
    T* typed = dynamic_cast<T*>(form.Find(name.substr(point == std::string::npos ? 0 : point + 1)));
    if (!typed) throw base::Error("no control " + name);
    return *typed;
  }
  /// Whether a person could act on every control of an array or a single control ("fPID.txtPIDTemp").
  bool AllUsable(const std::string& name) {
    const auto point = name.find('.');
    const auto group = Page(name.substr(0, point)).Group(name.substr(point + 1));
    return std::ranges::all_of(group, &ui::Control::Usable);
  }
  /// Lets a person use every control of a page, whatever the functions assigned allow.
  void Unlock(const std::string& pageClass) {
    for (ui::Control* control : Page(pageClass).Controls()) control->SetEnabled(true);
  }
  std::string Text(const std::string& name) { return Find(name).Text(); }
  /// A control of any other window of the tool.
  template <class T>
  static T& In(const ui::Form& window, const std::string& name) {
    return dynamic_cast<T&>(*window.Find(name));
  }
  static void ClickIn(const ui::Form& window, const std::string& button) {
    In<ui::Button>(window, button).Click();
  }
  /// An entry of the main window's menus by what a person reads, without its letter and its key.
  void ChooseEntry(std::string_view caption) {
    for (const ui::MenuItem& menu : Main().menu) {
      for (const ui::MenuItem& item : menu.items) {
        const std::string text = base::ReplaceAll(item.caption, "&", "");
        if (text.substr(0, text.find('\t')) == caption)
          return std::function(item.onClick)();  // may rebuild the menu
      }
    }
    throw base::Error("no entry " + std::string(caption));
  }
  void UseLanguage(const std::string& language) {
    program.GetStrings().SetLanguage(language);
    Main().ReInitializeStrings();
  }
  /// What a person does; a control that cannot be used is an error of the test.
  void Type(const std::string& name, const std::string& text) {
    Usable(name, Find<ui::TextBox>(name).Type(text));
  }
  void Click(const std::string& name) { Usable(name, Find<ui::Button>(name).Click()); }

  ui::ListView& LogList() { return In<ui::ListView>(Main().Logger(), "ListView1"); }
  void ClearLog() { ClickIn(Main().Logger(), "BtnCmd(3)"); }
  /// Messages of the logger, oldest first.
  std::vector<std::string> Messages() {
    std::vector<std::string> texts;
    for (const auto& row : LogList().Rows()) {
      if (row.cells[3] == "Save") continue;  // how many values were written
      texts.push_back(row.cells[3] + "/" + row.cells[4] + ": " + row.cells[2]);
    }
    return texts;
  }
  std::string LastMessage() { return Messages().empty() ? "" : Messages().back(); }

  std::string Stored(const char* device, int number, const char* format, int precision) {
    return building.StoredText(device, "RoofTopObject", number, format, precision);
  }

  /// Writes a property of the rooftop object past the pages, as another client of the host would.
  void Store(int number, const char* format, const char* text) {
    const automation::Object objects = Main().ObjectServer.Child("Device").Child("LonMarkObjects");
    const automation::Object property =
        objects.Child("Item", "RoofTopObject").Child("ConfigProperties").Child("Item", number);
    property.Put("formatName", format);
    property.Put("Value", text);
  }

  /// Stands between the tool and the host's objects, by the program id of the first of them, where it is set.
  std::function<automation::Object(std::string_view, const automation::Object&)> throughHost =
      [](std::string_view, const automation::Object& object) { return object; };
  simulator::Building building;
  std::span<const shell::PageEntry> table;
  ui::Toolkit* screen;
  char decimal;  // of the user's numbers
  automation::Bytes templateContent;
  plugin::PlugInDescription description = plugin::BuildDescription({"Tool", "Veldran, Inc", 1, 2, 3});
  bool quit = false;
  shell::Platform platform{screen,
                           prompts,
                           loop,
                           fileDialog,
                           help,
                           controls,
                           registry,
                           locale,
                           [this](std::string_view id) { return Create(id); },
                           [this](const std::string& path) { return ReadFile(path); }};
  plugin::Program program{
      platform, memory, desktop, description, plugin::MakeSettings(MakeFacts(), description), table, [this] {
        quit = true;
      }};
  automation::Object api{std::make_shared<plugin::PlugInApi>(program)};

 private:
  /// What a person was told last: mostly the reason why something is not there.
  std::string Told() {
    const std::string box = prompts.asked.empty() ? "" : prompts.asked.back().text;
    return "the tool said last: " + (box.empty() && program.Window() ? LastMessage() : box);
  }
  static void Usable(const std::string& name, bool done) {
    if (!done) throw base::Error(name + " cannot be used now");
  }

  plugin::StartUpFacts MakeFacts() const {
    plugin::StartUpFacts facts;
    facts.decimalSeparator = decimal;
    facts.identity = {"Tool", "Veldran, Inc", 1, 2, 3};
    facts.applicationFolder = "C:\\Tool";
    facts.lonWorksFolder = "C:\\LonWorks";
    facts.documentsFolder = Documents();
    facts.userName = "installer";
    facts.licences = "Library | Licence\r\nLib A | MIT\r\n";
    facts.fileExists = [](const std::string&) { return false; };
    return facts;
  }
};

}  // namespace tests
