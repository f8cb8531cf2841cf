#pragma once

namespace pellar {

// What the strip's tools and the hover card's buttons do.
enum class StripAction {
  search,
  more,
  rename,
  autoSave,
  saveAll,
  closeAll,
  groups,
  newDoc,
  minimize,
  zoom,
  closeWindow
};

}  // namespace pellar
