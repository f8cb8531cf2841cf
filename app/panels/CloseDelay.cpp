#include "app/panels/CloseDelay.h"

#include <chrono>
#include <utility>

namespace pellar {
namespace {

constexpr std::chrono::milliseconds delay{350};

}  // namespace

CloseDelay::CloseDelay(MainLoop& loop, std::function<void()> close) : loop_(loop), close_(std::move(close)) {}

void CloseDelay::anchorEntered() {
  overAnchor_ = true;
  timer_.cancel();
}

void CloseDelay::anchorLeft() {
  overAnchor_ = false;
  if (!inPanel_) start();
}

void CloseDelay::panelEntered() {
  // Wherever the pointer was, it is there no more, whether that has been reported or not.
  overAnchor_ = false;
  inPanel_ = true;
  timer_.cancel();
}

void CloseDelay::panelLeft() {
  // A panel that closed under the pointer may be left only later.
  if (std::exchange(inPanel_, false) && !overAnchor_) start();
}

void CloseDelay::reset() {
  inPanel_ = false;
  timer_.cancel();
}

void CloseDelay::start() {
  timer_ = loop_.after(delay, [this] { close_(); });
}

}  // namespace pellar
