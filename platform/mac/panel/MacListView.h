#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/ListView.h"

@class ListSource;
@class ListTable;

namespace pellar {

class ListFocus;

// A view-based NSTableView in a scroll view, for as long as this lives.
class MacListView final : public ListView {
 public:
  MacListView(NSView* parent, std::shared_ptr<ListFocus> listFocus, const ListStyle& style);
  ~MacListView() override;
  MacListView(const MacListView&) = delete;
  MacListView& operator=(const MacListView&) = delete;

  void reload(std::size_t rowCount, RowProvider row) override;
  [[nodiscard]] std::optional<std::size_t> selectedRow() const override;
  void selectRow(std::size_t row) override;
  void setFrame(const ViewRect& frame) override;
  [[nodiscard]] ViewRect frame() const override;
  [[nodiscard]] ViewRect rowFrame(std::size_t row) const override;
  void focus() override;
  [[nodiscard]] bool hasFocus() const override;
  void setOnDoubleClick(std::function<void()> callback) override;
  void setOnKeyDown(KeyHandler handler) override { onKeyDown_ = std::move(handler); }

  // A key while it has the focus; false when it means nothing here. The list may be gone afterwards.
  bool takeKey(std::uint16_t keyCode);
  // Draws the selection as that of a list with or without the keys.
  void showFocus();
  [[nodiscard]] NSWindow* window() const;

 private:
  bool moveSelection(std::uint16_t keyCode);

  std::shared_ptr<ListFocus> listFocus_;
  ListSource* source_;  // the table holds it weakly
  ListTable* table_;
  NSScrollView* scroll_;
  KeyHandler onKeyDown_;
};

}  // namespace pellar
