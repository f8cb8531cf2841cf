#pragma once

#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/linux/applications/X11Applications.h"
#include "platform/linux/applications/X11CloseQuestions.h"
#include "platform/linux/applications/X11FrameWriter.h"
#include "platform/linux/applications/X11Rest.h"
#include "platform/linux/documents/WindowDocuments.h"
#include "platform/linux/menus/AtSpiMenus.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Density.h"
#include "platform/linux/x11/X11Mirror.h"

namespace pellar {

class MainLoop;

// The Accessibility port over the window manager's vocabulary. Reads are answered by the mirror, except of a
// window's document and of menus, which other programs are asked for.
class X11Accessibility final : public Accessibility {
 public:
  X11Accessibility(X11Connection& connection, X11Mirror& mirror, const X11Density& density,
                   X11Applications& applications, const X11ScreenList& screens, MainLoop& loop);
  ~X11Accessibility() override;

  [[nodiscard]] bool isTrusted() const override { return true; }
  bool isTrustedPromptingUser() override { return true; }
  [[nodiscard]] Element applicationElement(ProcessId pid) override;
  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override;
  void set(const Element& element, std::string_view name, const AttributeValue& value) override;
  Performed perform(const Element& element, std::string_view action) override;
  // The mirror always answers.
  [[nodiscard]] std::uint64_t unansweredReads() const override { return 0; }
  // Looks the documents of windows up together; no other read of a window asks anybody.
  void willRead(std::span<const Element> elements, std::span<const std::string_view> attributes) override;
  [[nodiscard]] std::unique_ptr<ElementObserver> observe(ProcessId pid,
                                                         std::function<void()> onNotification) override;
  [[nodiscard]] Subscription onceAtRest(const Element& window, std::function<void()> callback) override;

  // What the mirror has taken in.
  void note(const X11Mirror::Changes& changes) {
    rest_.note(changes);
    questions_.note(changes);
  }
  // Makes a window the active one, in front of the others and not minimised.
  void activateWindow(xcb_window_t window);
  // Called before each of them.
  std::function<void()> onActivating;

 private:
  struct Watch;
  class Observer;
  // Made the main one by hand, which lasts until the user goes to another window.
  struct MainWindow {
    xcb_window_t window = XCB_WINDOW_NONE;
    std::uint64_t activationCount = 0;  // at that time
  };

  [[nodiscard]] std::optional<AttributeValue> applicationAttribute(const X11Application& application,
                                                                   std::string_view name);
  [[nodiscard]] std::optional<AttributeValue> windowAttribute(xcb_window_t id, std::string_view name);
  void setMinimized(const X11Window& window, bool minimized);
  [[nodiscard]] std::optional<AttributeValue> document(const X11Window& window);
  [[nodiscard]] bool mayHaveDocument(const X11Window& window) const;
  [[nodiscard]] std::optional<AttributeValue> menuBar(const X11Application& application);
  // The window that the application's menu bar acts on: the one made so last, or else the one used last.
  [[nodiscard]] xcb_window_t mainWindow(const X11Application& application) const;
  void notify(const std::set<ProcessId>& pids);

  X11Connection& connection_;
  X11Mirror& mirror_;
  const X11Density& density_;
  X11Applications& applications_;
  MainLoop& loop_;
  X11FrameWriter frames_;
  X11Rest rest_;
  X11CloseQuestions questions_;
  AtSpiMenus menus_;
  WindowDocuments documents_;
  MainWindow main_;
  std::vector<std::weak_ptr<Watch>> watches_;
};

}  // namespace pellar
