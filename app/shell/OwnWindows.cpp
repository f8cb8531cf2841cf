#include "app/shell/OwnWindows.h"

#include <algorithm>
#include <utility>

#include "core/Weakly.h"

namespace pellar {

class OwnWindows::Window final : public PlainWindow {
 public:
  Window(std::unique_ptr<PlainWindow> window, const std::shared_ptr<OwnWindows>& owner)
      : window_(std::move(window)), owner_(owner) {
    owner->all_.push_back(this);
    closedByUser_ = window_->onClosed([this] { tellOwner(); });
  }
  ~Window() override {
    if (const auto owner = owner_.lock()) std::erase(owner->all_, this);
    tellOwner();
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  void makeKeyAndOrderFront() override {
    if (const auto owner = owner_.lock()) owner->place_->take();
    window_->makeKeyAndOrderFront();
  }
  void restDefaultButton(std::chrono::milliseconds time) override { window_->restDefaultButton(time); }
  void close() override {
    window_->close();
    tellOwner();
  }
  [[nodiscard]] bool isVisible() const override { return window_->isVisible(); }
  void setText(const std::string& id, const std::string& text) override { window_->setText(id, text); }
  [[nodiscard]] Subscription onClosed(std::function<void()> callback) override {
    return window_->onClosed(std::move(callback));
  }

 private:
  void tellOwner() {
    if (const auto owner = owner_.lock()) owner->closed();
  }

  std::unique_ptr<PlainWindow> window_;
  std::weak_ptr<OwnWindows> owner_;
  Subscription closedByUser_;  // depends-on: window_
};

std::shared_ptr<OwnWindows> OwnWindows::create(Windows& windows, MainLoop& mainLoop,
                                               std::shared_ptr<PlaceInFront> place) {
  return std::shared_ptr<OwnWindows>(new OwnWindows(windows, mainLoop, std::move(place)));
}

std::unique_ptr<PlainWindow> OwnWindows::makeWindow(const WindowDescription& description) {
  return std::make_unique<Window>(windows_.makeWindow(description), shared_from_this());
}

// Another window may be shown in the same turn, as the terms are after the permission: the place stays.
void OwnWindows::closed() {
  mainLoop_.post(weakly(weak_from_this(), [](OwnWindows& self) {
    if (std::ranges::none_of(self.all_, &Window::isVisible)) self.place_->giveBack();
  }));
}

}  // namespace pellar
