#include "platform/mac/applications/MacWorkspace.h"

#include <utility>

#include "platform/mac/system/Conversions.h"
#include "platform/mac/system/ObservedNotification.h"

namespace pellar {
namespace {

std::optional<std::string> optionalText(NSString* text) {
  if (text == nil) return std::nullopt;
  return fromNSString(text);
}

ActivationPolicy policyOf(NSRunningApplication* application) {
  switch (application.activationPolicy) {
    case NSApplicationActivationPolicyRegular:
      return ActivationPolicy::regular;
    case NSApplicationActivationPolicyAccessory:
      return ActivationPolicy::accessory;
    case NSApplicationActivationPolicyProhibited:
      return ActivationPolicy::prohibited;
  }
  return ActivationPolicy::prohibited;
}

// The process that a notification of the workspace is about.
std::optional<ProcessId> processOf(NSNotification* notification) {
  const id application = notification.userInfo[NSWorkspaceApplicationKey];
  if (![application isKindOfClass:NSRunningApplication.class]) return std::nullopt;
  return static_cast<NSRunningApplication*>(application).processIdentifier;
}

NSURL* fileUrl(const std::string& path) {
  return [NSURL fileURLWithPath:toNSString(path)];
}

// Not -openURL:, which keeps a failure from the user; this shows the system's own message.
void openWithOwner(NSURL* url) {
  [NSWorkspace.sharedWorkspace openURL:url
                         configuration:[NSWorkspaceOpenConfiguration configuration]
                     completionHandler:nil];
}

}  // namespace

std::optional<RunningApplication> MacWorkspace::frontmostApplication() const {
  NSRunningApplication* application = NSWorkspace.sharedWorkspace.frontmostApplication;
  if (application == nil) return std::nullopt;
  return RunningApplication{.pid = application.processIdentifier,
                            .bundleId = optionalText(application.bundleIdentifier),
                            .localizedName = optionalText(application.localizedName),
                            .policy = policyOf(application)};
}

std::optional<std::string> MacWorkspace::ownBundleId() const {
  return optionalText(NSBundle.mainBundle.bundleIdentifier);
}

// From macOS 14 on this is a request that the system may refuse; applications that never become regular ones
// were seen to be heard (github.com/josejuanqm/docky/pull/60). A window raised before is in front either way.
// Since macOS 11 the application's other windows may come along (Apple Developer Forums, thread 668913); the
// public interface has no way to leave them where they are.
void MacWorkspace::activate(ProcessId pid) {
  [[NSRunningApplication runningApplicationWithProcessIdentifier:pid]
      activateWithOptions:NSApplicationActivationOptions{}];
}

// Since macOS 14 activation is cooperative, and -activate the call for it. Alone it may be declined without a
// word, and the window stays behind the application in front, where the old call is still heard
// (github.com/feedback-assistant/reports/issues/422, github.com/openjdk/jfx/pull/1685). On macOS 27 both ask
// for the same (github.com/matplotlib/matplotlib/pull/31176).
void MacWorkspace::activateIgnoringOtherApps() {
  NSApplication* application = NSApplication.sharedApplication;
  if (@available(macOS 14, *)) [application activate];
  [application activateIgnoringOtherApps:YES];
}

void MacWorkspace::open(const std::string& path) {
  openWithOwner(fileUrl(path));
}

void MacWorkspace::openUrl(const std::string& url) {
  NSURL* native = [NSURL URLWithString:toNSString(url)];
  if (native != nil) openWithOwner(native);
}

std::optional<std::string> MacWorkspace::displayName(const std::string& bundleId) const {
  NSURL* place = [NSWorkspace.sharedWorkspace URLForApplicationWithBundleIdentifier:toNSString(bundleId)];
  NSString* path = place.path;
  if (path == nil) return std::nullopt;
  return fromNSString([NSFileManager.defaultManager displayNameAtPath:path]);
}

bool MacWorkspace::isRunning(const std::string& bundleId) const {
  return [NSRunningApplication runningApplicationsWithBundleIdentifier:toNSString(bundleId)].count > 0;
}

void MacWorkspace::activateFileViewerSelecting(const std::string& path) {
  [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ fileUrl(path) ]];
}

Subscription MacWorkspace::onActivated(std::function<void()> callback) {
  return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                             NSWorkspaceDidActivateApplicationNotification, nil,
                             [callback = std::move(callback)](NSNotification*) { callback(); });
}

Subscription MacWorkspace::onLaunched(std::function<void(ProcessId)> callback) {
  return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                             NSWorkspaceDidLaunchApplicationNotification, nil,
                             [callback = std::move(callback)](NSNotification* notification) {
                               if (const auto pid = processOf(notification)) callback(*pid);
                             });
}

Subscription MacWorkspace::onActiveSpaceChanged(std::function<void()> callback) {
  return observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                             NSWorkspaceActiveSpaceDidChangeNotification, nil,
                             [callback = std::move(callback)](NSNotification*) { callback(); });
}

Subscription MacWorkspace::onTerminated(std::function<void(std::optional<ProcessId>)> callback) {
  return observeNotification(
      NSWorkspace.sharedWorkspace.notificationCenter, NSWorkspaceDidTerminateApplicationNotification, nil,
      [callback = std::move(callback)](NSNotification* notification) { callback(processOf(notification)); });
}

}  // namespace pellar
