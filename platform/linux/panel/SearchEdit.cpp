#include "platform/linux/panel/SearchEdit.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <optional>

#include "platform/VirtualKey.h"
#include "platform/linux/drawing/NativeColor.h"
#include "platform/linux/drawing/PanelBackground.h"
#include "platform/linux/panel/QtSearchField.h"
#include "platform/linux/panel/SearchFieldLook.h"
#include "platform/linux/panel/X11Panel.h"
#include "platform/linux/x11/EventType.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// The toolkit waits a tenth of a second for a reader's answer.
constexpr auto longestQuestion = 150ms;
constexpr int nativeMargin = 2;  // between the editor's text margins and its text

// The key command of a key; empty for a key that has none.
std::string selectorOf(int key) {
  switch (key) {
    case Qt::Key_Down:
      return "moveDown:";
    case Qt::Key_Up:
      return "moveUp:";
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return "insertNewline:";
    case Qt::Key_Escape:
      return "cancelOperation:";
    default:
      return {};
  }
}

// The virtual key code of a key that a list may have a use for; absent for others.
std::optional<std::uint16_t> virtualKeyCode(int key) {
  switch (key) {
    case Qt::Key_Return:
      return VirtualKey::returnKey;
    case Qt::Key_Escape:
      return VirtualKey::escape;
    case Qt::Key_PageUp:
      return VirtualKey::pageUp;
    case Qt::Key_PageDown:
      return VirtualKey::pageDown;
    case Qt::Key_Down:
      return VirtualKey::down;
    case Qt::Key_Up:
      return VirtualKey::up;
    default:
      return std::nullopt;
  }
}

bool isModifier(int key) {
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
      return true;
    default:
      return false;
  }
}

}  // namespace

SearchEdit::SearchEdit(QtSearchField& field, X11Panel& panel)
    : field_(field), panel_(panel), parentWindow_(QWindow::fromWinId(panel.window())) {
  setWindowFlags(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_QuitOnClose, false);
  // A window inside a translucent one must have its depth.
  if (panel.services().compositor.depth() == 32) setAttribute(Qt::WA_TranslucentBackground);
  setFrame(false);
  setContextMenuPolicy(Qt::NoContextMenu);
  QPalette colors;
  colors.setColor(QPalette::Base, Qt::transparent);
  colors.setColor(QPalette::Text, nativeColor(SearchFieldLook::textColor));
  colors.setColor(QPalette::PlaceholderText, nativeColor(SearchFieldLook::placeholderColor));
  colors.setColor(QPalette::Highlight, nativeColor(Color::of(SystemColor::blue)));
  colors.setColor(QPalette::HighlightedText, Qt::white);
  setPalette(colors);

  lastKeyDone_.setSingleShot(true);
  connect(&lastKeyDone_, &QTimer::timeout, this, [this] { panel_.services().keyboard.keyIsDone(lastKey_); });

  winId();
  windowHandle()->setParent(parentWindow_);
  connect(this, &QLineEdit::textEdited, this,
          [this](const QString& text) { field_.typed(text.toStdString()); });
}

SearchEdit::~SearchEdit() {
  // The toolkit would end this window with the one it stands in.
  if (windowHandle() != nullptr) windowHandle()->setParent(nullptr);
  delete parentWindow_;
}

double SearchEdit::unitsPerPoint() const {
  return panel_.scale() / devicePixelRatioF();
}

void SearchEdit::place(const ViewRect& frame) {
  const double units = unitsPerPoint();
  const auto rounded = [units](double points) { return static_cast<int>(std::lround(points * units)); };
  const Font& font = SearchFieldLook::font;
  setFont(panel_.services().measure.face({font.size * units, font.weight}).native);
  setTextMargins(rounded(SearchFieldLook::textLeft) - nativeMargin, 0,
                 rounded(SearchFieldLook::textRight) - nativeMargin, 0);
  const int left = rounded(frame.x);
  const int top = rounded(frame.y);
  setGeometry(left, top, rounded(frame.maxX()) - left, rounded(frame.maxY()) - top);
}

// A key is handled right after this, before any timer, unless the toolkit first asks a screen reader whether
// that keeps it. Also one that a reader or an input method keeps, or that does nothing, must not hold up what
// is typed behind it.
bool SearchEdit::nativeEvent(const QByteArray& type, void* message, qintptr* result) {
  const auto& key = *static_cast<const xcb_key_press_event_t*>(message);
  if (eventType(key) == XCB_KEY_PRESS) {
    lastKey_ = key.detail;
    lastKeyDone_.start(QAccessible::isActive() ? longestQuestion : 0ms);
  }
  return QLineEdit::nativeEvent(type, message, result);
}

void SearchEdit::paintEvent(QPaintEvent* event) {
  X11PanelServices& services = panel_.services();
  const double ratio = devicePixelRatioF();
  const QSize pixels = (QSizeF(size()) * ratio).toSize();
  QImage ground(pixels, QImage::Format_ARGB32_Premultiplied);
  PanelBackground::drawUnder(ground, ground.rect(), services.compositor.blends());
  QtCanvas canvas = services.canvasOn(ground, ground.rect(), panel_.scale());
  SearchFieldLook::drawGround(canvas,
                              {0, 0, pixels.width() / panel_.scale(), pixels.height() / panel_.scale()});
  ground.setDevicePixelRatio(ratio);
  {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, ground);
  }
  QLineEdit::paintEvent(event);
}

void SearchEdit::keyPressEvent(QKeyEvent* event) {
  if (event->nativeScanCode() == lastKey_) lastKeyDone_.start(0ms);
  if (offerToList(event->key())) {
    event->accept();
    return;
  }
  const std::string selector = selectorOf(event->key());
  if (selector.empty()) {
    QLineEdit::keyPressEvent(event);
    return;
  }
  event->accept();
  if (field_.command(selector) || selector != "cancelOperation:" || text().isEmpty()) return;
  clear();
  field_.typed({});
}

// False when the key is the field's, which then has the keys again.
bool SearchEdit::offerToList(int key) {
  return !isModifier(key) && panel_.services().keys.offerToList(virtualKeyCode(key));
}

void SearchEdit::mousePressEvent(QMouseEvent* event) {
  const QPointF place = event->position() / unitsPerPoint();
  field_.pressedInEditor({place.x(), place.y()});
  QLineEdit::mousePressEvent(event);
}

}  // namespace pellar
