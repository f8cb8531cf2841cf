#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/SearchField.h"

@class SearchFieldDelegate;
@class StripSearchField;

namespace pellar {

class ListFocus;

// A `StripSearchField` in a view, for as long as this lives.
class MacSearchField final : public SearchField {
 public:
  MacSearchField(NSView* parent, std::shared_ptr<ListFocus> listFocus);
  ~MacSearchField() override;
  MacSearchField(const MacSearchField&) = delete;
  MacSearchField& operator=(const MacSearchField&) = delete;

  [[nodiscard]] std::string text() const override;
  void setText(const std::string& text) override;
  void setPlaceholder(const std::string& text) override;
  void setFrame(const ViewRect& frame) override;
  [[nodiscard]] ViewRect frame() const override;
  void setHidden(bool hidden) override;
  [[nodiscard]] bool isHidden() const override;
  void focus() override;
  void setOnActivate(std::function<void()> callback) override;
  void setOnChange(std::function<void()> callback) override;
  void setOnCommand(CommandHandler handler) override;

 private:
  std::shared_ptr<ListFocus> listFocus_;
  StripSearchField* field_;
  SearchFieldDelegate* delegate_;  // the field holds it weakly
};

}  // namespace pellar
