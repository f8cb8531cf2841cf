#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace pellar {

// Owns one reference to a Core Foundation object, or none. `T` is the reference type (CFStringRef).
template <class T>
class CFRef {
 public:
  CFRef() = default;
  // Takes over a reference that the caller owns: the result of a function named Create or Copy.
  [[nodiscard]] static CFRef adopt(T object) { return CFRef(object); }
  // Adds a reference of its own: the result of a function named Get, or an argument.
  [[nodiscard]] static CFRef retain(T object) {
    if (object != nullptr) CFRetain(object);
    return CFRef(object);
  }

  CFRef(const CFRef& other) : object_(other.object_) {
    if (object_ != nullptr) CFRetain(object_);
  }
  CFRef(CFRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  CFRef& operator=(CFRef other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~CFRef() {
    if (object_ != nullptr) CFRelease(object_);
  }

  [[nodiscard]] T get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  explicit CFRef(T object) : object_(object) {}

  T object_ = nullptr;
};

}  // namespace pellar
