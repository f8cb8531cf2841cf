#include "platform/shared/documents/BinaryPropertyList.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace pellar {
namespace {

constexpr std::string_view magic = "bplist00";
constexpr std::size_t trailerLength = 32;
constexpr std::uint64_t bytesOfValue = 64;       // what a value takes in memory beside its content, about
constexpr std::uint64_t mostBytes = 64U << 20U;  // of all values in memory

// The outline of a binary property list: which value holds which others. Format: after the magic come the
// values, then a table of their offsets, then a trailer that tells the widths of offsets and references.
class Outline {
 public:
  static std::optional<Outline> of(std::string_view text);

  // What a value with all it holds takes in memory, and how deep it is.
  struct Extent {
    std::uint64_t bytes = 0;
    int depth = 0;
  };
  // Absent when that is too much or cannot be told.
  std::optional<Extent> extent(std::uint64_t value, int deepest);
  [[nodiscard]] std::uint64_t root() const { return root_; }

 private:
  enum class Kind { scalar, data, text, container, dictionary };
  struct Value {
    Kind kind = Kind::scalar;
    std::uint64_t contentBytes = 0;    // in memory
    std::uint64_t place = 0;           // of a text's first character, or of the first reference
    std::uint64_t count = 0;           // of characters, or of references
    std::uint64_t characterWidth = 1;  // in bytes
  };

  [[nodiscard]] std::optional<std::uint64_t> number(std::uint64_t place, std::uint64_t width) const;
  [[nodiscard]] std::optional<Value> value(std::uint64_t index) const;
  [[nodiscard]] std::optional<Value> characters(Kind kind, std::uint64_t place, std::uint64_t count,
                                                std::uint64_t characterWidth) const;
  [[nodiscard]] std::optional<Value> container(Kind kind, std::uint64_t place,
                                               std::uint64_t referenceCount) const;
  // Whether a value can be the key of a dictionary. A zero in one ends the process in the parser.
  [[nodiscard]] bool isKey(std::uint64_t index) const;

  std::string_view text_;  // up to the trailer
  std::uint64_t offsetWidth_ = 0;
  std::uint64_t referenceWidth_ = 0;
  std::uint64_t root_ = 0;
  std::uint64_t table_ = 0;
  std::vector<std::optional<Extent>> known_;
};

std::optional<std::uint64_t> Outline::number(std::uint64_t place, std::uint64_t width) const {
  if (width == 0 || width > 8 || place > text_.size() || width > text_.size() - place) return std::nullopt;
  std::uint64_t result = 0;
  for (std::uint64_t i = 0; i < width; ++i)
    result = result << 8U | static_cast<unsigned char>(text_[static_cast<std::size_t>(place + i)]);
  return result;
}

std::optional<Outline> Outline::of(std::string_view text) {
  if (!text.starts_with(magic) || text.size() < magic.size() + trailerLength) return std::nullopt;
  Outline outline;
  outline.text_ = text;
  const std::uint64_t trailer = text.size() - trailerLength;
  const auto offsetWidth = outline.number(trailer + 6, 1);
  const auto referenceWidth = outline.number(trailer + 7, 1);
  const auto count = outline.number(trailer + 8, 8);
  const auto root = outline.number(trailer + 16, 8);
  const auto table = outline.number(trailer + 24, 8);
  outline.text_ = text.substr(0, static_cast<std::size_t>(trailer));
  if (*offsetWidth == 0 || *offsetWidth > 8 || *referenceWidth == 0 || *referenceWidth > 8)
    return std::nullopt;
  if (*table > trailer || *count > (trailer - *table) / *offsetWidth || *root >= *count) return std::nullopt;
  outline.offsetWidth_ = *offsetWidth;
  outline.referenceWidth_ = *referenceWidth;
  outline.root_ = *root;
  outline.table_ = *table;
  outline.known_.resize(static_cast<std::size_t>(*count));
  return outline;
}

std::optional<Outline::Value> Outline::characters(Kind kind, std::uint64_t place, std::uint64_t count,
                                                  std::uint64_t characterWidth) const {
  if (place > table_ || count > (table_ - place) / characterWidth) return std::nullopt;
  // Two bytes of UTF-16 become up to three of UTF-8.
  return Value{kind, count * (characterWidth == 2 ? 3 : 1), place, count, characterWidth};
}

std::optional<Outline::Value> Outline::container(Kind kind, std::uint64_t place,
                                                 std::uint64_t referenceCount) const {
  if (place > table_ || referenceCount > (table_ - place) / referenceWidth_) return std::nullopt;
  return Value{kind, 0, place, referenceCount};
}

bool Outline::isKey(std::uint64_t index) const {
  if (index >= known_.size()) return false;
  const auto key = value(index);
  if (!key || key->kind != Kind::text) return false;
  for (std::uint64_t i = 0; i < key->count; ++i)
    if (number(key->place + i * key->characterWidth, key->characterWidth) == 0) return false;
  return true;
}

std::optional<Outline::Value> Outline::value(std::uint64_t index) const {
  const auto offset = number(table_ + index * offsetWidth_, offsetWidth_);
  if (!offset || *offset >= table_) return std::nullopt;
  const auto marker = static_cast<unsigned char>(text_[static_cast<std::size_t>(*offset)]);
  const unsigned kind = marker >> 4U;
  std::uint64_t place = *offset + 1;
  std::uint64_t count = marker & 15U;
  const bool counted = kind == 0x4 || kind == 0x5 || kind == 0x6 || kind >= 0xA;
  if (counted && count == 15) {
    // The count stands behind the marker as a number with a marker of its own.
    const auto countMarker = number(place, 1);
    if (!countMarker || *countMarker >> 4U != 1 || (*countMarker & 15U) > 3) return std::nullopt;
    const std::uint64_t width = 1U << (*countMarker & 15U);
    const auto written = number(place + 1, width);
    if (!written) return std::nullopt;
    count = *written;
    place += 1 + width;
  }
  switch (kind) {
    case 0x4:
      return characters(Kind::data, place, count, 1);
    case 0x5:
      return characters(Kind::text, place, count, 1);
    case 0x6:
      return characters(Kind::text, place, count, 2);
    case 0xA:
    case 0xC:
      return container(Kind::container, place, count);
    case 0xD:
      if (count > table_) return std::nullopt;
      return container(Kind::dictionary, place, 2 * count);
    default:
      return Value{};
  }
}

std::optional<Outline::Extent> Outline::extent(std::uint64_t index, int deepest) {
  if (index >= known_.size() || deepest <= 0) return std::nullopt;
  auto& known = known_[static_cast<std::size_t>(index)];
  if (known) return known->depth <= deepest ? known : std::nullopt;
  const auto outer = value(index);
  if (!outer) return std::nullopt;
  Extent whole{bytesOfValue + outer->contentBytes, 1};
  const bool isDictionary = outer->kind == Kind::dictionary;
  const std::uint64_t references = isDictionary || outer->kind == Kind::container ? outer->count : 0;
  const std::uint64_t keys = isDictionary ? references / 2 : 0;
  for (std::uint64_t i = 0; i < references; ++i) {
    const auto reference = number(outer->place + i * referenceWidth_, referenceWidth_);
    if (!reference || (i < keys && !isKey(*reference))) return std::nullopt;
    // A value inside itself is too deep sooner or later.
    const auto inner = extent(*reference, deepest - 1);
    if (!inner) return std::nullopt;
    whole.bytes += inner->bytes;
    whole.depth = std::max(whole.depth, inner->depth + 1);
    if (whole.bytes > mostBytes) return std::nullopt;
  }
  if (whole.bytes > mostBytes) return std::nullopt;
  known = whole;
  return known;
}

}  // namespace

bool BinaryPropertyList::isSafeToParse(std::string_view text, int deepest) {
  auto outline = Outline::of(text);
  return outline && outline->extent(outline->root(), deepest).has_value();
}

}  // namespace pellar
