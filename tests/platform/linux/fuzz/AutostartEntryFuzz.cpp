#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/linux/desktop/AutostartEntry.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "tests/support/BrokenFileOperations.h"

// Whatever the user or a desktop wrote into the entry that starts the program: switched on it is on, switched
// off it is off.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using pellar::LoginItemStatus;
  static const pellar::TemporaryFolder config;
  static pellar::test::BrokenFileOperations files;
  files.steps.clear();
  files.flushed.clear();
  const auto folder = config.path() / "autostart";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "app.pellar.Pellar.desktop", std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  pellar::AutostartEntry entry(config.path(), "/opt/pel\"lar $HOME/100%/pellar", files);
  const bool startsOn = entry.status() == LoginItemStatus::enabled;
  for (const bool on : {startsOn, !startsOn, startsOn, true}) {
    if (entry.setEnabled(on)) std::abort();
    if (entry.status() != (on ? LoginItemStatus::enabled : LoginItemStatus::notRegistered)) std::abort();
  }
  return 0;
}
