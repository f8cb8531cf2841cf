#pragma once

#include <deque>
#include <string>

#include "core/Alive.h"
#include "platform/Subscription.h"
#include "platform/linux/system/SideThread.h"

namespace pellar {

class MainLoop;

// Opens files with the programs that own their kinds, in the order asked. Each is a program to start, so that
// many are spread over a while. Main thread only.
class FileOpener {
 public:
  explicit FileOpener(MainLoop& loop) : loop_(loop) {}

  // Opens a file by its absolute path. One that does not exist is said in the log.
  void open(std::string path);

 private:
  void next();
  void launch(const std::string& path, bool exists);

  MainLoop& loop_;
  std::deque<std::string> waiting_;
  bool busy_ = false;  // one is being looked at, or was launched a moment ago
  Subscription pause_;
  Alive alive_;
  SideThread thread_;  // a file's file system may be away
};

}  // namespace pellar
