// The facts about every field of every page, taken from the running tool over the virtual building, and the
// table that a topic makes of them and of its own explanations.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "fields/caption.h"
#include "help/generator/language.h"
#include "help/generator/topic.h"

namespace help {

struct Field {
  std::string page;
  std::string control;
  bool visible = true;
  fields::Caption caption;
  std::string metric;    // what it accepts: a range, the choices of a list ...
  std::string imperial;  // the same in the other units
};

/// All fields of the value pages in the order of the layouts, by the name of the language in which the pages
/// speak. Throws base::Error or automation::Error.
std::map<std::string, std::vector<Field>, std::less<>> ReadFields();

/// The table of the fields that the notes of `topic` explain, as HTML in the words of `language`. Throws
/// base::Error naming the controls of the page that no note explains, and notes about controls that the page
/// does not have.
std::string FieldTable(const Topic& topic, const std::vector<Field>& fields, const Language& language);

/// `text` with the characters that HTML takes for its own written otherwise.
std::string Escape(std::string_view text);

}  // namespace help
