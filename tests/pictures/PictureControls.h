#pragma once

#include <string>
#include <utility>

#include "platform/linux/panel/SearchFieldLook.h"
#include "platform/shared/panel/DrawnList.h"
#include "tests/pictures/PictureStage.h"

namespace pellar {

// A search field that is only looked at.
class PictureField final : public SearchField {
 public:
  explicit PictureField(PictureStage& stage) : stage_(stage) { stage_.fields.push_back(this); }
  ~PictureField() override { std::erase(stage_.fields, this); }
  PictureField(const PictureField&) = delete;
  PictureField& operator=(const PictureField&) = delete;

  void draw(Canvas& canvas) const {
    if (hidden_) return;
    SearchFieldLook::drawGround(canvas, frame_);
    const ViewRect line{frame_.minX() + SearchFieldLook::textLeft, frame_.minY() + 4,
                        frame_.width - SearchFieldLook::textLeft - SearchFieldLook::textRight, 14};
    canvas.drawTruncatedText(placeholder_, line, SearchFieldLook::font,
                             receding(SearchFieldLook::placeholderColor.alpha, canvas));
  }

  [[nodiscard]] std::string text() const override { return {}; }
  void setText(const std::string&) override {}
  void setPlaceholder(const std::string& text) override { placeholder_ = text; }
  void setFrame(const ViewRect& frame) override { frame_ = frame; }
  [[nodiscard]] ViewRect frame() const override { return frame_; }
  void setHidden(bool hidden) override { hidden_ = hidden; }
  [[nodiscard]] bool isHidden() const override { return hidden_; }
  void focus() override {}
  void setOnActivate(std::function<void()>) override {}
  void setOnChange(std::function<void()>) override {}
  void setOnCommand(CommandHandler) override {}

 private:
  PictureStage& stage_;
  std::string placeholder_;
  ViewRect frame_;
  bool hidden_ = false;
};

// A list that is only looked at.
class PictureList final : public ListView {
 public:
  PictureList(PictureStage& stage, const ListStyle& style) : stage_(stage), list_(style) {
    stage_.lists.push_back(this);
  }
  ~PictureList() override { std::erase(stage_.lists, this); }
  PictureList(const PictureList&) = delete;
  PictureList& operator=(const PictureList&) = delete;

  void draw(Canvas& canvas) const { list_.draw(canvas, true); }

  void reload(std::size_t rowCount, RowProvider row) override { list_.reload(rowCount, std::move(row)); }
  [[nodiscard]] std::optional<std::size_t> selectedRow() const override { return list_.selectedRow(); }
  void selectRow(std::size_t row) override { list_.selectRow(row); }
  void setFrame(const ViewRect& frame) override { list_.setFrame(frame); }
  [[nodiscard]] ViewRect frame() const override { return list_.frame(); }
  [[nodiscard]] ViewRect rowFrame(std::size_t row) const override { return list_.rowFrame(row); }
  void focus() override {}
  [[nodiscard]] bool hasFocus() const override { return true; }
  void setOnDoubleClick(std::function<void()>) override {}
  void setOnKeyDown(KeyHandler) override {}

 private:
  PictureStage& stage_;
  DrawnList list_;
};

}  // namespace pellar
