#include "platform/sim/office/OfficeTerms.h"

#include <array>
#include <cstddef>

namespace pellar::OfficeTerms {

namespace {

// Written down here and not taken from the program, whose words these are to check.
struct Dictionary {
  std::string_view application;
  Term documentClass;
  Term messageClass;
  std::vector<Term> properties;
  SaveAs saveAs;
};

const std::array<Dictionary, 4>& dictionaries() {
  static const std::vector<Term> ofDocuments{{"name"}, {"full", "name"}, {"path"}, {"saved"}};
  static const std::array<Dictionary, 4> all{
      {{"Microsoft Word", {"document"}, {}, ofDocuments, {{"save", "as"}, {"file", "name"}}},
       {"Microsoft Excel", {"workbook"}, {}, ofDocuments, {{"save", "workbook", "as"}, {"filename"}}},
       {"Microsoft PowerPoint", {"presentation"}, {}, ofDocuments, {{"save"}, {"in"}}},
       {"Microsoft Outlook", {}, {"outgoing", "message"}, {}, {}}}};
  return all;
}

const Dictionary& of(OfficeApp app) {
  return dictionaries().at(static_cast<std::size_t>(app));
}

}  // namespace

std::optional<OfficeApp> applicationNamed(std::string_view name) {
  for (const OfficeApp app : allOfficeApps) {
    if (of(app).application == name) return app;
  }
  return std::nullopt;
}
Term documentClass(OfficeApp app) {
  return of(app).documentClass;
}
Term messageClass(OfficeApp app) {
  return of(app).messageClass;
}
const std::vector<Term>& properties(OfficeApp app) {
  return of(app).properties;
}
const SaveAs& saveAs(OfficeApp app) {
  return of(app).saveAs;
}

}  // namespace pellar::OfficeTerms
