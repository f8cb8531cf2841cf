#include "platform/linux/drawing/SpriteCache.h"

#include <algorithm>
#include <utility>

namespace pellar {
namespace {

constexpr double mostBytesAtOne = 1024 * 1024;

std::size_t bytesOf(const Sprite& sprite) {
  return static_cast<std::size_t>(sprite.pixels.sizeInBytes());
}

}  // namespace

void SpriteCache::expect(double scale) {
  mostBytes_ = std::max(mostBytes_, static_cast<std::size_t>(mostBytesAtOne * scale * scale));
}

const Sprite* SpriteCache::find(std::string_view key) {
  const auto found = byKey_.find(key);
  if (found == byKey_.end()) return nullptr;
  entries_.splice(entries_.begin(), entries_, found->second);
  return &found->second->sprite;
}

const Sprite& SpriteCache::add(std::string_view key, Sprite sprite) {
  const std::size_t bytes = bytesOf(sprite);
  makeRoom(bytes);
  entries_.push_front({std::string(key), std::move(sprite)});
  byKey_[entries_.front().key] = entries_.begin();
  bytes_ += bytes;
  return entries_.front().sprite;
}

void SpriteCache::makeRoom(std::size_t bytes) {
  while (!entries_.empty() && bytes_ + bytes > mostBytes_) {
    bytes_ -= bytesOf(entries_.back().sprite);
    byKey_.erase(entries_.back().key);
    entries_.pop_back();
  }
}

}  // namespace pellar
