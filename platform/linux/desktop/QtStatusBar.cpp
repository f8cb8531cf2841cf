#include "platform/linux/desktop/QtStatusBar.h"

#include <QCursor>
#include <QEvent>
#include <QMenu>
#include <QSystemTrayIcon>
#include <chrono>
#include <optional>
#include <utility>

#include "platform/linux/desktop/MenuBarIcon.h"
#include "platform/linux/popups/QtMenuItems.h"
#include "platform/linux/system/SessionBus.h"
#include "platform/linux/system/TemporaryVariable.h"

namespace pellar {

namespace {

bool hasSessionBus() {
  return SessionBus::answering(std::chrono::milliseconds(300)).has_value();
}

}  // namespace

class QtStatusBar::Item : public QObject {
 public:
  Item(MainLoop& loop, EventMonitors& monitors, StatusItemLook look, std::function<Menu()> menu)
      : loop_(loop), monitors_(monitors), look_(std::move(look)), menu_(std::move(menu)) {
    using QtMenuItems::Reader;
    QObject::connect(&native_, &QMenu::aboutToShow, &native_, [this] { refill(native_, Reader::toolkit); });
    QObject::connect(&exported_, &QMenu::aboutToShow, &exported_,
                     [this] { refill(exported_, Reader::sessionBus); });
    native_.installEventFilter(this);
  }

  bool eventFilter(QObject* object, QEvent* event) override {
    // Where somebody else has hold of the pointer, the toolkit does not hear of presses elsewhere.
    if (event->type() == QEvent::Show) elsewhere_ = monitors_.onGlobalMouseDown(&QtMenuItems::closeOpenMenus);
    if (event->type() == QEvent::Hide) elsewhere_.cancel();
    return QObject::eventFilter(object, event);
  }

  // Does nothing when it is there already.
  void showInTray() {
    if (icon_) return;
    // A tray of its own process may read the menu before it says that it opens it.
    refill(exported_, QtMenuItems::Reader::sessionBus);
    // The toolkit looks for a tray on the session bus, and would start a bus where there is none.
    std::optional<TemporaryVariable> noBus;
    if (!hasSessionBus()) noBus.emplace("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    icon_ = std::make_unique<QSystemTrayIcon>(MenuBarIcon::make());
    icon_->setToolTip(QStringLiteral("Pellar"));
    icon_->setContextMenu(&exported_);
    // A tray of this process' own windows has the toolkit show the menu.
    if (exported_.platformMenu() == nullptr) icon_->setContextMenu(&native_);
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
  void refill(QMenu& menu, QtMenuItems::Reader reader) {
    const auto submenus = menu.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
    menu.clear();
    qDeleteAll(submenus);
    const auto post = [this](const std::function<void()>& handler) {
      // The menu is still closing.
      loop_.post(handler);
    };
    QtMenuItems::fill(menu, menu_(), post, reader);
  }

  MainLoop& loop_;
  EventMonitors& monitors_;
  StatusItemLook look_;
  std::function<Menu()> menu_;
  Subscription elsewhere_;                 // while the menu is on the screen
  QMenu native_;                           // depends-on: elsewhere_, which it ends when it goes
  QMenu exported_;                         // what a tray of its own process reads and shows by itself
  std::unique_ptr<QSystemTrayIcon> icon_;  // depends-on: native_, exported_
};

QtStatusBar::QtStatusBar(MainLoop& loop, EventMonitors& monitors) : loop_(loop), monitors_(monitors) {}

QtStatusBar::~QtStatusBar() = default;

Subscription QtStatusBar::addItem(const StatusItemLook& look, std::function<Menu()> menu) {
  item_ = std::make_shared<Item>(loop_, monitors_, look, std::move(menu));
  start_ = loop_.after(std::chrono::milliseconds(0), [this] { item_->showInTray(); });
  return Subscription([this] {
    start_.cancel();
    item_.reset();
  });
}

void QtStatusBar::openMenu() {
  if (!item_) return;
  // What the tray does with the menu would take an open one off the screen for a moment, and the toolkit
  // closes it for that.
  item_->showInTray();
  item_->open();
}

}  // namespace pellar
