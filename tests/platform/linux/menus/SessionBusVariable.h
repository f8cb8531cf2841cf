#pragma once

#include <cstdlib>

#include "tests/platform/linux/SharedDesktop.h"

namespace pellar::contract {

// A world on a desktop with a session bus; the adapter, which is part of this process, is told of it.
class SessionBusVariable {
 public:
  SessionBusVariable() {
    e2e::Desktop& desktop = SharedDesktop::get();
    desktop.openSessionBus();
    setenv(variable, desktop.environment().at(variable).c_str(), 1);
  }
  ~SessionBusVariable() { setenv(variable, "disabled:", 1); }
  SessionBusVariable(const SessionBusVariable&) = delete;
  SessionBusVariable& operator=(const SessionBusVariable&) = delete;

 private:
  static constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
};

}  // namespace pellar::contract
