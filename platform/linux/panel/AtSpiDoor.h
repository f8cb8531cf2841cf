#pragma once

#include <QDBusVirtualObject>
#include <QPointer>

namespace pellar {

// Stands before the toolkit on the accessibility bus, where any program may call: the toolkit takes for
// granted that a call carries as many values as it should, and would end over one that does not. Refuses what
// is called before the toolkit is behind it.
class AtSpiDoor final : public QDBusVirtualObject {
 public:
  void setToolkit(QDBusVirtualObject* toolkit) { toolkit_ = toolkit; }
  [[nodiscard]] QDBusVirtualObject* toolkit() const { return toolkit_; }

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QPointer<QDBusVirtualObject> toolkit_;
};

}  // namespace pellar
