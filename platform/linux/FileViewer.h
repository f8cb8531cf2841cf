#pragma once

#include <string>

// The desktop's file manager.
namespace pellar::FileViewer {

// Opens the folder of a file, by its absolute path, with the file selected where the file manager can
// (org.freedesktop.FileManager1); otherwise opens the folder. Does not wait for it.
void select(const std::string& path);

}  // namespace pellar::FileViewer
