#pragma once

namespace pellar {

// Makes a flag true for as long as this lives, also when what runs meanwhile ends with an exception.
class TrueWhile {
 public:
  explicit TrueWhile(bool& flag) : flag_(flag) { flag_ = true; }
  ~TrueWhile() { flag_ = false; }
  TrueWhile(const TrueWhile&) = delete;
  TrueWhile& operator=(const TrueWhile&) = delete;

 private:
  bool& flag_;
};

}  // namespace pellar
