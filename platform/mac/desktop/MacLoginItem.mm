#include "platform/mac/desktop/MacLoginItem.h"

#import <ServiceManagement/ServiceManagement.h>

#include "platform/mac/system/Conversions.h"

namespace pellar {

bool MacLoginItem::isEnabled() const {
  return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
}

std::optional<std::string> MacLoginItem::setEnabled(bool enabled) {
  SMAppService* service = SMAppService.mainAppService;
  NSError* error = nil;
  const BOOL done =
      enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
  if (done) return std::nullopt;
  return error != nil ? fromNSString(error.description) : "the system does not say why";
}

}  // namespace pellar
