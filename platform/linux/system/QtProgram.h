#pragma once

#include <QCoreApplication>

#include "platform/Application.h"

namespace pellar {

// This process and its main loop.
class QtProgram final : public Application {
 public:
  // Not quit(), which first asks every window to close: the one that an open search field stands in refuses.
  void terminate() override { QCoreApplication::exit(0); }
};

}  // namespace pellar
