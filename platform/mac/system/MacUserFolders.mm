#include "platform/mac/system/MacUserFolders.h"

#include "core/FileOperations.h"
#include "platform/mac/system/Conversions.h"

namespace pellar {

UserFolders macUserFolders() {
  UserFolders folders;
  folders.home = fromNSString(NSHomeDirectory());
  NSString* support =
      NSSearchPathForDirectoriesInDomains(NSApplicationSupportDirectory, NSUserDomainMask, YES).firstObject;
  folders.applicationSupport = support != nil ? std::filesystem::path(fromNSString(support))
                                              : folders.home / "Library/Application Support";
  folders.logFile = folders.home / "Library/Logs/Pellar.log";
  // Without the folder there is no log, which is no reason not to run.
  static_cast<void>(systemFileOperations().createFolders(folders.logFile.parent_path()));
  return folders;
}

}  // namespace pellar
