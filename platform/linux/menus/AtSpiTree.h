#pragma once

#include <QDBusPendingCall>
#include <QHash>
#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/linux/menus/AtSpiBus.h"
#include "platform/linux/menus/ExportedMenus.h"
#include "platform/linux/x11/PointMap.h"

namespace pellar {

// A window as the X server knows it, to be found again among a program's own.
struct AtSpiWindow {
  ProcessId process = 0;
  std::string title;
  RootRect frame;
  bool isOnly = false;  // the process has no other
  std::optional<ExportedMenuBar> exported;
};

// A part of a program's menus, in the way that the program offers it.
struct AtSpiObject {
  struct Exported {
    ExportedMenuBar bar;
    ExportedItem item;
  };

  AtSpiReference reference;
  std::shared_ptr<const Exported> exported;  // null for what is on the accessibility bus
};

// An object with its name, without the blanks that programs align names with; the name is absent when it was
// not told in time.
struct AtSpiNamed {
  AtSpiObject object;
  std::optional<std::string> name;
};

// What programs tell of themselves on the accessibility bus: calls for just what is asked, several under way
// at once where that helps. For a side thread; what comes late is absent.
class AtSpiTree {
 public:
  using Deadline = AtSpiBus::Deadline;

  // The menu bar of a window: the one that its program exports, else the one on the accessibility bus. Absent
  // when the program is on neither, has no such window there or no bar in it, or when two windows cannot be
  // told apart.
  [[nodiscard]] std::optional<AtSpiObject> menuBar(const AtSpiWindow& window, Deadline deadline);
  // The objects directly inside one, with their names.
  [[nodiscard]] std::optional<std::vector<AtSpiNamed>> children(const AtSpiObject& parent, Deadline deadline);
  // The object whose children are the items of a menu, from the bar's item: some programs have another one in
  // between, others have not.
  [[nodiscard]] std::optional<AtSpiObject> menuOf(const AtSpiObject& barItem, Deadline deadline);
  [[nodiscard]] std::optional<bool> isEnabled(const AtSpiObject& object, Deadline deadline);
  // Performs the first action of an item, or of the usual one in a submenu. `sent` becomes true just before
  // the program is told to.
  Performed press(const AtSpiObject& object, Deadline deadline, std::atomic<bool>& sent);
  // Gives back what was changed to reach programs.
  void letGo(Deadline deadline) { bus_.disable(deadline); }

 private:
  using References = std::vector<AtSpiReference>;
  struct Found {
    AtSpiReference object;
    std::optional<std::string> name;
  };

  [[nodiscard]] QDBusPendingCall askForReferences(const AtSpiReference& parent, Deadline deadline) const;
  [[nodiscard]] static std::optional<References> referencesIn(const std::optional<QVariantList>& answer);
  [[nodiscard]] std::optional<References> references(const AtSpiReference& parent, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> program(ProcessId process, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> programOrInvited(ProcessId process, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> frame(const AtSpiWindow& window, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> nearest(const std::vector<Found>& frames, const RootRect& frame,
                                                      Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> menuBarIn(const AtSpiReference& frame, Deadline deadline);
  [[nodiscard]] std::optional<std::vector<Found>> named(const AtSpiReference& parent, Deadline deadline);
  [[nodiscard]] std::optional<bool> isSensitive(const AtSpiReference& object, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiObject> exportedBar(const ExportedMenuBar& bar, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> itemMeantBy(const AtSpiReference& object, Deadline deadline);
  [[nodiscard]] std::vector<std::optional<std::uint32_t>> roles(const References& objects, Deadline deadline);

  AtSpiBus bus_;
  QHash<QString, ProcessId> processes_;  // of the programs on the bus, by their unique name
};

}  // namespace pellar
