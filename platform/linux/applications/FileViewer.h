#pragma once

#include <string>

#include "core/Alive.h"
#include "platform/linux/system/SideThread.h"

namespace pellar {

class MainLoop;

// The desktop's file manager. Main thread only.
class FileViewer {
 public:
  explicit FileViewer(MainLoop& loop) : loop_(loop) {}

  // Opens the folder of a file, by its absolute path, with the file selected where the file manager can
  // (org.freedesktop.FileManager1); otherwise opens the folder. Does not wait for it.
  void select(const std::string& path);

 private:
  MainLoop& loop_;
  Alive alive_;
  SideThread thread_;
};

}  // namespace pellar
