#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/OfficeApp.h"
#include "core/StateStore.h"
#include "platform/ListView.h"
#include "platform/Platform.h"
#include "platform/View.h"

namespace pellar {

// The recently used documents of one application: a list that follows what the user types into a search field
// and opens the file that is chosen. Main thread only.
class RecentView final : public View {
 public:
  // The host and what `platform` refers to outlive the view.
  RecentView(ViewHost& host, std::shared_ptr<StateStore> store, const Platform& platform);

  // Whose documents are listed; absent for all, or for those of `appKey`.
  std::optional<OfficeApp> app;
  // The key under which files are recorded for the application.
  std::optional<std::string> appKey;
  // Ask the owner to close the panel with this view: a file was opened; the user pressed Escape.
  std::function<void()> onChosen;
  std::function<void()> onEscape;

  // Lists anew what fits the search text.
  void reload(const std::string& query);
  // A key command of the search field; false when it means nothing here.
  bool handle(const std::string& selector);
  // A key while the list has the keyboard, by its virtual key code; false when it means nothing here.
  bool keyDown(std::uint16_t keyCode);

  // The files' paths as listed.
  [[nodiscard]] const std::vector<std::string>& items() const { return items_; }

  void layout() override;
  void draw(Canvas& /*canvas*/, const ViewRect& /*dirty*/) override {}
  void mouseDown(const MouseEvent& /*event*/) override {}
  void mouseDragged(const MouseEvent& /*event*/) override {}
  void mouseUp(const MouseEvent& /*event*/) override {}
  void rightMouseDown(const MouseEvent& /*event*/) override {}
  void otherMouseDown(const MouseEvent& /*event*/) override {}
  void mouseEntered() override {}
  void mouseMoved(const MouseEvent& /*event*/) override {}
  void mouseExited() override {}
  [[nodiscard]] AccessibleElement accessibleElement() const override;
  bool perform(AccessibleAction action, const std::string& id) override;

 private:
  [[nodiscard]] ListRow row(std::size_t index) const;
  void openSelected();
  void escape();

  ViewHost& host_;
  std::shared_ptr<StateStore> store_;
  Platform platform_;
  std::vector<std::string> items_;
  std::unique_ptr<ListView> list_;
};

}  // namespace pellar
