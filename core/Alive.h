#pragma once

#include <memory>

namespace pellar {

// A member by which an object is known to be there, for what may outlive it: work put off, or a function of
// its own that just called out. Asking is safe on any thread; what is done after it needs the owner's thread.
class Alive {
 public:
  class Watch {
   public:
    explicit Watch(const Alive& alive) : token_(alive.token_) {}
    // False once the owner is gone.
    explicit operator bool() const { return !token_.expired(); }

   private:
    std::weak_ptr<const int> token_;
  };

  Alive() = default;
  Alive(const Alive&) = delete;
  Alive& operator=(const Alive&) = delete;

  [[nodiscard]] Watch watch() const { return Watch(*this); }

 private:
  std::shared_ptr<const int> token_ = std::make_shared<const int>(0);
};

}  // namespace pellar
