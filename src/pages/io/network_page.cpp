#include "pages/io/network_page.h"

#include "base/text.h"

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

void NetworkPage::BindFormats(std::span<const Field> fields) {
  ForEach(fields, [](const Field& field, host::Property& property) {
    if (!field.format.empty()) property.Bind(field.format);
  });
}

void NetworkPage::ReadFields(std::span<const Field> fields) {
  BindFormats(fields);
  ForEach(fields, [this](const Field& field, host::Property& property) {
    SetSource(field.format, {&field.box});
    ShowText(field.box, base::Trim(property.Read(field.precision)));
  });
}

void NetworkPage::WriteFields(std::span<const Field> fields) {
  BindFormats(fields);
  ForEach(fields, [this](const Field& field, host::Property& property) {
    const std::string name(field.variable.empty() ? field.format : field.variable);
    property.Write(name, field.precision, {std::string(base::Trim(field.box.Text()))}, {Source(field.box)});
  });
}

}  // namespace pages
