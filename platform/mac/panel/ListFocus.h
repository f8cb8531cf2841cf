#pragma once

#import <AppKit/AppKit.h>

namespace pellar {

class MacListView;

// Which list has the keys of the key panel, if any: a panel that cannot become key gets none by itself, and
// the panel with the search field must stay key. One for all panels of a program. AppKit knows the rest:
// which window is key, and which field is its first responder.
class ListFocus {
 public:
  ListFocus() = default;
  ~ListFocus();
  ListFocus(const ListFocus&) = delete;
  ListFocus& operator=(const ListFocus&) = delete;

  void give(MacListView& list);
  // The keys go where the key panel sends them.
  void end();
  // The same, if the list is in that window.
  void endIn(NSWindow* window);
  [[nodiscard]] bool isAt(const MacListView& list) const { return list_ == &list; }

 private:
  // The event, or nil when it is dealt with.
  NSEvent* filter(NSEvent* event);

  MacListView* list_ = nullptr;
  id monitor_ = nil;  // while a list has the keys
};

}  // namespace pellar
