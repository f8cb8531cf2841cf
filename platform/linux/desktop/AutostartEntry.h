#pragma once

#include <filesystem>

#include "core/FileOperations.h"
#include "platform/LoginItem.h"

namespace pellar {

// The login item as an entry in the user's XDG autostart folder.
class AutostartEntry final : public LoginItem {
 public:
  // `configFolder` is the user's folder of settings. `program` is the absolute path of what is started; empty
  // where that is not known, and the item cannot be switched on. `operations` must outlive this.
  AutostartEntry(const std::filesystem::path& configFolder, std::filesystem::path program,
                 FileOperations& operations = systemFileOperations());

  // An entry that the desktop's settings switched off does not count.
  [[nodiscard]] LoginItemStatus status() const override;
  // Writes an entry, or takes it away. One that the user changed is his: of it only what switches it on and
  // off is written.
  std::optional<std::string> setEnabled(bool enabled) override;
  // No desktop asks for the user's approval.
  void openSettings() override {}

 private:
  // The entry's text; empty, and no error, when there is none.
  [[nodiscard]] std::error_code read(std::string& text) const;
  [[nodiscard]] std::optional<std::string> write(const std::string& text) const;
  [[nodiscard]] std::optional<std::string> remove() const;

  std::filesystem::path file_;
  std::filesystem::path program_;
  FileOperations& operations_;
};

}  // namespace pellar
