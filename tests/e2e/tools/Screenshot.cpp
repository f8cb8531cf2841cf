// Saves what an X window (decimal or 0x number), or the whole screen, shows as a PNG file.
//   screenshot out.png [window]
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "tests/e2e/tools/Photograph.h"

namespace {

int fail(const char* what) {
  std::fprintf(stderr, "screenshot: %s\n", what);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) return fail("usage: screenshot out.png [window]");
  const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(xcb_connect(nullptr, nullptr),
                                                                                &xcb_disconnect);
  if (xcb_connection_has_error(connection.get()) != 0) return fail("no display");
  const xcb_window_t window = argc == 3
                                  ? static_cast<xcb_window_t>(std::strtoul(argv[2], nullptr, 0))
                                  : xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
  const QImage picture = pellar::e2e::photograph(connection.get(), window);
  if (picture.isNull()) return fail("no such window on a true-colour screen");
  return picture.save(argv[1], "PNG") ? 0 : fail("cannot write the picture");
}
