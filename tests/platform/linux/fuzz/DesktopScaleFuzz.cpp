#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/linux/x11/DesktopScale.h"
#include "tests/support/fuzz/FuzzInput.h"

// Whatever the desktop's resources and the environment say of the scale, each monitor has a usable one, in
// quarters.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  pellar::test::FuzzInput input(data, size);
  pellar::ScaleStatements statements;
  if (input.flag()) statements.screenFactors = input.text();
  if (input.flag()) statements.toolkitFactor = input.text();
  if (input.flag()) statements.gdkScale = input.text();
  statements.resources = input.text();
  const pellar::DesktopScale scale(statements);
  for (std::size_t monitor = 0; monitor < 3; ++monitor) {
    const double of = scale.of(monitor == 1 ? "DP-1" : "", monitor);
    if (!(of >= 1 && of <= 4) || of * 4 != static_cast<int>(of * 4)) std::abort();
  }
  return 0;
}
