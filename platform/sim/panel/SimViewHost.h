#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "core/Alive.h"
#include "platform/View.h"
#include "platform/shared/panel/KeyOwner.h"
#include "platform/sim/drawing/Drawing.h"
#include "platform/sim/drawing/SimTextMeasure.h"

namespace pellar {

class SimPanel;
class SimListView;
class SimSearchField;

// The native controls of one view, in order of creation. Shared, since a control may outlive its panel.
struct SimControls {
  std::vector<SimSearchField*> fields;
  std::vector<SimListView*> lists;
  KeyOwner& keys;
  SimPanel* panel;                     // null once it is gone
  std::function<void()> needsDisplay;  // absent once the panel is gone
};

// What a simulated panel gives its view. Repaints happen on a later turn, all requests of a turn together.
class SimViewHost final : public ViewHost {
 public:
  SimViewHost(SimPanel& panel, KeyOwner& keys);
  ~SimViewHost() override;
  SimViewHost(const SimViewHost&) = delete;
  SimViewHost& operator=(const SimViewHost&) = delete;

  [[nodiscard]] ViewRect bounds() const override;
  void setNeedsLayout() override;
  void setNeedsDisplay() override;
  void setNeedsDisplay(const ViewRect& rect) override;
  void accessibleElementChanged() override;
  [[nodiscard]] std::optional<ScreenRect> toScreen(const ViewRect& rect) const override;
  [[nodiscard]] ViewPoint fromScreen(ScreenPoint point) const override;
  [[nodiscard]] const TextMeasure& textMeasure() const override { return measure_; }
  [[nodiscard]] std::unique_ptr<SearchField> makeSearchField() override;
  [[nodiscard]] std::unique_ptr<ListView> makeListView(const ListStyle& style) override;

  void setView(View* view);
  [[nodiscard]] View* view() const { return view_; }
  // Lays out and paints at once what was asked for.
  void display();

  [[nodiscard]] const Drawing& drawing() const { return drawing_; }
  // Every repaint: what was painted anew of the view.
  [[nodiscard]] const std::vector<ViewRect>& repaints() const { return repaints_; }
  [[nodiscard]] SimControls& controls() const { return *controls_; }
  // The visible field under a point; null when there is none.
  [[nodiscard]] SimSearchField* fieldAt(ViewPoint point) const;
  // The list under a point; null when there is none.
  [[nodiscard]] SimListView* listAt(ViewPoint point) const;
  [[nodiscard]] bool contains(const SimListView* list) const;

 private:
  // Has display() run on the next turn, unless nothing is asked for.
  void scheduleDisplay();

  SimPanel& panel_;
  View* view_ = nullptr;
  bool layoutNeeded_ = true;
  bool displayScheduled_ = false;
  std::optional<ViewRect> dirty_;
  SimTextMeasure measure_;
  Drawing drawing_;
  std::vector<ViewRect> repaints_;
  std::shared_ptr<SimControls> controls_;
  Alive alive_;
};

}  // namespace pellar
