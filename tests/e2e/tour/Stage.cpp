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

// Of a screen at 100 %.
constexpr int screenWidth = 1440;
constexpr int screenHeight = 900;

constexpr std::uint32_t background = 0x4f6d7a;
constexpr std::uint32_t secondBackground = 0x6b6479;

}  // namespace

Stage::Stage(std::string pellarProgram, int scale)
    : pellarProgram_(std::move(pellarProgram)),
      scale_(scale),
      desktop_(WindowManager::openbox, screenWidth * scale, screenHeight * scale),
      strip_(desktop_) {
  strip_.setScale(scale);
  if (scale > 1) desktop_.setFontDots(std::to_string(96 * scale));
  paintBackground();
  makeEditorPlain();
  openTerminal();
  // It reads the dots of its titles' font when it starts.
  if (scale > 1) desktop_.restartWindowManager();
  openDocuments();
}

void Stage::paintBackground() {
  auto* connection = observer().connection();
  xcb_change_window_attributes(connection, observer().root(), XCB_CW_BACK_PIXEL, &background);
  xcb_clear_area(connection, 0, observer().root(), 0, 0, 0, 0);
  observer().fence();
}

// With the scale that desktops tell their GTK programs. It enlarges text too, which the dots of the fonts
// have done already.
std::unique_ptr<Process> Stage::start(const std::vector<std::string>& command, const std::string& name) {
  auto variables = desktop_.environment();
  variables["GSETTINGS_BACKEND"] = "keyfile";
  if (scale_ > 1) {
    variables["GDK_SCALE"] = std::to_string(scale_);
    variables["GDK_DPI_SCALE"] = std::to_string(1.0 / scale_);
  }
  return std::make_unique<Process>(command, variables, desktop_.folders().root() / (name + ".errors"));
}

// Run by root, the editor warns in every window, in a label that nothing but a style can take away.
void Stage::makeEditorPlain() {
  desktop_.folders().write(desktop_.folders().config() / "gtk-3.0" / "gtk.css",
                           "window:not(.dialog) > * > * > label, window:not(.dialog) > * > * > separator {\n"
                           "  background: none; color: transparent; font-size: 1px; min-height: 0;\n"
                           "}\n");
  // The whole path in a title would be that of a folder made for one tour.
  desktop_.folders().write(desktop_.folders().config() / "glib-2.0" / "settings" / "keyfile",
                           "[org/xfce/mousepad/preferences/window]\npath-in-title=false\n");
}

void Stage::addMonitor() {
  const auto half = static_cast<std::uint16_t>(screenWidth * scale_ / 2);
  const auto height = static_cast<std::uint16_t>(screenHeight * scale_);
  const auto size = std::to_string(half) + "/190x" + std::to_string(height) + "/240+";
  desktop_.run({"xrandr", "--setmonitor", "left", size + "0+0", "screen"});
  desktop_.run({"xrandr", "--setmonitor", "right", size + std::to_string(half) + "+0", "none"});

  auto* connection = observer().connection();
  const auto root = observer().root();
  const auto pixmap = xcb_generate_id(connection);
  const auto pen = xcb_generate_id(connection);
  constexpr int depth = 24;
  xcb_create_pixmap(connection, depth, pixmap, root, static_cast<std::uint16_t>(2 * half), height);
  xcb_create_gc(connection, pen, pixmap, XCB_GC_FOREGROUND, &background);
  const xcb_rectangle_t left{0, 0, half, height};
  xcb_poly_fill_rectangle(connection, pixmap, pen, 1, &left);
  xcb_change_gc(connection, pen, XCB_GC_FOREGROUND, &secondBackground);
  const xcb_rectangle_t right{static_cast<std::int16_t>(half), 0, half, height};
  xcb_poly_fill_rectangle(connection, pixmap, pen, 1, &right);
  xcb_change_window_attributes(connection, root, XCB_CW_BACK_PIXMAP, &pixmap);
  xcb_clear_area(connection, 0, root, 0, 0, 0, 0);
  xcb_free_gc(connection, pen);
  xcb_free_pixmap(connection, pixmap);
  observer().fence();
}

void Stage::openTerminal() {
  const auto corner = "+" + std::to_string(760 * scale_) + "+" + std::to_string(610 * scale_);
  shell_ = start({"xterm", "-geometry", "80x14" + corner, "-fa", "DejaVu Sans Mono", "-fs", "10", "-T",
                  "Terminal", "-e", "sh", "-c", "cd && PS1='$ ' exec sh"},
                 "xterm");
  terminal_ = desktop_.waitForWindow("Terminal");
  placeOfTerminal_ = desktop_.frame(terminal_);
}

void Stage::openDocuments() {
  desktop_.folders().write(desktop_.folders().config() / "mimeapps.list",
                           "[Default Applications]\ntext/plain=org.xfce.mousepad.desktop\n");
  std::vector<std::string> command{"mousepad", "--disable-server", "--opening-mode=window"};
  for (const auto& document : documentsToOpen) {
    const auto file = desktop_.folders().home() / "Documents" / document.name;
    desktop_.folders().write(file, document.text);
    command.push_back(file.string());
  }
  editor_ = start(command, "mousepad");
  for (const auto& document : documentsToOpen) {
    const auto window = desktop_.waitForWindow(document.name);
    desktop_.resize(window, document.place.width * scale_, document.place.height * scale_);
    desktop_.move(window, document.place.x * scale_, document.place.y * scale_);
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
  pellar_ = start({pellarProgram_}, "pellar");
}

void Stage::startPellarAgain() {
  const auto second = start({pellarProgram_}, "second");
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
  auto where = "strip at " + describe(*place);
  if (strip_.isOver(front)) {
    where += " on \"" + titleOf(front) + "\", ";
  } else {
    const auto below = std::ranges::find_if(documents_, [&](Window window) { return strip_.isOver(window); });
    where += below == documents_.end() ? " on no document" : " on \"" + titleOf(*below) + "\"";
    where += " with \"" + titleOf(front) + "\" in front, ";
  }
  // A tab in the hand lies over the others, so there is no counting them.
  if (const auto marker = strip_.dropMarker())
    return where + "a tab to be dropped at " + std::to_string(*marker);
  const auto tabs = strip_.tabs();
  const auto active = strip_.activeTab();
  return where + std::to_string(tabs.size()) + (tabs.size() == 1 ? " tab" : " tabs") +
         (active ? ", number " + std::to_string(*active + 1) + " active" : ", none active");
}

}  // namespace pellar::e2e
