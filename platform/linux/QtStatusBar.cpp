#include "platform/linux/QtStatusBar.h"

#include <QCursor>
#include <QMenu>
#include <QSystemTrayIcon>
#include <chrono>
#include <optional>
#include <utility>

#include "platform/linux/MenuBarIcon.h"
#include "platform/linux/QtMenuItems.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/TemporaryVariable.h"

namespace pellar {

namespace {

bool hasSessionBus() {
  constexpr std::chrono::milliseconds busTime{300};
  const auto address = SessionBus::address();
  return address && SessionBus::answers(*address, std::chrono::steady_clock::now() + busTime);
}

}  // namespace

class QtStatusBar::Item {
 public:
  Item(MainLoop& loop, StatusItemLook look, std::function<Menu()> menu)
      : loop_(loop), look_(std::move(look)), menu_(std::move(menu)) {
    QObject::connect(&native_, &QMenu::aboutToShow, &native_, [this] { refill(); });
  }

  void showInTray() {
    // A tray of its own process may read the menu before it says that it opens it.
    refill();
    // The toolkit looks for a tray on the session bus, and would start a bus where there is none.
    std::optional<TemporaryVariable> noBus;
    if (!hasSessionBus()) noBus.emplace("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    icon_ = std::make_unique<QSystemTrayIcon>(MenuBarIcon::make());
    icon_->setToolTip(QStringLiteral("Pellar"));
    icon_->setContextMenu(&native_);
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                       if (reason == QSystemTrayIcon::Trigger) open();
                     });
    icon_->show();
  }

  void open() {
    if (!native_.isVisible()) native_.popup(QCursor::pos());
  }

 private:
  void refill() {
    const auto submenus = native_.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
    native_.clear();
    qDeleteAll(submenus);
    QtMenuItems::fill(native_, menu_(), [this](const std::function<void()>& handler) {
      // The menu is still closing.
      loop_.post(handler);
    });
  }

  MainLoop& loop_;
  StatusItemLook look_;
  std::function<Menu()> menu_;
  QMenu native_;
  std::unique_ptr<QSystemTrayIcon> icon_;  // depends-on: native_
};

QtStatusBar::QtStatusBar(MainLoop& loop) : loop_(loop) {}

QtStatusBar::~QtStatusBar() = default;

Subscription QtStatusBar::addItem(const StatusItemLook& look, std::function<Menu()> menu) {
  item_ = std::make_shared<Item>(loop_, look, std::move(menu));
  start_ = loop_.after(std::chrono::milliseconds(0), [this] { item_->showInTray(); });
  return Subscription([this] {
    start_.cancel();
    item_.reset();
  });
}

void QtStatusBar::openMenu() {
  if (item_) item_->open();
}

}  // namespace pellar
