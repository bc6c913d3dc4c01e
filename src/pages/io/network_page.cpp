#include "pages/io/network_page.h"

#include "base/text.h"
#include "host/contract.h"

namespace pages {

void NetworkPage::ForEach(std::span<const Field> fields, const Work& work) {
  for (const Field& field : fields) {
    const bool ofNode = field.variable.empty();
    NamingProperty(ofNode ? field.format : field.variable, [&] {
      auto& properties =
          ofNode ? Context().device.NodeProperties : Variable(field.variable).ConfigProperties();
      work(field, properties[field.number]);
    });
  }
}

void NetworkPage::BindFormats(std::span<const Field> fields, bool reading) {
  ForEach(fields, [reading](const Field& field, const automation::Object& property) {
    if (reading && field.precision != kHostPrecision) property.Put(host::kPrecision, field.precision);
    if (!field.format.empty()) property.Put(host::kFormatName, field.format);
  });
}

void NetworkPage::ReadFields(std::span<const Field> fields) {
  BindFormats(fields, true);
  ForEach(fields, [this](const Field& field, const automation::Object& property) {
    ShowText(field.box, base::Trim(property.Text(host::kValue)));
  });
}

void NetworkPage::WriteFields(std::span<const Field> fields) {
  BindFormats(fields, false);
  ForEach(fields, [](const Field& field, const automation::Object& property) {
    property.Put(host::kValue, base::Trim(field.box.Text()));
  });
}

}  // namespace pages
