#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <functional>
#include <memory>

#include "platform/Accessibility.h"
#include "platform/mac/system/CFRef.h"

namespace pellar {

// An AXObserver on the main run loop, in its default mode: menus and questions hold its reports back.
class MacElementObserver final : public ElementObserver {
 public:
  // Null when the system makes none.
  [[nodiscard]] static std::unique_ptr<MacElementObserver> make(ProcessId pid,
                                                                std::function<void()> onNotification);
  ~MacElementObserver() override;
  MacElementObserver(const MacElementObserver&) = delete;
  MacElementObserver& operator=(const MacElementObserver&) = delete;

  Registration add(const Element& element, std::string_view notification) override;
  void remove(const Element& element, std::string_view notification) override;

 private:
  MacElementObserver(CFRef<AXObserverRef> observer, std::function<void()> onNotification);

  std::shared_ptr<const std::function<void()>> onNotification_;
  CFRef<AXObserverRef> observer_;
};

}  // namespace pellar
