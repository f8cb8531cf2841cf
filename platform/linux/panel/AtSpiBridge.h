#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>

#include "core/Alive.h"
#include "platform/MainLoop.h"
#include "platform/linux/panel/AtSpiDoor.h"
#include "platform/linux/system/SideThread.h"

class QDBusMessage;
class QDBusPendingCall;

namespace pellar {

// The toolkit's bridge to the accessibility bus. Left to itself the toolkit makes it with the first widget
// that is shown, connects to the bus whether somebody listens or not, asks about that then and never again,
// waits up to half a minute for a bus that hangs, and keeps to a bus that has ended. So it is made here,
// asleep, and woken for the bus that there is while somebody listens. Main thread only.
class AtSpiBridge {
 public:
  // Makes the bridge, once a process. Before any widget is shown.
  explicit AtSpiBridge(MainLoop& loop);
  AtSpiBridge(const AtSpiBridge&) = delete;
  AtSpiBridge& operator=(const AtSpiBridge&) = delete;

  // Whether there is a session bus on which somebody could ask for it; else it sleeps for good.
  [[nodiscard]] static bool canWake() { return toolkit != nullptr; }

  // Goes to the accessibility bus that there is, as soon as that and its registry answer.
  void wake();
  // Tells nothing more. The connection stays, without any traffic of its own.
  void sleep();

 private:
  using Receive = std::function<void(const QDBusMessage& answer)>;

  [[nodiscard]] bool isIntroduced() const;
  void findBus();
  void connectWhenAnswered(const QString& address);
  void connectTo(const QString& address);
  void introduce(const QString& address);
  void introduceAgain();
  void followListeners();
  void whenRegistryAnswers(const std::function<void()>& then);
  // Calls it with the answer, unless that is an error.
  void receive(const QDBusPendingCall& call, Receive receive);

  // The toolkit's object that connects it to the bus; null where it is not to be woken.
  static inline QObject* toolkit = nullptr;

  MainLoop& loop_;
  bool wanted_ = false;
  bool introduced_ = false;  // the toolkit knows of the connection that there is, and the registry of it
  QTimer listeners_;         // runs for a turn when the registry has others who listen
  AtSpiDoor door_;
  QObject answers_;    // none is received once it is gone
  SideThread thread_;  // a bus may hang
  Alive alive_;
};

}  // namespace pellar
