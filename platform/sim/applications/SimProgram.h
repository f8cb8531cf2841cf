#pragma once

#include "platform/Application.h"

namespace pellar {

// The process that the program runs in. A story that sees it terminated drops the program.
class SimProgram final : public Application {
 public:
  void terminate() override { terminated_ = true; }
  [[nodiscard]] bool terminated() const { return terminated_; }

 private:
  bool terminated_ = false;
};

}  // namespace pellar
