#include "platform/mac/panel/ListFocus.h"

#include "platform/mac/panel/MacListView.h"
#import "platform/mac/panel/StripPanel.h"

namespace pellar {

ListFocus::~ListFocus() {
  end();
}

void ListFocus::give(MacListView& list) {
  MacListView* before = list_;
  list_ = &list;
  if (before != nullptr && before != list_) before->showFocus();
  list.showFocus();
  if (monitor_ != nil) return;
  // Seen before the key panel's field gets them.
  monitor_ = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown | NSEventMaskLeftMouseDown
                                                   handler:^NSEvent*(NSEvent* event) {
                                                     return filter(event);
                                                   }];
}

void ListFocus::end() {
  if (monitor_ != nil) [NSEvent removeMonitor:monitor_];
  monitor_ = nil;
  MacListView* list = list_;
  list_ = nullptr;
  if (list != nullptr) list->showFocus();
}

void ListFocus::endIn(NSWindow* window) {
  if (list_ != nullptr && list_->window() == window) end();
}

NSEvent* ListFocus::filter(NSEvent* event) {
  if (list_ == nullptr) return event;
  if (event.type == NSEventTypeLeftMouseDown) {
    if (event.window != list_->window()) end();
    return event;
  }
  // An alert's field keeps its keys.
  if (![event.window isKindOfClass:StripPanel.class]) return event;
  // The list may be gone afterwards.
  if (list_->takeKey(event.keyCode)) return nil;
  end();
  return event;
}

}  // namespace pellar
