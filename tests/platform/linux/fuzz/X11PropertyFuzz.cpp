#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "core/Utf8.h"
#include "platform/linux/system/ReservedRoom.h"
#include "platform/linux/x11/X11Property.h"
#include "tests/support/fuzz/FuzzInput.h"

namespace pellar {
namespace {

constexpr X11Atoms atoms{.utf8String = 301,
                         .stateHidden = 321,
                         .stateFullscreen = 322,
                         .stateMaximizedVert = 323,
                         .stateMaximizedHorz = 324,
                         .typeNormal = 331,
                         .typeDialog = 332,
                         .typeDock = 333,
                         .typeDesktop = 334};
constexpr xcb_atom_t compoundText = 302;
constexpr xcb_atom_t types[] = {XCB_ATOM_NONE,   XCB_ATOM_STRING,   atoms.utf8String, compoundText,
                                XCB_ATOM_WINDOW, XCB_ATOM_CARDINAL, XCB_ATOM_ATOM};

// A reply as the server sends it: what follows the head is as long as the head says, and not a byte longer.
XcbReply<xcb_get_property_reply_t> replyFrom(test::FuzzInput& input) {
  const xcb_atom_t type = types[input.below(std::size(types))];
  const auto format = static_cast<std::uint8_t>(8U << input.below(3));
  const bool isCut = input.flag();
  const std::string bytes = input.text();
  const auto count = static_cast<std::uint32_t>(bytes.size() / (format / 8U));
  const std::size_t length = std::size_t{count} * (format / 8U);
  void* const memory = std::calloc(1, sizeof(xcb_get_property_reply_t) + length);
  if (memory == nullptr) std::abort();
  auto* const reply = new (memory) xcb_get_property_reply_t{};
  reply->response_type = 1;
  reply->type = type;
  reply->format = type == XCB_ATOM_NONE ? std::uint8_t{0} : format;
  reply->value_len = type == XCB_ATOM_NONE ? 0 : count;
  reply->bytes_after = isCut ? 4 : 0;
  if (length > 0) std::memcpy(xcb_get_property_value(reply), bytes.data(), length);
  return XcbReply<xcb_get_property_reply_t>(reply);
}

void check(bool holds) {
  if (!holds) std::abort();
}

bool isSensible(const X11Extents& extents) {
  constexpr int widest = 1000;
  const auto fits = [](int width) { return width >= 0 && width <= widest; };
  return fits(extents.left) && fits(extents.right) && fits(extents.top) && fits(extents.bottom);
}

void checkWindow(const X11Window& window) {
  check(Utf8::isValid(Utf8::repaired(window.title())));
  check(!window.pid || *window.pid > 0);
  check(isSensible(window.shadow) && (!window.frameExtents || isSensible(*window.frameExtents)));
  check(window.className.find('\0') == std::string::npos);
  check(!window.strut || window.strut->size() == 4);
  check(!window.strutPartial || window.strutPartial->size() == 12);
  const RootRect frame = window.frame();
  check(std::isfinite(frame.x) && std::isfinite(frame.y) && std::isfinite(frame.maxX()) &&
        std::isfinite(frame.maxY()));
}

// What panels claim, however absurd, leaves a part of the monitor: of its size at most, and inside it.
void checkReserved(const X11Window& window) {
  const RootRect root{0, 0, 3840, 1080};
  const RootRect monitor{1920, 0, 1920, 1080};
  RootRect area = monitor;
  takeReservedRoom(area, window, monitor, root);
  check(area.width >= 0 && area.height >= 0 && area.x >= monitor.x && area.maxX() <= monitor.maxX() &&
        area.y >= monitor.y && area.maxY() <= monitor.maxY());
}

}  // namespace
}  // namespace pellar

// Whatever a program writes into the properties of its window, the window is a sound one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pellar;
  test::FuzzInput input(data, size);
  X11Window window;
  window.id = 1;
  window.links = {{1, {5, 20, 600, 400, 0}}, {2, {100, 50, 610, 425, 0}}};
  while (!input.isUsedUp()) {
    const auto property = allX11Properties[input.below(allX11Properties.size())];
    const auto reply = replyFrom(input);
    applyX11Property(window, property, input.flag() ? reply.get() : nullptr, atoms);
    checkWindow(window);
  }
  checkReserved(window);
  return 0;
}
