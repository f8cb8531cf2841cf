#include "platform/linux/desktop/QtPlainWindow.h"

#include <xcb/xcb.h>

#include <QCloseEvent>
#include <QDialog>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPalette>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTextDocument>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "platform/linux/desktop/MenuBarIcon.h"
#include "platform/linux/drawing/DrawnText.h"
#include "platform/linux/x11/InternAtom.h"
#include "platform/shared/system/CallbackList.h"

namespace pellar {
namespace {

int pixels(double points) {
  return static_cast<int>(points);
}

// Between the label's colour and the window's.
QColor secondary(const QPalette& palette) {
  const QColor text = palette.color(QPalette::WindowText);
  const QColor ground = palette.color(QPalette::Window);
  const auto mixed = [](int a, int b) { return (3 * a + 2 * b) / 5; };
  return {mixed(text.red(), ground.red()), mixed(text.green(), ground.green()),
          mixed(text.blue(), ground.blue())};
}

// Laying out a text takes its time, and no window is as wide as that many characters. A line break in a name
// makes no second line of a label.
QString shownText(const std::string& text) {
  constexpr std::size_t longest = 1000;
  return drawnText(text, longest).text;
}

QLabel* made(const WindowLabel& label, QWidget& parent) {
  auto* native = new QLabel(shownText(label.text), &parent);
  native->setTextFormat(Qt::PlainText);
  QFont font = native->font();
  font.setPixelSize(pixels(label.fontSize));
  if (label.weight == LabelWeight::semibold) font.setWeight(QFont::DemiBold);
  native->setFont(font);
  if (label.color == TextColor::secondaryLabel) {
    QPalette palette = native->palette();
    palette.setColor(QPalette::WindowText, secondary(palette));
    native->setPalette(palette);
  }
  if (label.centred) native->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  if (label.wrapWidth > 0) {
    // The toolkit would rather break lines early than use the width there is.
    native->setWordWrap(true);
    native->setFixedWidth(
        std::min(native->fontMetrics().horizontalAdvance(native->text()) + 1, pixels(label.wrapWidth)));
    native->setMinimumHeight(native->heightForWidth(native->width()));
  }
  if (label.maximumLines > 0)
    native->setMaximumHeight(label.maximumLines * native->fontMetrics().lineSpacing());
  if (label.frame) {
    native->setWordWrap(true);
    native->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  }
  return native;
}

// The toolkit leaves the window manager's buttons on the frame, which do nothing here.
void limitFrame(QWidget& window, bool closable) {
  struct Hints {  // of Motif, as all window managers read them
    std::uint32_t flags, functions, decorations, inputMode, status;
  };
  constexpr std::uint32_t functionsAndDecorations = 3;
  constexpr std::uint32_t move = 4;
  constexpr std::uint32_t closing = 32;
  constexpr std::uint32_t borderAndTitle = 2 | 8;
  const Hints hints{functionsAndDecorations, closable ? move | closing : move, borderAndTitle, 0, 0};
  auto* const connection = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
  const xcb_atom_t property = internAtom(connection, "_MOTIF_WM_HINTS");
  if (property == XCB_ATOM_NONE) return;
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()), property,
                      property, 32, sizeof hints / sizeof hints.flags, &hints);
}

// With `grows` it takes what room its column has left.
QPlainTextEdit* made(const WindowTextBox& box, bool grows, QWidget& parent) {
  auto* native = new QPlainTextEdit(QString::fromStdString(box.text), &parent);
  native->setReadOnly(true);
  if (grows) {
    native->setMinimumHeight(pixels(box.height));
  } else {
    native->setFixedHeight(pixels(box.height));
  }
  native->document()->setDocumentMargin(box.inset);
  native->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // Shows the window's ground.
  QPalette palette = native->palette();
  palette.setColor(QPalette::Base, palette.color(QPalette::Window));
  native->setPalette(palette);
  return native;
}

QPushButton* made(const WindowButton& button, QWidget& parent) {
  auto* native = new QPushButton(QString::fromStdString(button.title), &parent);
  native->setDefault(button.isDefault);
  if (button.bezel == ButtonBezel::inlined) {
    native->setFlat(true);
    QFont font = native->font();
    font.setUnderline(true);
    native->setFont(font);
  }
  QObject::connect(native, &QPushButton::clicked, native, [handler = button.handler] {
    // The button may go while it runs.
    const auto running = handler;
    running();
  });
  return native;
}

// The default button has the keyboard at first, and the dialog hears of its keys before it does.
void chooseDefaultButton(QDialog& dialog) {
  bool hasDefault = false;
  for (auto* const button : dialog.findChildren<QPushButton*>()) {
    if (!button->isDefault()) continue;
    hasDefault = true;
    button->setFocus();
    button->installEventFilter(&dialog);
  }
  // Else the toolkit would make one of them the default.
  for (auto* const button : dialog.findChildren<QPushButton*>())
    button->setAutoDefault(hasDefault && !button->isFlat());
}

void centre(QWidget& window) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return;
  QRect frame(QPoint(), window.size());
  frame.moveCenter(screen->availableGeometry().center());
  window.move(frame.topLeft());
}

}  // namespace

class QtPlainWindow::Dialog : public QDialog {
 public:
  explicit Dialog(bool closable) : closable_(closable) {}

  // By the program, not the user.
  void takeAway() { hide(); }

  void restDefaultButton(std::chrono::milliseconds time) {
    rest_ = time;
    sinceKeys_.invalidate();
    if (isActiveWindow()) sinceKeys_.start();
  }

  [[nodiscard]] Subscription onClosed(std::function<void()> callback) {
    return closed_.add(std::move(callback));
  }
  // The user's closing is told no more.
  void forgetCallbacks() { closed_ = {}; }

 protected:
  void changeEvent(QEvent* event) override {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && !sinceKeys_.isValid())
      sinceKeys_.start();
  }
  // Of the default button.
  bool eventFilter(QObject* button, QEvent* event) override {
    return (event->type() == QEvent::KeyPress && rests() && presses(*static_cast<QKeyEvent*>(event))) ||
           QDialog::eventFilter(button, event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (!rests() || !presses(*event)) QDialog::keyPressEvent(event);
  }
  // Escape.
  void reject() override {
    if (closable_) close();
  }
  void closeEvent(QCloseEvent* event) override {
    event->setAccepted(closable_);
    if (closable_) QTimer::singleShot(0, this, closed_.later());
  }

 private:
  bool rests() const { return !sinceKeys_.isValid() || sinceKeys_.elapsed() < rest_.count(); }
  static bool presses(const QKeyEvent& event) {
    constexpr std::array<int, 4> keys{Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Select};
    return std::ranges::find(keys, event.key()) != keys.end();
  }

  bool closable_;
  std::chrono::milliseconds rest_{0};
  QElapsedTimer sinceKeys_;  // since the window got the keyboard, or was asked to rest while it had it
  CallbackList<> closed_;
};

QtPlainWindow::QtPlainWindow(const WindowDescription& description)
    : dialog_(new Dialog(description.closable)) {
  Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
  if (description.closable) flags |= Qt::WindowCloseButtonHint;
  if (description.level == WindowLevel::modalPanel) flags |= Qt::WindowStaysOnTopHint;
  dialog_->setWindowFlags(flags);
  dialog_->setWindowTitle(QString::fromStdString(description.title));
  dialog_->setWindowIcon(MenuBarIcon::make());
  fill(description);
  limitFrame(*dialog_, description.closable);
  chooseDefaultButton(*dialog_);
  centre(*dialog_);
}

void QtPlainWindow::fill(const WindowDescription& description) {
  auto* column = new QVBoxLayout(dialog_);
  const auto& insets = description.insets;
  column->setContentsMargins(pixels(insets.left), pixels(insets.top), pixels(insets.right),
                             pixels(insets.bottom));
  column->setSpacing(pixels(description.spacing));
  const Qt::Alignment side =
      description.alignment == StackAlignment::centre ? Qt::AlignHCenter : Qt::AlignRight;
  const int widest = pixels(description.contentSize.width - insets.left - insets.right);
  // In a column of controls that end alike, what is read still begins where the text does.
  const Qt::Alignment sideOfLabels =
      description.alignment == StackAlignment::centre ? Qt::AlignHCenter : Qt::AlignLeft;
  const auto place = [&](QWidget* native, const std::optional<WindowFrame>& frame, Qt::Alignment at) {
    if (!frame) {
      // A text that is too long is cut off instead of pushing the others aside.
      native->setMaximumWidth(std::min(native->maximumWidth(), widest));
      column->addWidget(native, 0, at);
      return;
    }
    native->setGeometry(pixels(frame->x), pixels(description.contentSize.height - frame->y - frame->height),
                        pixels(frame->width), pixels(frame->height));
  };
  for (const auto& element : description.elements) {
    if (const auto* label = std::get_if<WindowLabel>(&element)) {
      auto* const native = made(*label, *dialog_);
      if (!label->id.empty()) labels_[label->id] = native;
      place(native, label->frame, sideOfLabels);
    } else if (const auto* spacer = std::get_if<WindowSpacer>(&element)) {
      // The layout leaves its gap beside a spacer only once.
      column->addSpacing(pixels(spacer->height + description.spacing));
    } else if (const auto* box = std::get_if<WindowTextBox>(&element)) {
      column->addWidget(made(*box, description.columnReachesBottom, *dialog_),
                        description.columnReachesBottom ? 1 : 0);
    } else if (const auto* button = std::get_if<WindowButton>(&element)) {
      place(made(*button, *dialog_), button->frame, side);
    } else if (const auto* row = std::get_if<WindowButtonRow>(&element)) {
      auto* const line = new QHBoxLayout;
      line->setSpacing(pixels(row->spacing));
      for (const auto& each : row->buttons) line->addWidget(made(each, *dialog_));
      column->addLayout(line);
      column->setAlignment(line, side);
    }
  }
  if (!description.columnReachesBottom) column->addStretch();
  const QSize wanted(pixels(description.contentSize.width), pixels(description.contentSize.height));
  dialog_->setFixedSize(wanted.expandedTo(column->minimumSize()));
}

QtPlainWindow::~QtPlainWindow() {
  dialog_->forgetCallbacks();
  dialog_->takeAway();
  dialog_->deleteLater();
}

void QtPlainWindow::makeKeyAndOrderFront() {
  dialog_->show();
  dialog_->raise();
  dialog_->activateWindow();
}

void QtPlainWindow::restDefaultButton(std::chrono::milliseconds time) {
  dialog_->restDefaultButton(time);
}

void QtPlainWindow::close() {
  dialog_->takeAway();
}

bool QtPlainWindow::isVisible() const {
  return dialog_->isVisible();
}

void QtPlainWindow::setText(const std::string& id, const std::string& text) {
  const auto found = labels_.find(id);
  if (found != labels_.end()) found->second->setText(shownText(text));
}

Subscription QtPlainWindow::onClosed(std::function<void()> callback) {
  return dialog_->onClosed(std::move(callback));
}

}  // namespace pellar
