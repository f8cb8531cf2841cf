#include "platform/linux/QtMenus.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <functional>
#include <memory>
#include <utility>
#include <variant>

#include "platform/ScreenList.h"

namespace pellar {
namespace {

// The toolkit takes an ampersand for the mark of a key; doubled it is one. A line break would make a row two
// rows.
QString shownTitle(const std::string& title) {
  QString text = QString::fromStdString(title);
  text.replace(QLatin1Char('&'), QLatin1String("&&"));
  text.replace(QLatin1Char('\n'), QLatin1Char(' '));
  text.replace(QLatin1Char('\t'), QLatin1Char(' '));
  return text;
}

QIcon swatch(const Color& color) {
  constexpr int side = 12;
  QPixmap picture(side, side);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                                    static_cast<float>(color.blue), static_cast<float>(color.alpha)));
  painter.drawEllipse(0, 0, side, side);
  painter.end();
  return QIcon(picture);
}

void fill(QMenu& native, const Menu& menu, std::function<void()>& chosen) {
  for (const auto& item : menu) {
    if (std::holds_alternative<MenuSeparator>(item)) {
      native.addSeparator();
    } else if (const auto* submenu = std::get_if<Submenu>(&item)) {
      fill(*native.addMenu(shownTitle(submenu->title)), submenu->items, chosen);
    } else {
      const auto& closure = std::get<ClosureItem>(item);
      QAction* action = native.addAction(shownTitle(closure.title));
      action->setEnabled(closure.enabled);
      if (closure.checked) {
        action->setCheckable(true);
        action->setChecked(true);
      }
      if (closure.swatch) {
        action->setIcon(swatch(*closure.swatch));
        action->setIconVisibleInMenu(true);
      }
      QObject::connect(action, &QAction::triggered,
                       [&chosen, handler = closure.handler] { chosen = handler; });
    }
  }
}

}  // namespace

void QtMenus::popUpContextMenu(const Menu& menu, const MouseEvent& event) {
  if (std::exchange(open_, true)) return;
  std::function<void()> chosen;
  {
    QMenu native;
    fill(native, menu, chosen);
    const auto screens = screens_.screens();
    const double height = screens.empty() ? 0 : screens.front().frame.height;
    // The press that asked for the menu holds the pointer, which the menu needs.
    xcb_ungrab_pointer(connection_.xcb(), XCB_CURRENT_TIME);
    xcb_flush(connection_.xcb());
    native.exec(
        QPoint(static_cast<int>(event.screenLocation.x), static_cast<int>(height - event.screenLocation.y)));
  }
  open_ = false;
  if (chosen) chosen();
}

}  // namespace pellar
