#include "app/shell/AboutPellar.h"

#include <chrono>
#include <utility>

#include "platform/MainLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// A slower answer is shown at the next check.
constexpr auto conclusionDelay = 2s;

}  // namespace

AboutPellar::AboutPellar(const Platform& platform, std::shared_ptr<OwnWindows> windows,
                         std::shared_ptr<Updater> updater)
    : platform_(platform), windows_(std::move(windows)), updater_(std::move(updater)) {}

void AboutPellar::showAbout() {
  if (!aboutWindow_) {
    aboutWindow_ = std::make_unique<AboutWindowController>(
        *windows_, platform_.workspace, updater_->baseUrl(), updater_->currentVersion(),
        platform_.bundle.version.value_or("0"), [this] { check(); });
  }
  if (const auto& update = updater_->available()) announce(update->latest);
  aboutWindow_->window().makeKeyAndOrderFront();
}

void AboutPellar::announce(const std::string& latest) {
  if (aboutWindow_) aboutWindow_->setStatus("Update to " + latest + " is ready.");
}

void AboutPellar::check() {
  updater_->check(false);
  conclusions_.push_back(platform_.mainLoop.after(conclusionDelay, [this] { concludeCheck(); }));
}

void AboutPellar::concludeCheck() {
  const auto ended = std::move(conclusions_.front());
  conclusions_.pop_front();
  const auto& update = updater_->available();
  aboutWindow_->setStatus(update ? "Update to " + update->latest + " is ready. Use the menu to download."
                                 : "You are on the latest version.");
}

}  // namespace pellar
