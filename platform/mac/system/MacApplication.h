#pragma once

#include "platform/Application.h"

namespace pellar {

// NSApplication, as far as the program ends itself by it.
class MacApplication final : public Application {
 public:
  void terminate() override;
};

// What the main bundle's property list says. Without a bundle, nothing.
[[nodiscard]] BundleInfo macBundleInfo();

}  // namespace pellar
