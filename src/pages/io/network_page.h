// What the pages of network variables share: most of their boxes show one configuration property each, of a
// variable or of the node. A page lists its boxes in the order in which they are read and written; formats,
// reading and writing follow from the list.
#pragma once

#include <span>
#include <string_view>

#include "pages/page_base.h"

namespace pages {

class NetworkPage : public PageBase {
 protected:
  using PageBase::PageBase;

  struct Field {
    ui::TextBox& box;
    std::string_view variable;  // of the rooftop object; empty: the property belongs to the node
    int number;                 // among the configuration properties of its owner
    std::string_view format;    // empty: the host's own stays
    int precision;              // decimals
  };

  /// Each sets the formats of all fields first. What the host refuses is told with the variable's name.
  void ReadFields(std::span<const Field> fields);
  void WriteFields(std::span<const Field> fields);

  host::NetworkVariable& Variable(std::string_view name) {
    return Context().device.RoofTopVariables[std::string(name)];
  }

 private:
  using Work = std::function<void(const Field& field, host::Property& property)>;
  void ForEach(std::span<const Field> fields, const Work& work);
  void BindFormats(std::span<const Field> fields);
};

}  // namespace pages
