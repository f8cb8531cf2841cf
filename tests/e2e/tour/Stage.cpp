#include "tests/e2e/tour/Stage.h"

#include <algorithm>
#include <stdexcept>

namespace pellar::e2e {

namespace {

struct Document {
  const char* name;
  const char* text;
  Box place;  // the frame's corner, the window's own size
};

constexpr Box firstPlace{60, 110, 1000, 440};
constexpr Box secondPlace{110, 170, 1000, 440};
constexpr Box thirdPlace{160, 230, 1000, 440};
constexpr Document documentsToOpen[] = {
    {"report.txt", "Quarterly report\n\nSales rose in all regions.\nThe figures are in budget.txt.\n",
     firstPlace},
    {"plan.txt", "Plan\n\n1. Collect the figures.\n2. Write the report.\n3. Send it on Friday.\n",
     secondPlace},
    {"budget.txt", "Budget\n\nTravel      1200\nPrinting     350\nTraining    2400\n", thirdPlace},
};

constexpr std::uint32_t background = 0x4f6d7a;

}  // namespace

Stage::Stage(std::string pellarProgram)
    : pellarProgram_(std::move(pellarProgram)), desktop_(WindowManager::openbox), strip_(desktop_) {
  paintBackground();
  openTerminal();
  openDocuments();
}

void Stage::paintBackground() {
  auto* connection = observer().connection();
  xcb_change_window_attributes(connection, observer().root(), XCB_CW_BACK_PIXEL, &background);
  xcb_clear_area(connection, 0, observer().root(), 0, 0, 0, 0);
  observer().fence();
}

void Stage::openTerminal() {
  shell_ = desktop_.start({"xterm", "-geometry", "80x14+760+610", "-fa", "DejaVu Sans Mono", "-fs", "10",
                           "-T", "Terminal", "-e", "sh", "-c", "cd && PS1='$ ' exec sh"},
                          "xterm");
  terminal_ = desktop_.waitForWindow("Terminal");
  placeOfTerminal_ = desktop_.frame(terminal_);
}

void Stage::openDocuments() {
  desktop_.folders().write(desktop_.folders().config() / "mimeapps.list",
                           "[Default Applications]\ntext/plain=org.xfce.mousepad.desktop\n");
  std::vector<std::string> command{"mousepad", "--disable-server", "--opening-mode=window"};
  for (const auto& document : documentsToOpen) {
    const auto file = desktop_.folders().home() / document.name;
    desktop_.folders().write(file, document.text);
    command.push_back(file.string());
  }
  editor_ = desktop_.start(command, "mousepad");
  for (const auto& document : documentsToOpen) {
    const auto window = desktop_.waitForWindow(document.name);
    desktop_.resize(window, document.place.width, document.place.height);
    desktop_.move(window, document.place.x, document.place.y);
    documents_.push_back(window);
  }
  orderDocumentsAsOpened();
}

void Stage::orderDocumentsAsOpened() {
  // Which document the editor opens first is its own choice.
  const auto opened = observer().clients();
  std::ranges::sort(documents_, {}, [&](Window window) { return std::ranges::find(opened, window.id); });
}

void Stage::startPellar() {
  // Nobody has accepted the terms yet. A tour asks no web site.
  desktop_.folders().write(desktop_.folders().stateFile(), R"({"settings":{"autoUpdateCheck":false}})");
  pellar_ = desktop_.start({pellarProgram_}, "pellar");
}

void Stage::startPellarAgain() {
  const auto second = desktop_.start({pellarProgram_}, "second");
  const auto ending = second->waitForEnd();
  if (!ending || ending->exitCode != 0) throw std::runtime_error("a second start does not end as it should");
}

void Stage::endPellar() {
  if (!pellar_) throw std::runtime_error("Pellar is not running");
  const auto ending = pellar_->end();
  if (ending.exitCode != 0) {
    throw std::runtime_error("Pellar did not end in order: " +
                             (ending.signal ? "signal " + std::to_string(*ending.signal)
                                            : "exit code " + std::to_string(ending.exitCode.value_or(-1))));
  }
  if (!complaints().empty()) throw std::runtime_error("Pellar complained: " + complaints());
  pellar_.reset();
}

std::string Stage::titleOf(Window window) {
  auto title = observer().text(window.id, "_NET_WM_NAME");
  return title.empty() ? observer().text(window.id, "WM_NAME") : title;
}

std::string Stage::seen() {
  const auto place = strip_.box();
  if (!place) return "no strip";
  const Window front{observer().activeWindow()};
  const auto where = "strip at " + describe(*place) + (strip_.isOver(front) ? " on \"" : " but not on \"") +
                     titleOf(front) + "\", ";
  // A tab in the hand lies over the others, so there is no counting them.
  if (const auto marker = strip_.dropMarker())
    return where + "a tab to be dropped at " + std::to_string(*marker);
  const auto tabs = strip_.tabs();
  const auto active = strip_.activeTab();
  return where + std::to_string(tabs.size()) + (tabs.size() == 1 ? " tab" : " tabs") +
         (active ? ", number " + std::to_string(*active + 1) + " active" : ", none active");
}

}  // namespace pellar::e2e
