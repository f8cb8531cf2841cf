#pragma once

#include "platform/Application.h"

namespace pellar {

// The process that the program runs in. A story that sees it terminated drops the program.
class SimProgram final : public Application {
 public:
  void terminate() override { ++terminations_; }
  [[nodiscard]] bool terminated() const { return terminations_ > 0; }
  // How often it was asked to end.
  [[nodiscard]] int terminations() const { return terminations_; }

 private:
  int terminations_ = 0;
};

}  // namespace pellar
