#include "configuration/record.h"

#include "configuration/record_parts.h"
#include "host/device_tree.h"

namespace configuration {
namespace {

using namespace record;

// Paper of any size. What is grey or coloured on the screen says the same by its words, for printers without
// colours.
constexpr std::string_view kStyle = R"(
:root{--ink:#1d2733;--soft:#56636f;--pale:#6b7782;--line:#c9d2da;--heat:#c8452f;--cool:#2569a8;--air:#e8f0f6;
 --edge:#7d93a8;--in:#2e7d4f;--warn:#9a5b00}
*{box-sizing:border-box}
body{font:10pt/1.4 "Segoe UI",Tahoma,"Helvetica Neue",Arial,sans-serif;color:var(--ink);background:#fff;
 margin:0 auto;max-width:190mm;padding:10mm 4mm}
h1{font-size:18pt;line-height:1.2;margin:0;overflow-wrap:anywhere}
h2{font-size:13pt;margin:5mm 0 2mm;border-bottom:2px solid var(--ink)}
h3{font-size:11pt;margin:5mm 0 1mm;border-bottom:1px solid var(--ink)}
p{margin:.5mm 0}
.soft{color:var(--soft)}
dl{columns:2 75mm;column-gap:10mm;margin:2mm 0}
dl div{display:grid;grid-template-columns:40mm 1fr;gap:2mm;break-inside:avoid;padding:.3mm 0}
dt{color:var(--soft)}
dd{margin:0;white-space:pre-line;overflow-wrap:anywhere}
.two{columns:2 75mm;column-gap:10mm}
table{border-collapse:collapse;width:100%;margin:0 0 4mm;font-size:9pt}
.keep{break-inside:avoid}
caption{text-align:left;font-weight:600;padding:1mm 0;break-after:avoid}
th,td{border-bottom:1px solid var(--line);padding:.5mm 3mm .5mm 0;text-align:left;vertical-align:baseline;
 overflow-wrap:break-word}
th:last-child,td:last-child{padding-right:0}
th{font-weight:400}
thead th{color:var(--soft);font-weight:600;vertical-align:bottom}
.n,.list td{text-align:right}
td.n{font-variant-numeric:tabular-nums;white-space:nowrap}
.n+:not(.n){padding-left:4mm}
.even{table-layout:fixed}
.u{color:var(--soft);white-space:nowrap}
.nw{white-space:nowrap}
.off,.off .u{color:var(--pale);font-style:italic}
.vh{position:absolute;width:1px;height:1px;overflow:hidden;clip-path:inset(50%);white-space:nowrap}
tr,svg,.sign{break-inside:avoid}
h1,h2,h3,h2+p{break-after:avoid}
svg{width:100%;height:auto;display:block;font-size:11px}
svg text{fill:var(--ink)}
svg .t{font-weight:600}
svg .s{fill:var(--soft);font-size:10px}
svg .m{fill:var(--warn);font-weight:600;font-size:10px}
svg .p{fill:var(--pale);font-size:10px;font-style:italic}
svg .e{text-anchor:end}
svg .c,svg .b{text-anchor:middle}
svg .b{font-size:9.5px}
svg path,svg circle,svg rect{fill:none;stroke:var(--edge);stroke-width:1.5}
svg .air{fill:var(--air)}
svg .paper{fill:#fff}
svg .mark{stroke-width:1}
svg .thin{stroke:var(--line);stroke-width:1}
svg .heat{stroke:var(--heat)}
svg .cool{stroke:var(--cool)}
svg .ink{stroke:var(--ink)}
svg .in{stroke:var(--in)}
svg .tip{fill:var(--edge);stroke:none}
svg .idle{stroke:var(--line)}
svg .heats{fill:var(--heat);fill-opacity:.22;stroke:none}
svg .cools{fill:var(--cool);fill-opacity:.2;stroke:none}
svg .wide{stroke-width:7}
svg .alarm{stroke:var(--warn)}
.sign{display:grid;grid-template-columns:1fr 1fr 1fr;gap:10mm;padding-top:15mm;break-before:avoid}
.annex{break-before:page}
.sign div{border-top:1px solid var(--ink);padding-top:1mm;color:var(--soft)}
@media print{body{padding:0;max-width:none}}
)";

/// Of the language in use; stands in the string table like any text.
constexpr std::string_view kLanguageCode = "en";

/// A text in a style sheet, whatever it holds.
std::string Styled(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string styled = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = byte >= 0x80 || c == ' ' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                       (c >= 'a' && c <= 'z');
    if (plain) {
      styled += c;
    } else if (byte >= ' ') {
      styled.append({'\\', kDigits[byte >> 4], kDigits[byte & 15], ' '});
    }
  }
  return styled + "\"";
}

/// What stands on each sheet, which may come apart from the others.
std::string SheetStyle(const RecordInput& input) {
  return "@page{margin:11mm 14mm 14mm;@bottom-left{font:8pt sans-serif;color:#56636f;content:" +
         Styled(input.snapshot.head.device + "   " + input.time) +
         "}@bottom-right{font:8pt sans-serif;color:#56636f;content:counter(page) \" / \" counter(pages)}}\n";
}

std::string HeadOf(const RecordInput& input) {
  const std::string title = Sentence(input, "As-left record: %s1%", {input.snapshot.head.device});
  return Element("head",
                 "<meta charset=\"utf-8\"/>\n<meta name=\"viewport\" "
                 "content=\"width=device-width, initial-scale=1\"/>\n" +
                     Element("title", title) + "\n" +
                     Element("style", std::string(kStyle) + SheetStyle(input))) +
         "\n";
}

std::string Opening(const RecordInput& input) {
  const std::string& device = input.snapshot.head.device;
  std::string facts;
  for (const auto& [fact, value] : Facts(input))
    facts += Element("div", Element("dt", Escaped(fact)) + Element("dd", Escaped(value))) + "\n";
  return Element("h1", Escaped(device.empty() ? kNothing : std::string_view(device))) + "\n" +
         Element("p class=\"soft\"", Word(input, "As-left record of the configuration")) + "\n" +
         Element("dl", "\n" + facts) + "\n";
}

std::string Signature(const RecordInput& input) {
  std::string lines;
  for (const char* who : {"Installer", "Date", "Accepted for the owner"})
    lines += Element("div", Word(input, who));
  return Element("div class=\"sign\"", lines) + "\n";
}

// What is signed comes before the tables: on the first sheet, mostly.
constexpr std::string (*kSections[])(const RecordInput&) = {Opening,       UnitSection,  SetpointSection,
                                                            AdviceSection, CheckSection, ChangeSection,
                                                            Signature,     TableSection};

}  // namespace

std::vector<std::string> SignalTypes(const Snapshot& snapshot) {
  std::vector<std::string> types;
  for (int i = 0; i < host::DeviceObjects::kOutputs; ++i) {
    const Value* signal =
        snapshot.Find("fControlOutput", "UCPThardwareSignalType(" + std::to_string(i) + ")");
    types.push_back(signal ? signal->content : std::string());
  }
  return types;
}

std::string WriteRecord(const RecordInput& input) {
  std::string body = "\n";
  for (const auto section : kSections) body += section(input);
  const std::string language = Attribute("lang", input.strings.GetStrings(kLanguageCode));
  return "<!DOCTYPE html>\n" +
         Element("html xmlns=\"http://www.w3.org/1999/xhtml\"" + language,
                 "\n" + HeadOf(input) + Element("body", body)) +
         "\n";
}

}  // namespace configuration
