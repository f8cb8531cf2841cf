#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "app/tracking/OfficeWindow.h"
#include "platform/Accessibility.h"

// What any application can be made to do through its own File menu. Main thread only.
namespace pellar::FileMenu {

// Presses the first item of the process's File menu whose title is one of `titles`, the earlier titles first,
// passing over those that say they are disabled or have a submenu. The menu is the one titled "File", or in a
// localised menu bar the second. Whether an item was pressed; a press that the application refused is none.
bool pressFileMenu(Accessibility& accessibility, ProcessId pid, std::span<const std::string_view> titles);

// Makes a window that says it still shows its file the main one, and presses its application's own Save.
// Whether that was pressed. For auto-save: a file that was not known before is not saved unasked, but known
// by the next time.
bool save(Accessibility& accessibility, OfficeWindow& window);

// Does so with each window that is not minimised and has a file, whichever it shows by now, where Save asks
// the user nothing; then makes `front` (may be null) the main window again, and logs how many were saved.
void saveAll(Accessibility& accessibility, const WindowList& windows,
             const std::shared_ptr<OfficeWindow>& front);

}  // namespace pellar::FileMenu
