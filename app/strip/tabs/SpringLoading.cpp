#include "app/strip/tabs/SpringLoading.h"

#include <chrono>

#include "core/Notify.h"

namespace pellar {
namespace {

constexpr std::chrono::milliseconds rest{500};

}  // namespace

void SpringLoading::draggedOver(std::optional<WindowId> tab) {
  if (tab == tab_) return;
  tab_ = tab;
  timer_.cancel();
  if (!tab) return;
  timer_ = loop_.after(rest, [this, id = *tab] { notify(onOpen, id); });
}

}  // namespace pellar
