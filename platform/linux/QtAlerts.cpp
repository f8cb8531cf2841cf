#include "platform/linux/QtAlerts.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

namespace pellar {

namespace {

// Shown as it is: a title is never markup.
QLabel* label(const std::string& text, QWidget& parent) {
  auto* made = new QLabel(QString::fromStdString(text), &parent);
  made->setTextFormat(Qt::PlainText);
  made->setWordWrap(true);
  return made;
}

}  // namespace

std::optional<TextAlertAnswer> QtAlerts::runModal(const TextAlert& alert) {
  if (std::exchange(open_, true)) return std::nullopt;
  QDialog dialog;
  dialog.setWindowTitle(QString::fromStdString(alert.messageText));
  dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
  auto* column = new QVBoxLayout(&dialog);
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
  dialog.exec();
  open_ = false;
  return TextAlertAnswer{response, field->text().toStdString()};
}

}  // namespace pellar
