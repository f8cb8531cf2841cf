#include "platform/mac/desktop/MacLoginItem.h"

#import <ServiceManagement/ServiceManagement.h>

#include "platform/mac/system/Conversions.h"

namespace pellar {

LoginItemStatus MacLoginItem::status() const {
  switch (SMAppService.mainAppService.status) {
    case SMAppServiceStatusNotRegistered:
      return LoginItemStatus::notRegistered;
    case SMAppServiceStatusEnabled:
      return LoginItemStatus::enabled;
    case SMAppServiceStatusRequiresApproval:
      return LoginItemStatus::requiresApproval;
    case SMAppServiceStatusNotFound:
      return LoginItemStatus::notFound;
  }
  return LoginItemStatus::notFound;
}

std::optional<std::string> MacLoginItem::setEnabled(bool enabled) {
  SMAppService* service = SMAppService.mainAppService;
  NSError* error = nil;
  const BOOL done =
      enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
  if (done) return std::nullopt;
  return error != nil ? fromNSString(error.description) : "the system does not say why";
}

void MacLoginItem::openSettings() {
  [SMAppService openSystemSettingsLoginItems];
}

}  // namespace pellar
