#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QString>
#include <QVariantList>
#include <atomic>
#include <chrono>
#include <optional>

#include "platform/Accessibility.h"

namespace pellar {

// An object of a program on the accessibility bus.
struct AtSpiReference {
  QString bus;   // the program's unique name there
  QString path;  // of the object
  friend bool operator==(const AtSpiReference&, const AtSpiReference&) = default;
};

// The accessibility bus. Everything here may take until its deadline and is for a side thread; a bus that is
// not there, or does not answer, is an absent answer.
class AtSpiBus {
 public:
  using Clock = std::chrono::steady_clock;
  using Deadline = Clock::time_point;
  [[nodiscard]] static bool isOver(Deadline deadline) { return Clock::now() >= deadline; }

  // By which any object is asked for its properties.
  static inline const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
  // Who starts it and says where it is, on the session bus.
  static inline const QString launcher = QStringLiteral("org.a11y.Bus");
  static inline const QString launcherPath = QStringLiteral("/org/a11y/bus");
  // Who knows all programs on it, and all that listen.
  static inline const QString registry = QStringLiteral("org.a11y.atspi.Registry");

  AtSpiBus() = default;
  ~AtSpiBus();
  AtSpiBus(const AtSpiBus&) = delete;
  AtSpiBus& operator=(const AtSpiBus&) = delete;

  // Connects where that has not been done. False when there is no bus; it is then not tried again for a
  // while.
  bool connect(Deadline deadline);

  // Sends a call, of which several may be under way. The answer's values; absent after an error or when it is
  // late.
  [[nodiscard]] QDBusPendingCall send(const AtSpiReference& object, const QString& interface,
                                      const QString& method, const QVariantList& arguments,
                                      Deadline deadline) const;
  [[nodiscard]] static std::optional<QVariantList> receive(QDBusPendingCall call);
  // What became of a call that has ended: unanswered when it was late.
  [[nodiscard]] static Performed performed(const QDBusPendingCall& call);
  [[nodiscard]] std::optional<QVariantList> call(const AtSpiReference& object, const QString& interface,
                                                 const QString& method, const QVariantList& arguments,
                                                 Deadline deadline) const {
    return receive(send(object, interface, method, arguments, deadline));
  }

  // The same to an object on the session bus. To be connected first.
  [[nodiscard]] QDBusPendingCall sendOnSession(const AtSpiReference& object, const QString& interface,
                                               const QString& method, const QVariantList& arguments,
                                               Deadline deadline) const;

  // Has the programs come to the bus that wait for somebody to ask for them; some look only when they start.
  // A setting of the whole session, which the user may see in his desktop's settings: for as long as it is
  // needed, and given back by disable(). False when it was so already.
  bool enable(Deadline deadline);
  void disable(Deadline deadline);
  // Whether this process has done so, from any thread.
  [[nodiscard]] static bool hasInvited() { return invited; }

 private:
  [[nodiscard]] std::optional<QString> address(Deadline deadline);
  void close();

  static inline std::atomic<bool> invited = false;

  std::optional<QDBusConnection> session_;
  std::optional<QDBusConnection> connection_;
  std::optional<Clock::time_point> failedAt_;
  bool reported_ = false;
  bool enabled_ = false;  // by us
};

}  // namespace pellar
