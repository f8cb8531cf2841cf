#include "platform/linux/desktop/QtAlerts.h"

#include <QCursor>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "core/TrueWhile.h"
#include "platform/linux/desktop/MenuBarIcon.h"
#include "platform/linux/system/ToolkitPlace.h"
#include "platform/linux/x11/ServerSync.h"

namespace pellar {

namespace {

constexpr int widest = 420;
// What a window manager may put around a dialog.
constexpr QMargins decoration{8, 44, 8, 12};

// Shown as it is: a title is never markup.
QLabel* label(const std::string& text, QWidget& parent) {
  constexpr qsizetype longest = 2000;
  auto* made = new QLabel(QString::fromStdString(text).left(longest), &parent);
  made->setTextFormat(Qt::PlainText);
  made->setWordWrap(true);
  made->setMaximumWidth(widest);
  return made;
}

}  // namespace

std::optional<TextAlertAnswer> QtAlerts::runModal(const TextAlert& alert) {
  if (open_) return std::nullopt;
  const TrueWhile asking(open_);
  QDialog dialog;
  dialog.setWindowTitle(QStringLiteral("Pellar"));
  dialog.setWindowIcon(MenuBarIcon::make());
  dialog.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                        Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
  auto* column = new QVBoxLayout(&dialog);
  column->setSizeConstraint(QLayout::SetFixedSize);
  auto* message = label(alert.messageText, dialog);
  QFont bold = message->font();
  bold.setBold(true);
  message->setFont(bold);
  column->addWidget(message);
  column->addWidget(label(alert.informativeText, dialog));

  auto* field = new QLineEdit(QString::fromStdString(alert.fieldText), &dialog);
  field->setMinimumSize(static_cast<int>(alert.fieldSize.width), static_cast<int>(alert.fieldSize.height));
  field->selectAll();
  column->addWidget(field);

  auto* buttons = new QDialogButtonBox(&dialog);
  // Closing the window, and Escape, answer as the last button.
  int response = TextAlertAnswer::firstButtonReturn + static_cast<int>(alert.buttons.size()) - 1;
  for (std::size_t index = 0; index < alert.buttons.size(); ++index) {
    auto* button =
        buttons->addButton(QString::fromStdString(alert.buttons[index]),
                           index == 0 ? QDialogButtonBox::AcceptRole : QDialogButtonBox::RejectRole);
    button->setDefault(index == 0);
    QObject::connect(button, &QPushButton::clicked, &dialog, [&dialog, &response, index] {
      response = TextAlertAnswer::firstButtonReturn + static_cast<int>(index);
      dialog.done(static_cast<int>(index));
    });
  }
  column->addWidget(buttons);
  field->setFocus();
  place(dialog);
  QTimer::singleShot(0, &dialog, [this, &dialog] { activate(dialog); });
  dialog.exec();
  return TextAlertAnswer{response, field->text().toStdString()};
}

// In the middle of the screen that the user is at, a little above its centre, or else beside the panels,
// which stand above every window.
void QtAlerts::place(QDialog& dialog) const {
  dialog.adjustSize();
  const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return;
  const QRect room = screen->availableGeometry();
  QRect place(QPoint(), dialog.size().grownBy(decoration));
  place.moveCenter(room.center());
  const int wanted = room.top() + std::max(0, (room.height() - place.height()) / 3);
  place.moveTop(wanted);
  const auto covered = [&](const QRect& rect) {
    return std::ranges::any_of(panelFrames_(), [&](const PixelRect& panel) {
      return rect.intersects(ToolkitPlace::of(rootRect(panel)));
    });
  };
  // The nearest free place above or below.
  constexpr int step = 8;
  for (int distance = step; covered(place) && distance < room.height(); distance += step) {
    for (const int top : {wanted - distance, wanted + distance}) {
      QRect other = place;
      other.moveTop(top);
      if (!room.contains(other) || covered(other)) continue;
      place = other;
      break;
    }
  }
  dialog.move(place.topLeft());
}

// The click that led here is unknown to the toolkit's connection, so that a window manager would take its
// window for one that the user did not ask for.
void QtAlerts::activate(const QDialog& dialog) {
  const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (native == nullptr) return;
  // The window manager is to hear of the window first.
  syncWithServer(native->connection());
  connection_.sendToWindowManager(static_cast<xcb_window_t>(dialog.winId()),
                                  connection_.atoms().netActiveWindow,
                                  {fromPager, connection_.serverTime(), 0, 0, 0});
  connection_.flush();
}

}  // namespace pellar
