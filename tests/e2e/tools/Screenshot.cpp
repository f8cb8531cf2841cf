// Saves what an X window (decimal or 0x number), or the whole screen, shows as a PNG file.
//   screenshot out.png [window]
#include <xcb/xcb.h>

#include <QImage>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

template <class Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply) {
  return {reply, &std::free};
}

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

  const auto geometry =
      owned(xcb_get_geometry_reply(connection.get(), xcb_get_geometry(connection.get(), window), nullptr));
  if (!geometry) return fail("no such window");
  const auto image =
      owned(xcb_get_image_reply(connection.get(),
                                xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
                                              geometry->width, geometry->height, ~0U),
                                nullptr));
  if (!image) return fail("the window is not on the screen");
  if (image->depth != 24 && image->depth != 32) return fail("this screen is not true-colour");
  const QImage picture(xcb_get_image_data(image.get()), geometry->width, geometry->height,
                       image->depth == 32 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  return picture.save(argv[1], "PNG") ? 0 : fail("cannot write the picture");
}
