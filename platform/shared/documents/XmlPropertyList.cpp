#include "platform/shared/documents/XmlPropertyList.h"

namespace pellar {

bool XmlPropertyList::isSafeToParse(std::string_view text, std::size_t mostContainers) {
  std::size_t containers = 0;
  for (auto at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
    const auto tag = text.substr(at + 1);
    if (tag.starts_with("array") || tag.starts_with("dict")) ++containers;
  }
  return containers <= mostContainers;
}

}  // namespace pellar
