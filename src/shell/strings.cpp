#include "shell/strings.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>
#include <iterator>
#include <system_error>
#include <utility>

#include "automation/error.h"
#include "base/error.h"
#include "base/text.h"
#include "host/contract.h"

namespace shell {
namespace {

constexpr std::string_view kSectionName = "RoofTopConfiguration";

// The present local time as the platform's date.
double DateNow() {
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);
  const auto day = std::chrono::year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday;
  const auto epoch = std::chrono::year(1899) / 12 / 30;
  const auto days = std::chrono::sys_days(day) - std::chrono::sys_days(epoch);
  return static_cast<double>(days.count()) +
         (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / 86400.0;
}

}  // namespace

std::string ReplacePlaceholders(std::string_view text, const std::vector<std::string>& arguments) {
  const std::vector<std::string> pieces = base::Split(text, "%s");
  std::string result = pieces.front();
  for (std::size_t k = 1; k < pieces.size(); ++k) {
    std::string_view piece = pieces[k];
    std::size_t number = k;
    const auto [end, error] = std::from_chars(piece.data(), piece.data() + piece.size(), number);
    const auto digits = static_cast<std::size_t>(end - piece.data());
    // A number too large for any type is not read at all.
    if (error == std::errc::result_out_of_range || number < 1 || number > arguments.size()) {
      const std::string asked = digits > 0 ? std::string(piece.substr(0, digits)) : std::to_string(k);
      throw base::Error("\"" + std::string(text) + "\" asks for argument " + asked + " of " +
                        std::to_string(arguments.size()) + ".");
    }
    piece.remove_prefix(digits);
    if (piece.starts_with('%')) piece.remove_prefix(1);
    result += arguments[number - 1];
    result += piece;
  }
  return result;
}

Strings::Strings(std::function<automation::Object()> component) : createComponent_(std::move(component)) {}

void Strings::ReloadStrings() {
  if (holds_ > 0) return;
  try {
    if (!std::exchange(asked_, true)) component_ = createComponent_();
    if (!component_) return;
    if (loadTime_ != 0 && component_.Get(host::kLastChange).AsReal() <= loadTime_) return;
    Load();
  } catch (const automation::Error&) {
    // Without the component the tool speaks as before, in English at worst.
  }
}

void Strings::Load() {
  const automation::Object section = component_.Call(host::kSection, kSectionName).AsObject();
  const bool filled = section && section.Whole(host::kCount) > 0;
  // All or nothing: a component that fails half-way is asked anew.
  font_ = component_.Text(host::kFont);
  section_ = filled ? section : automation::Object();
  table_.clear();
  loadTime_ = DateNow();
  if (onLoaded) onLoaded();
}

automation::Object& Strings::Component() {
  ReloadStrings();
  if (!component_) {
    throw automation::Error(automation::kApplicationDefined,
                            std::string(host::kLanguageId) + " is not installed.");
  }
  return component_;
}

std::vector<std::string> Strings::Languages() {
  const automation::Object list = Component().Child(host::kLanguages);
  const std::int32_t count = list.Whole(host::kCount);
  std::vector<std::string> names;
  for (std::int32_t i = 1; i <= count; ++i) names.push_back(list.Get(host::kItem, i).AsText());
  return names;
}

std::string Strings::Language() { return Component().Text(host::kLanguage); }

void Strings::SetLanguage(std::string_view language) {
  Component().Put(host::kLanguage, language);
  Load();
}

std::string Strings::GetStrings(std::string_view text) const {
  if (!section_) return std::string(text);
  const std::string key = base::Upper(base::Trim(text));
  auto found = table_.find(key);
  if (found == table_.end()) {
    try {
      found = table_.emplace(key, LookUp(key)).first;
    } catch (const automation::Error&) {
      return std::string(text);  // The host is busy or gone for now; the next one to ask tries again.
    }
  }
  return found->second.value_or(std::string(text));
}

std::optional<std::string> Strings::LookUp(const std::string& key) const {
  try {
    const automation::Value translation = section_.Get(host::kItem, key);
    return translation.IsEmpty() ? std::nullopt : std::optional(translation.AsText());
  } catch (const automation::Error& error) {
    if (std::ranges::find(host::kNoSuchItem, error.Code()) == std::end(host::kNoSuchItem)) throw;
    return std::nullopt;
  }
}

std::string Strings::FormatStrings(std::string_view text, const std::vector<std::string>& arguments) const {
  std::string translated = GetStrings(text);
  if (arguments.empty()) return translated;
  std::vector<std::string> translatedArguments;
  for (const std::string& argument : arguments) translatedArguments.push_back(GetStrings(argument));
  return ReplacePlaceholders(translated, translatedArguments);
}

}  // namespace shell
