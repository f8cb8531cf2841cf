#pragma once

#include <optional>
#include <string>

namespace pellar {

// Whether a window's title names the file behind it, and ever did. A title that named the file and names it
// no more shows another one; one that never named it says nothing.
class PathInTitle {
 public:
  // Looks at the title of the window that shows `path`, the same path for the life of this. A title that has
  // been looked at costs nothing.
  void look(const std::string& title, const std::string& path);
  // Whether the title looked at last names the file.
  [[nodiscard]] bool names() const { return names_; }
  // Whether it does not, and an earlier one did.
  [[nodiscard]] bool isOutdated() const { return named_ && !names_; }

 private:
  std::optional<std::string> title_;  // the last one
  bool names_ = false;
  bool named_ = false;  // once
};

}  // namespace pellar
