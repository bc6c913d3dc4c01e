// An editing control of the maker as a dialog sees it.
#pragma once

#include <string>
#include <vector>

#include "automation/error.h"
#include "automation/local_object.h"
#include "stand_ins.h"

namespace tests {

/// Can be told to be changed, to refuse and to raise an error.
struct Editor : automation::LocalClass<Editor> {
  std::vector<std::string> initialized;
  bool changed = false;
  bool accepts = true;
  std::string raises;             // the member that fails
  std::function<void()> onWrite;  // does the writing
  int writes = 0;
  bool finished = false;

  void Raise(const char* member) const {
    if (raises == member) throw automation::Error(automation::kApplicationDefined, raises + " failed.");
  }

  static const automation::MemberOf<Editor> kMembers[4];
};

inline constexpr automation::MemberOf<Editor> Editor::kMembers[] = {
    {"Initialize", nullptr, nullptr,
     [](Editor& self, const automation::Arguments& arguments) {
       self.initialized.push_back(arguments[0].AsObject().Text("Name") + " " + arguments[1].AsText() + " " +
                                  arguments[2].AsText());
       return automation::Value();
     }},
    {"IsChanged",
     [](Editor& self, const automation::Arguments&) {
       self.Raise("IsChanged");
       return automation::Value(self.changed);
     }},
    {"WriteValue", nullptr, nullptr,
     [](Editor& self, const automation::Arguments&) {
       ++self.writes;
       self.Raise("WriteValue");
       if (self.onWrite) self.onWrite();
       if (self.accepts) self.changed = false;
       return automation::Value(self.accepts);
     }},
    {"Finish", nullptr, nullptr,
     [](Editor& self, const automation::Arguments&) {
       self.finished = true;
       return automation::Value();
     }},
};

/// Lets every dialog of the tool hold `editor`; `act` is what the person does while it is open.
struct EditorDialog {
  EditorDialog(StandIns& around, std::function<void(EditorDialog&)> act) {
    around.controls.make = [this](const std::string&, const auto& onFailed) {
      complain = onFailed;
      return automation::Object(editor);
    };
    around.controls.onCreate = [this](ui::ControlSite& site) { form_ = &site.GetForm(); };
    around.loop.whileOpen = [this, act = std::move(act)] { act(*this); };
  }
  void Click(const char* button) { dynamic_cast<ui::Button&>(*form_->Find(button)).Click(); }

  std::shared_ptr<Editor> editor = std::make_shared<Editor>();
  std::function<void(const std::string&)> complain;

 private:
  ui::Form* form_ = nullptr;
};

}  // namespace tests
