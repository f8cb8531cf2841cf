#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/Accessibility.h"

namespace pellar {

// The notifications of one application that a picture of its windows depends on. Main thread only.
class ObservedApplication {
 public:
  // Null when the application takes no registrations, for instance because it is still launching.
  [[nodiscard]] static std::unique_ptr<ObservedApplication> observe(Accessibility& accessibility,
                                                                    ProcessId pid, const Element& application,
                                                                    std::function<void()> onNotification);

  // These are the windows it names now: registers on those that are new, which is where some applications
  // look for who wants to know of a window's end, and takes back what was registered on the others.
  void follow(const std::vector<Element>& windows);

 private:
  explicit ObservedApplication(std::unique_ptr<ElementObserver> observer);
  [[nodiscard]] bool registerOn(const Element& window);

  std::unique_ptr<ElementObserver> observer_;
  std::vector<Element> windows_;  // registered on
};

}  // namespace pellar
