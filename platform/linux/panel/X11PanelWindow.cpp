#include "platform/linux/panel/X11PanelWindow.h"

#include <unistd.h>
#include <xcb/shape.h>
#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string_view>
#include <utility>

#include "platform/linux/x11/X11Compositor.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {
namespace {

constexpr char classNames[] = "pellar\0Pellar";  // instance and class, each with its end
constexpr std::string_view className{classNames, sizeof classNames};
constexpr std::string_view title = "Pellar";
constexpr std::uint32_t putImageHeader = 64;  // more than PutImage needs

xcb_rectangle_t rectangle(int x, int y, int width, int height) {
  return {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
          static_cast<std::uint16_t>(height)};
}

// The rows of a rectangle with quarter circles for corners.
std::vector<xcb_rectangle_t> roundedRows(int width, int height, int radius) {
  radius = std::min({radius, width / 2, height / 2});
  std::vector<xcb_rectangle_t> rows;
  for (int y = 0; y < radius; ++y) {
    const double rise = radius - y - 0.5;
    const int inset = static_cast<int>(std::lround(radius - std::sqrt(radius * radius - rise * rise)));
    rows.push_back(rectangle(inset, y, width - 2 * inset, 1));
    rows.push_back(rectangle(inset, height - 1 - y, width - 2 * inset, 1));
  }
  if (height > 2 * radius) rows.push_back(rectangle(0, radius, width, height - 2 * radius));
  return rows;
}

}  // namespace

X11PanelWindow::X11PanelWindow(const X11Connection& connection, const X11Compositor& compositor,
                               const PixelRect& frame, int radius)
    : connection_(connection),
      compositor_(compositor),
      radius_(radius),
      frame_(frame),
      id_(xcb_generate_id(connection.xcb())),
      context_(xcb_generate_id(connection.xcb())),
      mostBytes_(xcb_get_maximum_request_length(connection.xcb()) * 4 - putImageHeader) {
  xcb_create_window_value_list_t values{};
  values.border_pixel = 0;
  // What a growing window already shows stays where it is until the rest is painted.
  values.bit_gravity = XCB_GRAVITY_NORTH_WEST;
  values.override_redirect = 1;
  values.event_mask = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                      XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_ENTER_WINDOW |
                      XCB_EVENT_MASK_LEAVE_WINDOW | XCB_EVENT_MASK_VISIBILITY_CHANGE;
  values.colormap = compositor.colormap();
  xcb_create_window_aux(connection.xcb(), compositor.depth(), id_, connection.root(),
                        static_cast<std::int16_t>(frame.x), static_cast<std::int16_t>(frame.y),
                        static_cast<std::uint16_t>(frame.width), static_cast<std::uint16_t>(frame.height), 0,
                        XCB_WINDOW_CLASS_INPUT_OUTPUT, compositor.visual(),
                        XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY | XCB_CW_OVERRIDE_REDIRECT |
                            XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                        &values);
  xcb_create_gc(connection.xcb(), context_, id_, 0, nullptr);
  describe();
  updateShape();
}

X11PanelWindow::~X11PanelWindow() {
  xcb_free_gc(connection_.xcb(), context_);
  xcb_destroy_window(connection_.xcb(), id_);
  xcb_flush(connection_.xcb());
}

void X11PanelWindow::describe() {
  xcb_connection_t* const xcb = connection_.xcb();
  const X11Atoms& atoms = connection_.atoms();
  const auto text = [&](xcb_atom_t property, xcb_atom_t encoding, std::string_view value) {
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id_, property, encoding, 8,
                        static_cast<std::uint32_t>(value.size()), value.data());
  };
  text(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, className);
  text(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, title);
  text(atoms.netWmName, atoms.utf8String, title);
  const auto process = static_cast<std::uint32_t>(getpid());
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id_, atoms.netWmPid, XCB_ATOM_CARDINAL, 32, 1, &process);
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id_, atoms.netWmWindowType, XCB_ATOM_ATOM, 32, 1,
                      &atoms.typeUtility);
  xcb_icccm_wm_hints_t hints{};
  xcb_icccm_wm_hints_set_input(&hints, 0);
  xcb_icccm_set_wm_hints(xcb, id_, &hints);
}

void X11PanelWindow::setFrame(const PixelRect& frame, int radius) {
  const bool rounded = std::exchange(radius_, radius) != radius;
  if (frame == frame_) {
    if (rounded) updateShape();
    return;
  }
  const bool resized = frame.width != frame_.width || frame.height != frame_.height;
  frame_ = frame;
  std::array<std::uint32_t, 4> values{
      static_cast<std::uint32_t>(frame.x), static_cast<std::uint32_t>(frame.y),
      static_cast<std::uint32_t>(frame.width), static_cast<std::uint32_t>(frame.height)};
  std::uint16_t mask = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y;
  if (resized) mask |= XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
  // The shape first: in between, the part that a window has grown by would let presses through.
  if (resized || rounded || !spared_.empty()) updateShape();
  xcb_configure_window(connection_.xcb(), id_, mask, values.data());
}

void X11PanelWindow::updateShape() {
  const auto shape = [this](xcb_shape_so_t operation, const std::vector<xcb_rectangle_t>& rectangles) {
    xcb_shape_rectangles(connection_.xcb(), operation, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED, id_,
                         0, 0, static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
  };
  if (compositor_.blends()) {
    xcb_shape_mask(connection_.xcb(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, id_, 0, 0, XCB_NONE);
  } else {
    shape(XCB_SHAPE_SO_SET, roundedRows(frame_.width, frame_.height, radius_));
  }
  if (spared_.empty()) return;
  std::vector<xcb_rectangle_t> holes;
  for (const PixelRect& part : spared_)
    holes.push_back(rectangle(part.x - frame_.x, part.y - frame_.y, part.width, part.height));
  shape(XCB_SHAPE_SO_SUBTRACT, holes);
}

void X11PanelWindow::spare(std::vector<PixelRect> parts) {
  if (parts == spared_) return;
  spared_ = std::move(parts);
  updateShape();
}

std::uint32_t X11PanelWindow::map() {
  return xcb_map_window(connection_.xcb(), id_).sequence;
}

void X11PanelWindow::unmap() {
  xcb_unmap_window(connection_.xcb(), id_);
}

bool X11PanelWindow::isBelowManagedWindow() const {
  const auto tree = owned(xcb_query_tree_reply(
      connection_.xcb(), xcb_query_tree(connection_.xcb(), connection_.root()), nullptr));
  if (!tree) return false;
  const xcb_window_t* begin = xcb_query_tree_children(tree.get());
  const xcb_window_t* end = begin + xcb_query_tree_children_length(tree.get());
  std::vector<xcb_get_window_attributes_cookie_t> cookies;
  for (const xcb_window_t* above = std::find(begin, end, id_); above != end; ++above) {
    if (*above != id_) cookies.push_back(xcb_get_window_attributes(connection_.xcb(), *above));
  }
  bool below = false;
  for (const auto cookie : cookies) {
    const auto attributes = owned(xcb_get_window_attributes_reply(connection_.xcb(), cookie, nullptr));
    below = below || (attributes && attributes->override_redirect == 0 &&
                      attributes->map_state == XCB_MAP_STATE_VIEWABLE);
  }
  return below;
}

void X11PanelWindow::put(const QImage& picture, const QRect& part) {
  const QRect rect = part.intersected(picture.rect());
  if (rect.isEmpty()) return;
  const auto rowBytes = static_cast<std::size_t>(rect.width()) * 4;
  const int rowsPerRequest = static_cast<int>(std::max<std::size_t>(mostBytes_ / rowBytes, 1));
  for (int top = rect.top(); top <= rect.bottom(); top += rowsPerRequest) {
    const int count = std::min(rowsPerRequest, rect.bottom() + 1 - top);
    rows_.resize(rowBytes * static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) {
      std::memcpy(rows_.data() + static_cast<std::size_t>(row) * rowBytes,
                  picture.constScanLine(top + row) + static_cast<std::ptrdiff_t>(rect.left()) * 4, rowBytes);
    }
    xcb_put_image(connection_.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, id_, context_,
                  static_cast<std::uint16_t>(rect.width()), static_cast<std::uint16_t>(count),
                  static_cast<std::int16_t>(rect.left()), static_cast<std::int16_t>(top), 0,
                  compositor_.depth(), static_cast<std::uint32_t>(rows_.size()), rows_.data());
  }
}

void X11PanelWindow::flush() {
  xcb_flush(connection_.xcb());
}

}  // namespace pellar
