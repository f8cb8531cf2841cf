#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "core/Geometry.h"
#include "platform/Subscription.h"

namespace pellar {

using ProcessId = std::int32_t;

// What identifies a window (and its tab) while it exists: the hash of its element. Not stable across runs.
using WindowId = std::int64_t;

// What an adapter keeps of one user-interface object of another process.
class ElementHandle {
 public:
  virtual ~ElementHandle() = default;
  // The same number for the same object as long as it exists, also through another handle (CFHash).
  [[nodiscard]] virtual WindowId hash() const = 0;
  // Whether both stand for the same object (CFEqual). `other` is always of the same adapter.
  [[nodiscard]] virtual bool equals(const ElementHandle& other) const = 0;
};

// A shared, never empty reference to an object of another process. The object may be gone; its reads are then
// absent.
class Element {
 public:
  explicit Element(std::shared_ptr<const ElementHandle> handle) : handle_(std::move(handle)) {}
  [[nodiscard]] WindowId hash() const { return handle_->hash(); }
  [[nodiscard]] const ElementHandle& handle() const { return *handle_; }
  friend bool operator==(const Element& a, const Element& b) {
    return a.handle_ == b.handle_ || a.handle_->equals(*b.handle_);
  }

 private:
  std::shared_ptr<const ElementHandle> handle_;
};

// For containers keyed by elements.
struct ElementHash {
  std::size_t operator()(const Element& element) const { return static_cast<std::size_t>(element.hash()); }
};

// The value of an attribute. Positions and sizes are points in Accessibility coordinates.
using AttributeValue = std::variant<bool, std::string, AxPoint, Size, Element, std::vector<Element>>;

// What became of an action that another program was asked for.
enum class Performed {
  done,        // as the program says
  refused,     // the program was not asked, or says that it did nothing
  unanswered,  // it was asked and did not answer in time: the action may be done, or be done later
};

// What became of a registration (AXObserverAddNotification in AXUIElement.h).
enum class Registration {
  made,          // also when it was made before
  refused,       // the element has no such notification, or it may not be had
  gone,          // there is no such element any more, which is said at once
  notListening,  // nothing is registered: the application is still launching, or is busy
};

// Notifications of one process. Dropping it ends them. A registration waits for the application.
class ElementObserver {
 public:
  virtual ~ElementObserver() = default;
  // Registers one notification on an element of the process: on its application element for all its windows,
  // on a window for that one. Some applications tell the end of a window only to who registered on it.
  virtual Registration add(const Element& element, std::string_view notification) = 0;
  // Takes a registration back. One that was not made changes nothing.
  virtual void remove(const Element& element, std::string_view notification) = 0;
};

// The Accessibility interface. Names are the platform's own ("AXTitle", "AXRaise"). Main thread only. Nothing
// here throws; a call on a vanished object or an application that does not answer is absent or without
// effect. While another program takes its time over its menus the main loop may run nested.
class Accessibility {
 public:
  virtual ~Accessibility() = default;

  // Whether this process may use the interface.
  [[nodiscard]] virtual bool isTrusted() const = 0;
  // The same, and has the system ask the user when it may not.
  virtual bool isTrustedPromptingUser() = 0;

  // The application element of a process; given for any number, also of a process that does not exist.
  [[nodiscard]] virtual Element applicationElement(ProcessId pid) = 0;

  // The value of an attribute: absent when it is not supported, has no value, or cannot be had.
  [[nodiscard]] virtual std::optional<AttributeValue> attribute(const Element& element,
                                                                std::string_view name) = 0;
  // Writes an attribute. Whether it took is seen by reading it.
  virtual void set(const Element& element, std::string_view name, const AttributeValue& value) = 0;
  // Performs an action ("AXRaise", "AXPress").
  virtual Performed perform(const Element& element, std::string_view action) = 0;

  // How many reads, of all so far, no application answered, because it is busy or still launching. Whether a
  // number of reads was answered is seen by comparing before and after.
  [[nodiscard]] virtual std::uint64_t unansweredReads() const = 0;

  // Says which attributes of which elements are about to be read, so that an adapter may fetch them together.
  // Only a hint: what is read right afterwards may be answered from that fetch, each value once.
  virtual void willRead(std::span<const Element> elements, std::span<const std::string_view> attributes) = 0;

  // Observes a process; `onNotification` is called from the main loop for each notification added. Absent
  // (null) when no observer can be had, for instance while the application is still launching.
  [[nodiscard]] virtual std::unique_ptr<ElementObserver> observe(ProcessId pid,
                                                                 std::function<void()> onNotification) = 0;

  // Calls back once when a window has come to rest after the system moved it in several steps, into full
  // screen or out of it for instance. Not active when it is at rest, nor where the system does not tell.
  // Active and never called for a window that the system holds where it is and that must not be moved
  // meanwhile.
  [[nodiscard]] virtual Subscription onceAtRest(const Element& window, std::function<void()> callback) = 0;
};

}  // namespace pellar
