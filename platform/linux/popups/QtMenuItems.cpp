#include "platform/linux/popups/QtMenuItems.h"

#include <QAction>
#include <QApplication>
#include <QFontMetrics>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <QProxyStyle>
#include <QStyleOptionMenuItem>
#include <string>
#include <variant>

#include "platform/linux/drawing/DrawnText.h"
#include "platform/linux/drawing/NativeColor.h"

namespace pellar::QtMenuItems {
namespace {

using Receiver = std::function<void(const std::function<void()>& handler)>;

constexpr int widestTitle = 480;
// No title of that many characters is that narrow; laying out a long one in full takes its time.
constexpr qsizetype longestTitle = 1000;

// No character of a title is the mark of a key.
QString withoutMarks(QString text, Reader reader) {
  const QLatin1Char ampersand('&');
  const QLatin1String doubled("&&");
  if (reader == Reader::toolkit) return text.replace(ampersand, doubled);
  // On its way to the bus the first ampersand becomes an underscore, and the others stay as they are.
  text.replace(QLatin1Char('_'), QLatin1String("__"));
  if (const auto first = text.indexOf(ampersand); first >= 0) text.replace(first, 1, doubled);
  return text;
}

// One row of text.
QString shownTitle(const std::string& title, const QFontMetrics& metrics, Reader reader) {
  QString text = QString::fromStdString(title);
  if (text.size() > longestTitle) text = text.left(longestTitle / 2) + text.right(longestTitle / 2);
  // Line breaks would make two rows of it, and a tab begins the name of a key.
  text = drawnText(text.toStdString(), static_cast<std::size_t>(longestTitle)).text;
  return withoutMarks(metrics.elidedText(text, Qt::ElideMiddle, widestTitle), reader);
}

// Draws what is prominent in the accent colour: a menu's items have no colours of their own.
class ProminentStyle final : public QProxyStyle {
 public:
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    const auto* item =
        element == CE_MenuItem ? qstyleoption_cast<const QStyleOptionMenuItem*>(option) : nullptr;
    if (item == nullptr || !item->font.bold())
      return QProxyStyle::drawControl(element, option, painter, widget);
    QStyleOptionMenuItem coloured = *item;
    const QColor accent = item->palette.color(QPalette::Highlight);
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
      coloured.palette.setColor(role, accent);
    QProxyStyle::drawControl(element, &coloured, painter, widget);
  }
};

// A menu keeps its style as long as it lives.
void becomeProminent(QMenu& native) {
  if (dynamic_cast<const ProminentStyle*>(native.style()) != nullptr) return;
  auto* const style = new ProminentStyle;
  style->setParent(&native);
  native.setStyle(style);
}

QIcon swatch(const Color& color, bool checked) {
  constexpr int side = 12;
  const double ratio = qGuiApp->devicePixelRatio();
  QPixmap picture((QSizeF(side, side) * ratio).toSize());
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(nativeColor(color));
  painter.drawEllipse(0, 0, side, side);
  if (checked) {
    // The toolkit frames a checked picture, which alone does not look like a mark.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 1.6));
    painter.drawPolyline(QPolygonF{{3.2, 6.2}, {5.2, 8.4}, {8.8, 3.8}});
  }
  painter.end();
  return QIcon(picture);
}

void add(QMenu& native, const ClosureItem& item, const Receiver& onChosen, Reader reader) {
  QAction* action = native.addAction(shownTitle(item.title, native.fontMetrics(), reader));
  action->setEnabled(item.enabled);
  if (item.checked) {
    action->setCheckable(true);
    action->setChecked(true);
  }
  if (item.swatch) {
    action->setIcon(swatch(*item.swatch, item.checked));
    action->setIconVisibleInMenu(true);
  }
  if (item.prominent) {
    QFont bold = native.font();
    bold.setBold(true);
    action->setFont(bold);
    becomeProminent(native);
  }
  QObject::connect(action, &QAction::triggered, action,
                   [onChosen, handler = item.handler] { onChosen(handler); });
}

}  // namespace

void fill(QMenu& native, const Menu& menu, const Receiver& onChosen, Reader reader) {
  for (const auto& item : menu) {
    if (std::holds_alternative<MenuSeparator>(item)) {
      native.addSeparator();
    } else if (const auto* submenu = std::get_if<Submenu>(&item)) {
      fill(*native.addMenu(shownTitle(submenu->title, native.fontMetrics(), reader)), submenu->items,
           onChosen, reader);
    } else {
      add(native, std::get<ClosureItem>(item), onChosen, reader);
    }
  }
}

void closeOpenMenus() {
  while (QWidget* menu = QApplication::activePopupWidget()) {
    if (!menu->close()) return;
  }
}

}  // namespace pellar::QtMenuItems
