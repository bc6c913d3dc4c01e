// What the parts of a record share: writing markup, and finding values. Used by the files of the record, and
// its markup by the result of copying.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "configuration/record.h"

namespace configuration::record {

inline constexpr std::string_view kNothing = "\u2013";

/// Safe in markup, in quotation marks too. What XML cannot hold is replaced.
std::string Escaped(std::string_view text);

/// Translated and escaped.
std::string Word(const RecordInput& input, std::string_view text);
/// Translated, with arguments that are shown as they are; plain.
std::string Filled(const RecordInput& input, std::string_view text,
                   const std::vector<std::string>& arguments);
/// The same, escaped.
std::string Sentence(const RecordInput& input, std::string_view text,
                     const std::vector<std::string>& arguments);

/// `start` is a name with its attributes; `content` is markup.
std::string Element(std::string_view start, std::string_view content);

/// A heading of the second level, translated.
std::string Heading(const RecordInput& input, std::string_view text);
/// A table of markup, with its caption in front: cells of headings, rows of the body.
std::string Table(std::string_view start, const std::string& caption, std::string_view heads,
                  const std::string& rows);
/// Cells of headings over columns, translated.
std::string ColumnHeads(const RecordInput& input, std::initializer_list<const char*> heads);

/// An attribute with a blank in front; nothing for an empty value.
std::string Attribute(std::string_view name, std::string_view value);

/// A value as it is read, its unit behind it.
std::string WithUnit(const Value& value);

/// As the person sees it; of a page that is not among them its class.
std::string TitleOf(std::span<const PageTitle> pages, std::string_view page);

/// What the record says of the unit as a whole: name (translated) and value, both plain. Empty values are
/// left out.
std::vector<std::pair<std::string, std::string>> Facts(const RecordInput& input);

// What people have said of the unit, plain.
std::string SeverityOf(const RecordInput& input, const AdviceLine& line);
/// "2026-11-22 14:05 UTC".
std::string TimeOf(std::string_view utc);
/// "Output 3, COOLING_1".
std::string OutputOf(const RecordInput& input, const Line& check);

/// A drawing's frame, with what it shows in words.
std::string Drawing(std::string_view id, int width, int height, std::string_view title,
                    std::string_view description, std::string_view content);

/// A text of a drawing, squeezed where it would be wider than `width` (0: any width).
std::string DrawnText(int x, int y, std::string_view look, std::string_view text, int width = 0);

// The sections, each with its heading; empty where there is nothing to say.
std::string UnitSection(const RecordInput& input);
std::string SetpointSection(const RecordInput& input);
std::string AdviceSection(const RecordInput& input);
std::string CheckSection(const RecordInput& input);
std::string ChangeSection(const RecordInput& input);
std::string TableSection(const RecordInput& input);

}  // namespace configuration::record
