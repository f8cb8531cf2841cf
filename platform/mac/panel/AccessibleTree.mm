#import "platform/mac/panel/AccessibleTree.h"

#include <utility>

#import "platform/mac/panel/HostedView.h"
#include "platform/mac/system/Conversions.h"
#include "platform/mac/system/NextTurn.h"
#include "platform/shared/panel/AccessibleChanges.h"

using pellar::AccessibleAction;
using pellar::AccessibleChange;
using pellar::AccessibleElement;
using pellar::AccessibleRole;

namespace {

NSAccessibilityRole roleOf(AccessibleRole role) {
  switch (role) {
    case AccessibleRole::tabGroup:
      return NSAccessibilityTabGroupRole;
    case AccessibleRole::tab:
      return NSAccessibilityRadioButtonRole;
    case AccessibleRole::button:
      return NSAccessibilityButtonRole;
    case AccessibleRole::checkBox:
      return NSAccessibilityCheckBoxRole;
    case AccessibleRole::text:
      return NSAccessibilityStaticTextRole;
    case AccessibleRole::group:
    case AccessibleRole::searchField:
    case AccessibleRole::list:
    case AccessibleRole::row:
      break;
  }
  return NSAccessibilityGroupRole;
}

// The control that AppKit tells by itself; nil for what the view draws.
Class controlOf(AccessibleRole role) {
  if (role == AccessibleRole::searchField) return NSSearchField.class;
  if (role == AccessibleRole::list) return NSScrollView.class;
  return nil;
}

}  // namespace

// One element that a view draws.
@interface AccessibleItem : NSAccessibilityElement
@property(nonatomic, weak) HostedView* host;
@property(nonatomic, copy) NSArray* items;  // in it
- (void)setElement:(const AccessibleElement&)element;
@end

@implementation AccessibleItem {
  AccessibleElement _element;  // without its children
}

- (void)setElement:(const AccessibleElement&)element {
  _element = element;
  _element.children.clear();
}

- (BOOL)isAccessibilityElement {
  return YES;
}

- (NSAccessibilityRole)accessibilityRole {
  return roleOf(_element.role);
}

- (NSAccessibilitySubrole)accessibilitySubrole {
  return _element.role == AccessibleRole::tab ? NSAccessibilityTabButtonSubrole : nil;
}

- (NSString*)accessibilityLabel {
  return _element.role == AccessibleRole::text ? nil : pellar::toNSString(_element.name);
}

- (NSString*)accessibilityHelp {
  return _element.help.empty() ? nil : pellar::toNSString(_element.help);
}

- (id)accessibilityValue {
  if (_element.role == AccessibleRole::text) return pellar::toNSString(_element.name);
  if (_element.role == AccessibleRole::tab) return @(_element.selected == true);
  if (_element.checked.has_value()) return @(*_element.checked);
  return nil;
}

- (BOOL)isAccessibilitySelected {
  return _element.selected == true;
}

- (BOOL)isAccessibilityEnabled {
  return YES;
}

- (NSRect)accessibilityFrame {
  HostedView* host = self.host;
  if (host.window == nil) return NSZeroRect;
  const NSRect inWindow = [host convertRect:pellar::toNSRect(_element.frame) toView:nil];
  return [host.window convertRectToScreen:inWindow];
}

- (NSArray*)accessibilityChildren {
  return self.items;
}

- (NSArray*)accessibilityTabs {
  return _element.role == AccessibleRole::tabGroup ? self.items : nil;
}

- (BOOL)isAccessibilitySelectorAllowed:(SEL)selector {
  if (selector == @selector(accessibilityPerformPress)) return _element.canBePressed;
  if (selector == @selector(accessibilityPerformShowMenu)) return _element.hasMenu;
  return [super isAccessibilitySelectorAllowed:selector];
}

- (BOOL)accessibilityPerformPress {
  return [self perform:AccessibleAction::press];
}

- (BOOL)accessibilityPerformShowMenu {
  return [self perform:AccessibleAction::showMenu];
}

- (BOOL)perform:(AccessibleAction)action {
  HostedView* host = self.host;
  if (host == nil) return NO;
  [host performSoon:action on:_element.id];
  return YES;
}

@end

@implementation AccessibleTree {
  __weak HostedView* _host;
  NSMutableDictionary<NSString*, AccessibleItem*>* _items;  // by their ids; nil until somebody asks
  AccessibleElement _told;
  BOOL _changePosted;
}

- (instancetype)initWithHost:(HostedView*)host {
  self = [super init];
  if (self != nil) _host = host;
  return self;
}

- (AccessibleElement)described {
  HostedView* host = _host;
  return host.view != nullptr && host.window.visible ? host.view->accessibleElement() : AccessibleElement();
}

// Any bytes make a key.
- (NSString*)keyOf:(const std::string&)identifier {
  return [[NSString alloc] initWithBytes:identifier.data()
                                  length:identifier.size()
                                encoding:NSISOLatin1StringEncoding];
}

- (id)controlFor:(const AccessibleElement&)element {
  HostedView* host = _host;
  for (NSView* view in host.subviews) {
    if (![view isKindOfClass:controlOf(element.role)]) continue;
    NSView* named = view;
    if ([view isKindOfClass:NSScrollView.class]) named = static_cast<NSScrollView*>(view).documentView;
    named.accessibilityLabel = pellar::toNSString(element.name);
    return NSAccessibilityUnignoredDescendant(view);
  }
  return nil;
}

// Items for these elements, those of before where they are the same; `kept` gathers all there are now.
- (NSArray*)itemsFor:(const std::vector<AccessibleElement>&)elements
                  in:(id)parent
                kept:(NSMutableDictionary<NSString*, AccessibleItem*>*)kept {
  NSMutableArray* items = [NSMutableArray array];
  for (const AccessibleElement& element : elements) {
    if (controlOf(element.role) != nil) {
      id control = [self controlFor:element];
      if (control != nil) [items addObject:control];
      continue;
    }
    NSString* key = [self keyOf:element.id];
    AccessibleItem* item = _items[key];
    if (item == nil) item = [[AccessibleItem alloc] init];
    kept[key] = item;
    item.host = _host;
    [item setElement:element];
    [item setAccessibilityParent:parent];
    item.items = [self itemsFor:element.children in:item kept:kept];
    [items addObject:item];
  }
  return items;
}

- (NSArray*)take:(AccessibleElement)described {
  NSMutableDictionary<NSString*, AccessibleItem*>* kept = [NSMutableDictionary dictionary];
  NSArray* top = [self itemsFor:described.children in:_host kept:kept];
  _items = kept;
  _told = std::move(described);
  return top;
}

- (NSArray*)children {
  return [self take:[self described]];
}

- (id)elementAt:(NSPoint)point {
  NSArray* level = [self children];
  id found = nil;
  while (level != nil) {
    NSArray* inside = nil;
    for (id element in level) {
      if (!NSPointInRect(point, [element accessibilityFrame])) continue;
      found = element;
      inside = [element isKindOfClass:AccessibleItem.class] ? [element accessibilityChildren] : nil;
      break;
    }
    level = inside;
  }
  return found;
}

- (void)noteChange {
  if (_items == nil || std::exchange(_changePosted, YES)) return;
  __weak AccessibleTree* tree = self;
  pellar::performNextTurn(^{
    [tree tellChanges];
  });
}

- (void)tellChanges {
  _changePosted = NO;
  const AccessibleElement before = _told;
  NSDictionary<NSString*, AccessibleItem*>* itemsBefore = _items;
  [self take:[self described]];
  for (const AccessibleChange& change : pellar::accessibleChanges(before, _told)) {
    NSString* key = [self keyOf:change.element.id];
    using Kind = AccessibleChange::Kind;
    switch (change.kind) {
      case Kind::vanished:
        [self post:NSAccessibilityUIElementDestroyedNotification of:itemsBefore[key]];
        break;
      case Kind::appeared:
        [self post:NSAccessibilityLayoutChangedNotification of:_host];
        break;
      case Kind::name:
        [self post:NSAccessibilityTitleChangedNotification of:_items[key]];
        break;
      case Kind::selected:
        [self post:NSAccessibilityValueChangedNotification of:_items[key]];
        if (change.element.selected == true)
          [self post:NSAccessibilitySelectedChildrenChangedNotification of:_items[key].accessibilityParent];
        break;
      case Kind::checked:
        [self post:NSAccessibilityValueChangedNotification of:_items[key]];
        break;
      case Kind::help:
      case Kind::focused:
        break;
    }
  }
}

- (void)post:(NSAccessibilityNotificationName)notification of:(id)element {
  if (element != nil) NSAccessibilityPostNotification(element, notification);
}

@end
