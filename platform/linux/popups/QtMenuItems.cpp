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

namespace pellar::QtMenuItems {
namespace {

using Receiver = std::function<void(const std::function<void()>& handler)>;

constexpr int widestTitle = 480;
// No title of that many characters is that narrow; laying out a long one in full takes its time.
constexpr qsizetype longestTitle = 1000;

// One row of text, with an ampersand for every ampersand: the toolkit takes a single one for the mark of a
// key.
QString shownTitle(const std::string& title, const QFontMetrics& metrics) {
  QString text = QString::fromStdString(title);
  if (text.size() > longestTitle) text = text.left(longestTitle / 2) + text.right(longestTitle / 2);
  for (QChar& each : text) {
    // Line breaks would make two rows of it, and a tab begins the name of a key.
    if (each.category() == QChar::Other_Control || each == QChar::LineSeparator ||
        each == QChar::ParagraphSeparator)
      each = QLatin1Char(' ');
  }
  text = metrics.elidedText(text, Qt::ElideMiddle, widestTitle);
  return text.replace(QLatin1Char('&'), QLatin1String("&&"));
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
  QPixmap picture(side, side);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                                    static_cast<float>(color.blue), static_cast<float>(color.alpha)));
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

void add(QMenu& native, const ClosureItem& item, const Receiver& onChosen) {
  QAction* action = native.addAction(shownTitle(item.title, native.fontMetrics()));
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

void fill(QMenu& native, const Menu& menu, const Receiver& onChosen) {
  for (const auto& item : menu) {
    if (std::holds_alternative<MenuSeparator>(item)) {
      native.addSeparator();
    } else if (const auto* submenu = std::get_if<Submenu>(&item)) {
      fill(*native.addMenu(shownTitle(submenu->title, native.fontMetrics())), submenu->items, onChosen);
    } else {
      add(native, std::get<ClosureItem>(item), onChosen);
    }
  }
}

void closeOpenMenus() {
  while (QWidget* menu = QApplication::activePopupWidget()) {
    if (!menu->close()) return;
  }
}

}  // namespace pellar::QtMenuItems
