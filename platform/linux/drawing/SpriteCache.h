#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/linux/drawing/Sprite.h"

namespace pellar {

// Keeps the sprites that were used last, up to a megabyte of pixels; more where a point has several.
class SpriteCache {
 public:
  // Sprites of so many pixels to a point are going to come.
  void expect(double scale);
  // The sprite made under a key; null when it is not kept. Good until the next `add`.
  [[nodiscard]] const Sprite* find(std::string_view key);
  const Sprite& add(std::string_view key, Sprite sprite);

 private:
  struct Entry {
    std::string key;
    Sprite sprite;
  };

  void makeRoom(std::size_t bytes);

  std::list<Entry> entries_;  // last used first
  std::unordered_map<std::string_view, std::list<Entry>::iterator> byKey_;
  std::size_t bytes_ = 0;
  std::size_t mostBytes_ = std::size_t{1024} * 1024;
};

// A key of anything that is copied byte by byte.
class SpriteKey {
 public:
  template <class Value>
  SpriteKey& with(const Value& value) {
    text_.append(reinterpret_cast<const char*>(&value), sizeof value);
    return *this;
  }
  SpriteKey& with(std::string_view text) {
    text_.append(text);
    return *this;
  }
  [[nodiscard]] std::string_view view() const { return text_; }

 private:
  std::string text_;
};

}  // namespace pellar
