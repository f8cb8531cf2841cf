#include "tests/e2e/tools/Photograph.h"

#include "tests/e2e/XReply.h"

namespace pellar::e2e {

QImage photograph(xcb_connection_t* connection, xcb_window_t window) {
  const XReply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
  if (!geometry) return {};
  const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0, geometry->width,
                                    geometry->height, ~0U);
  const XReply<xcb_get_image_reply_t> image(xcb_get_image_reply(connection, cookie, nullptr));
  if (!image || (image->depth != 24 && image->depth != 32)) return {};
  const QImage borrowed(xcb_get_image_data(image.get()), geometry->width, geometry->height,
                        image->depth == 32 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  return borrowed.copy();
}

}  // namespace pellar::e2e
