#include "tests/e2e/Tray.h"

#include <stdexcept>

namespace pellar::e2e {

Tray::Tray(Desktop& desktop) : desktop_(desktop) {
  desktop.openSessionBus();
  restart();
}

void Tray::restart() {
  process_.reset();
  process_ = desktop_.start({builtProgram("e2e_tray")}, "tray");
  if (process_->readLine() != "ready") throw std::runtime_error("no tray: " + process_->errors());
}

void Tray::waitForItem() {
  desktop_.observer().waitUntil("Pellar's item is in the tray", [this] { return item() != Rows{"no item"}; });
}

void Tray::choose(const std::string& titles) {
  if (const auto answer = ask("choose " + titles); !answer.empty()) throw std::runtime_error(answer.front());
}

Tray::Rows Tray::ask(const std::string& command) {
  process_->write(command);
  Rows rows;
  for (;;) {
    auto line = process_->readLine();
    if (line == "end") return rows;
    rows.push_back(std::move(line));
  }
}

}  // namespace pellar::e2e
