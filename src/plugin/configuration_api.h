// The automation class for scripts and batch work: opens one unit after the other, without a window and
// without a question, and reads, writes, saves, compares and records its configuration. Every rule of the
// pages holds. All texts are English, so that a script finds and shows the same on every machine; numbers
// have a decimal point. Every failure reaches the caller as the application-defined automation error with the
// application title as its source. Its end lets go of the unit, without saving.
#pragma once

#include <memory>
#include <string>

#include "automation/local_object.h"
#include "configuration/unit_desk.h"
#include "plugin/program.h"

namespace plugin {

class ConfigurationApi : public automation::LocalClass<ConfigurationApi> {
 public:
  explicit ConfigurationApi(Program& program);
  ~ConfigurationApi() override;

 private:
  friend class automation::LocalClass<ConfigurationApi>;
  static const automation::MemberOf<ConfigurationApi> kMembers[9];
  friend struct ConfigurationMembers;  // the functions of the table

  /// Runs one call: nothing else is taken meanwhile, no question is asked, and every fault becomes an
  /// automation error.
  template <class Work>
  automation::Value Run(Work work);

  void Open(const host::SessionRequest& request);
  /// Drops what was not applied.
  void Close();
  automation::Value Units();
  void Save(const std::string& file);
  automation::Value Compare(const std::string& file);
  /// Number of values written.
  std::int32_t Apply(const std::string& file);
  std::int32_t Ended(const configuration::UnitDesk::Saved& saved);
  void Record(const std::string& file);
  std::string Value(const std::string& page, const std::string& field);
  void SetValue(const std::string& page, const std::string& field, const automation::Value& content);

  /// In the units that the script has set; it is loaded again when a file left it in others, or when the
  /// pages may hold what the device does not.
  configuration::OpenUnit& Unit() { return UnitIn(imperial_); }
  configuration::OpenUnit& UnitIn(bool imperial);
  /// The unit in the units of the document, with what no page shows.
  configuration::OpenUnit& UnitFor(const configuration::Document& document);
  configuration::Document ReadDocument(const std::string& file);
  const fields::Field& FieldNamed(const std::string& page, const std::string& field);
  configuration::Selection Everything() const;
  void Load(bool imperial);
  void RequireApplied() const;

  Program& program_;
  shell::Strings english_;
  shell::fLoading quiet_;
  std::unique_ptr<configuration::UnitDesk> desk_;
  host::SessionRequest request_;
  bool imperial_ = false;
  bool filled_ = false;      // something was put in that is not applied
  bool unclear_ = false;     // the pages may hold what the device does not
  automation::Object host_;  // held from unit to unit, or the host would end in between
  std::unique_ptr<configuration::OpenUnit> unit_;
};

}  // namespace plugin
