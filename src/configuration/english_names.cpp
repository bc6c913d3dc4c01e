#include "configuration/english_names.h"

namespace configuration {

EnglishNames::EnglishNames(const UnseenPages::Surroundings& surroundings)
    : english_([] { return automation::Object(); }),
      journal_(surroundings.settings.numbers),
      pages_(surroundings, english_, transactions_) {}

std::string EnglishNames::Of(const Value& value) {
  if (value.page == kMainWindow) return "Location";
  shell::ISubForm* form = pages_.Page(value.page);
  if (!form || !value.source.empty()) return value.source.empty() ? value.control : value.source;
  if (const auto* option = dynamic_cast<const ui::OptionButton*>(form->Find(value.control + "(0)")))
    return PathOf(fields::CaptionOfGroup(*option));
  const ui::Control* named = form->Find(value.control);
  return named ? PathOf(fields::CaptionOf(*named)) : value.control;
}

Document EnglishNames::ToDocument(const Snapshot& snapshot) {
  return configuration::ToDocument(snapshot, [this](const Value& value) { return Of(value); });
}

}  // namespace configuration
