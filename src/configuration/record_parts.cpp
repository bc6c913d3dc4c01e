#include "configuration/record_parts.h"

#include <algorithm>

namespace configuration::record {
namespace {

constexpr std::string_view kReplacement = "\uFFFD";

struct Entity {
  char letter;
  const char* markup;
};
constexpr Entity kEntities[] = {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}};

/// Rough widths of sans-serif letters in hundredths of their size.
constexpr int kThin = 31, kMiddle = 55, kWide = 69;
constexpr std::string_view kThinLetters = " .,:;-/()ijltfr'|";

int WidthOf(std::string_view text, int size) {
  int width = 0;
  for (const char c : text) {
    if ((c & 0xC0) == 0x80) continue;  // within a letter of several bytes
    const bool wide = (c >= 'A' && c <= 'Z') || c == '_';
    width += wide ? kWide : kThinLetters.find(c) == kThinLetters.npos ? kMiddle : kThin;
  }
  return width * size / 100;
}

}  // namespace

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    const auto* marked = std::ranges::find(kEntities, c, &Entity::letter);
    const bool control = c >= 0 && c < ' ' && c != '\n' && c != '\t' && c != '\r';
    if (marked != std::end(kEntities)) {
      escaped += marked->markup;
    } else if (control) {
      escaped += kReplacement;
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string Word(const RecordInput& input, std::string_view text) {
  return Escaped(input.strings.GetStrings(text));
}

std::string Filled(const RecordInput& input, std::string_view text,
                   const std::vector<std::string>& arguments) {
  return input.strings.GetStrings(text, arguments);
}

std::string Sentence(const RecordInput& input, std::string_view text,
                     const std::vector<std::string>& arguments) {
  return Escaped(Filled(input, text, arguments));
}

std::string Element(std::string_view start, std::string_view content) {
  std::string element = "<";
  element.append(start).append(">").append(content).append("</");
  return element.append(start.substr(0, start.find(' '))).append(">");
}

std::string Heading(const RecordInput& input, std::string_view text) {
  return Element("h2", Word(input, text)) + "\n";
}

std::string Table(std::string_view start, const std::string& caption, std::string_view heads,
                  const std::string& rows) {
  return Element(start, caption + "\n" + Element("thead", Element("tr", heads)) + "\n" +
                            Element("tbody", "\n" + rows)) +
         "\n";
}

std::string ColumnHeads(const RecordInput& input, std::initializer_list<const char*> heads) {
  std::string cells;
  for (const char* head : heads) cells += Element("th scope=\"col\"", Word(input, head));
  return cells;
}

std::string Attribute(std::string_view name, std::string_view value) {
  if (value.empty()) return {};
  return " " + std::string(name) + "=\"" + Escaped(value) + "\"";
}

std::string WithUnit(const Value& value) {
  if (value.shown.empty()) return std::string(kNothing);
  if (value.kind != fields::Kind::kText || value.caption.unit.empty()) return value.shown;
  return value.shown + " " + value.caption.unit;
}

std::string TitleOf(std::span<const PageTitle> pages, std::string_view page) {
  const auto found = std::ranges::find(pages, page, &PageTitle::page);
  return found == pages.end() ? std::string(page) : found->title;
}

std::vector<std::pair<std::string, std::string>> Facts(const RecordInput& input) {
  const Head& head = input.snapshot.head;
  const std::pair<std::string_view, std::string> all[] = {
      {"Network", head.network},
      {"Location", head.location},
      {"Address", input.request.address},
      {"Recorded", input.time},
      {"Installer", input.request.installer},
      {"Values", input.strings.GetStrings(input.verified ? "Verified against the device"
                                                         : "Not verified against the device")},
      {"Measurement Units", input.strings.GetStrings(head.imperial ? "Imperial" : "Metric")},
      {"Program id", head.programId},
      {"Template", head.version},
      {"Configuration tool", head.toolVersion},
      {"Note", input.request.note},
  };
  std::vector<std::pair<std::string, std::string>> facts;
  for (const auto& [name, value] : all) {
    if (!value.empty()) facts.emplace_back(input.strings.GetStrings(name), value);
  }
  return facts;
}

std::string Drawing(std::string_view id, int width, int height, std::string_view title,
                    std::string_view description, std::string_view content) {
  const std::string name(id);
  return Element("svg viewBox=\"0 0 " + std::to_string(width) + " " + std::to_string(height) +
                     "\" role=\"img\" aria-labelledby=\"" + name + "-title " + name + "-text\"",
                 Element("title id=\"" + name + "-title\"", title) +
                     Element("desc id=\"" + name + "-text\"", description) + std::string(content));
}

std::string DrawnText(int x, int y, std::string_view look, std::string_view text, int width) {
  std::string start = "text x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) + "\"";
  start += Attribute("class", look);
  const int size = look.empty() || look == "t" ? 11 : 10;
  if (width > 0 && WidthOf(text, size) > width)
    start += " textLength=\"" + std::to_string(width) + "\" lengthAdjust=\"spacingAndGlyphs\"";
  return Element(start, Escaped(text));
}

}  // namespace configuration::record
