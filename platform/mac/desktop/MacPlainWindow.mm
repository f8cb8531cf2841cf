#include "platform/mac/desktop/MacPlainWindow.h"

#include <chrono>
#include <memory>
#include <utility>
#include <vector>

#include "core/CutText.h"
#include "platform/mac/system/Conversions.h"
#include "platform/mac/system/NextTurn.h"

namespace {

using Callback = std::shared_ptr<std::function<void()>>;

bool isDefault(NSButton* button) {
  return [button.keyEquivalent isEqual:@"\r"];
}

}  // namespace

// Tells when the user closes a window; -close of the program's own asks no delegate whether it may.
@interface WindowCloseObserver : NSObject <NSWindowDelegate>

- (instancetype)initWithLoop:(pellar::MainLoop*)loop;
- (void)add:(Callback)callback;
- (void)remove:(const Callback&)callback;

@end

@implementation WindowCloseObserver {
  pellar::MainLoop* _loop;
  std::vector<Callback> _callbacks;
}

- (instancetype)initWithLoop:(pellar::MainLoop*)loop {
  self = [super init];
  if (self != nil) _loop = loop;
  return self;
}

- (void)add:(Callback)callback {
  _callbacks.push_back(std::move(callback));
}

// Empties the callback too, which may be on its way.
- (void)remove:(const Callback&)callback {
  *callback = nullptr;
  std::erase(_callbacks, callback);
}

- (BOOL)windowShouldClose:(NSWindow*)window {
  for (const auto& callback : _callbacks) {
    _loop->post([callback] {
      // The callback may end its own registration.
      if (const auto running = *callback) running();
    });
  }
  return YES;
}

@end

// A window whose default button no key presses for a while, and where Return presses the button that has the
// keyboard.
@interface RestingWindow : NSWindow

- (void)restDefaultButtonFor:(NSTimeInterval)seconds;

@end

@implementation RestingWindow {
  NSTimeInterval _rest;
  NSTimeInterval _since;  // of the system's uptime: when it got the keyboard; 0 until then
}

- (void)restDefaultButtonFor:(NSTimeInterval)seconds {
  _rest = seconds;
  _since = self.keyWindow ? NSProcessInfo.processInfo.systemUptime : 0;
}

- (void)becomeKeyWindow {
  [super becomeKeyWindow];
  if (_since == 0) _since = NSProcessInfo.processInfo.systemUptime;
}

- (BOOL)restsFrom:(NSEvent*)event {
  return event.timestamp < _since + _rest;
}

// Return is the default button's wherever the keyboard is.
- (BOOL)performKeyEquivalent:(NSEvent*)event {
  const bool isReturn = event.type == NSEventTypeKeyDown && [event.charactersIgnoringModifiers isEqual:@"\r"];
  if (!isReturn) return [super performKeyEquivalent:event];
  NSButton* focused = self.focusedButton;
  if (focused != nil && focused.bezelStyle == NSBezelStyleRounded && !isDefault(focused)) {
    [focused performClick:nil];
    return YES;
  }
  return [self restsFrom:event] || [super performKeyEquivalent:event];
}

- (void)sendEvent:(NSEvent*)event {
  const bool pressesDefault = event.type == NSEventTypeKeyDown && isDefault(self.focusedButton);
  // Tab goes on.
  if (pressesDefault && [self restsFrom:event] && ![event.characters isEqual:@"\t"]) return;
  [super sendEvent:event];
}

- (NSButton*)focusedButton {
  return [self.firstResponder isKindOfClass:NSButton.class] ? (NSButton*)self.firstResponder : nil;
}

@end

namespace pellar {

static_assert(static_cast<NSInteger>(WindowLevel::modalPanel) == NSModalPanelWindowLevel);

namespace {

RestingWindow* makeWindow(const WindowDescription& description) {
  const NSRect content = NSMakeRect(0, 0, description.contentSize.width, description.contentSize.height);
  NSWindowStyleMask style = NSWindowStyleMaskTitled;
  if (description.closable) style |= NSWindowStyleMaskClosable;
  return [[RestingWindow alloc] initWithContentRect:content
                                          styleMask:style
                                            backing:NSBackingStoreBuffered
                                              defer:NO];
}

}  // namespace

MacPlainWindow::MacPlainWindow(MainLoop& loop, const WindowDescription& description)
    : native_(makeWindow(description)),
      closing_([[WindowCloseObserver alloc] initWithLoop:&loop]),
      labels_([[WindowLabels alloc] init]) {
  // ARC owns it; a window made in code is released by its own closing otherwise.
  native_.releasedWhenClosed = NO;
  native_.title = drawnText(CutText::atTheEnd(description.title, longestRow));
  native_.level = static_cast<NSWindowLevel>(description.level);
  // A window shown again comes up where the user is, which may be another space than before.
  native_.collectionBehavior = NSWindowCollectionBehaviorMoveToActiveSpace;
  // A user who prefers windows in tabs would get the terms as a tab of the About window.
  native_.tabbingMode = NSWindowTabbingModeDisallowed;
  native_.delegate = closing_;
  NSView* content = native_.contentView;
  if (content != nil) fillWindow(content, description, labels_);
  [native_ center];
}

// May be called inside the action of one of its buttons, which AppKit goes on with afterwards.
MacPlainWindow::~MacPlainWindow() {
  native_.delegate = nil;
  [native_ close];
  NSWindow* kept = native_;
  performNextTurn(^{
    (void)kept;
  });
}

// Key at once where this program is active, else as soon as it is. Becoming active takes a while and may be
// declined; until then only the second call gets the window before those of other applications.
void MacPlainWindow::makeKeyAndOrderFront() {
  [native_ makeKeyAndOrderFront:nil];
  [native_ orderFrontRegardless];
}

NSWindow* MacPlainWindow::native() const {
  return native_;
}

void MacPlainWindow::restDefaultButton(std::chrono::milliseconds time) {
  [native_ restDefaultButtonFor:std::chrono::duration<double>(time).count()];
}

void MacPlainWindow::close() {
  [native_ close];
}

bool MacPlainWindow::isVisible() const {
  return native_.visible;
}

void MacPlainWindow::setText(const std::string& id, const std::string& text) {
  labels_[toNSString(id)].stringValue = toNSString(CutText::atTheEnd(text, longestRow));
}

Subscription MacPlainWindow::onClosed(std::function<void()> callback) {
  const auto kept = std::make_shared<std::function<void()>>(std::move(callback));
  [closing_ add:kept];
  WindowCloseObserver* closing = closing_;
  return Subscription([closing, kept] { [closing remove:kept]; });
}

}  // namespace pellar
