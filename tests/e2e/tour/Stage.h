#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/Desktop.h"
#include "tests/e2e/Strip.h"

namespace pellar::e2e {

// A private desktop as somebody works on it: a GTK editor with three documents, each in a window of its own,
// and a terminal beside them. Pellar is started by the first step, as if never before. All of it ends with
// this object.
class Stage {
 public:
  // `scale` is how many pixels a point has, on the desktop and in its programs.
  explicit Stage(std::string pellarProgram, int scale = 1);

  [[nodiscard]] Desktop& desktop() { return desktop_; }
  [[nodiscard]] XObserver& observer() { return desktop_.observer(); }
  [[nodiscard]] Strip& strip() { return strip_; }
  [[nodiscard]] Window terminal() const { return terminal_; }
  // Its frame at the beginning.
  [[nodiscard]] Box placeOfTerminal() const { return placeOfTerminal_; }
  // The editor's windows in the order of their tabs. The steps that change this order change it here too.
  [[nodiscard]] std::vector<Window>& documents() { return documents_; }
  // Tabs stand in the order in which the windows were opened until a user moves them, and again when the
  // editor comes back to the front.
  void orderDocumentsAsOpened();

  // Splits the screen into two monitors beside each other, each with a background of its own.
  void addMonitor();

  void startPellar();
  // The program a second time, which has the first one open its menu, and ends.
  void startPellarAgain();
  // Ends Pellar as a session does at log-out. Throws unless it went in order and had nothing to complain
  // about.
  void endPellar();
  // Pellar itself, while it runs.
  [[nodiscard]] const Process& pellar() const { return *pellar_; }
  // What Pellar wrote to standard error so far; empty too when it was never started.
  [[nodiscard]] std::string complaints() const { return pellar_ ? pellar_->errors() : std::string(); }

  // One sentence about what is on the screen now: where the strip is, over what, with which tabs.
  [[nodiscard]] std::string seen();
  [[nodiscard]] std::string titleOf(Window window);

 private:
  std::unique_ptr<Process> start(const std::vector<std::string>& command, const std::string& name);
  void paintBackground();
  void makeEditorPlain();
  void openDocuments();
  void openTerminal();

  std::string pellarProgram_;
  int scale_;
  Desktop desktop_;
  Strip strip_;
  std::unique_ptr<Process> editor_;
  std::unique_ptr<Process> shell_;
  std::unique_ptr<Process> pellar_;
  std::vector<Window> documents_;
  Window terminal_;
  Box placeOfTerminal_;
};

}  // namespace pellar::e2e
