#include "app/tracking/PathInTitle.h"

#include "core/TabLabel.h"

namespace pellar {

void PathInTitle::look(const std::string& title, const std::string& path) {
  if (title_ == title) return;
  title_ = title;
  names_ = TabLabel::titleNames(title, path);
  named_ = named_ || names_;
}

}  // namespace pellar
