#pragma once

#include <QHash>
#include <optional>
#include <string>
#include <vector>

#include "core/Geometry.h"
#include "platform/Accessibility.h"
#include "platform/linux/AtSpiBus.h"

namespace pellar {

// A window as the X server knows it, to be found again among a program's own.
struct AtSpiWindow {
  ProcessId process = 0;
  std::string title;
  AxRect frame;
  bool isOnly = false;  // the process has no other
};

// An object with its name, without the blanks that programs align names with; the name is absent when it was
// not told in time.
struct AtSpiNamed {
  AtSpiReference object;
  std::optional<std::string> name;
};

// What programs tell of themselves on the accessibility bus: calls for just what is asked, several under way
// at once where that helps. For a side thread; what comes late is absent.
class AtSpiTree {
 public:
  using Deadline = AtSpiBus::Deadline;

  // The menu bar of a window; absent when its program is not on the bus, has no such window there or no bar
  // in it, or when two windows cannot be told apart.
  [[nodiscard]] std::optional<AtSpiReference> menuBar(const AtSpiWindow& window, Deadline deadline);
  // The objects directly inside one, with their names.
  [[nodiscard]] std::optional<std::vector<AtSpiNamed>> children(const AtSpiReference& parent,
                                                                Deadline deadline);
  // The object whose children are the items of a menu, from the bar's item: some programs have another one in
  // between, others have not.
  [[nodiscard]] std::optional<AtSpiReference> menuOf(const AtSpiReference& barItem, Deadline deadline);
  [[nodiscard]] std::optional<bool> isEnabled(const AtSpiReference& object, Deadline deadline);
  // Performs the object's first action; whether the program says that it did.
  bool press(const AtSpiReference& object, Deadline deadline);

  // Gives back what was changed to reach programs.
  void letGo(Deadline deadline) { bus_.disable(deadline); }

 private:
  using References = std::vector<AtSpiReference>;

  [[nodiscard]] std::optional<References> references(const AtSpiReference& parent, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> program(ProcessId process, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> programOrInvited(ProcessId process, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> frame(const AtSpiWindow& window, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> nearest(const std::vector<AtSpiNamed>& frames,
                                                      const AxRect& frame, Deadline deadline);
  [[nodiscard]] std::optional<AtSpiReference> menuBarIn(const AtSpiReference& frame, Deadline deadline);
  [[nodiscard]] std::vector<std::optional<std::uint32_t>> roles(const References& objects, Deadline deadline);

  AtSpiBus bus_;
  QHash<QString, ProcessId> processes_;  // of the programs on the bus, by their unique name
};

}  // namespace pellar
