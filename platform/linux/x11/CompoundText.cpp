#include "platform/linux/x11/CompoundText.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <utility>

#include "core/Utf8.h"

namespace pellar {
namespace {

using namespace std::string_view_literals;

constexpr char escape = '\x1b';
constexpr char controlSequence = '\x9b';
constexpr auto replacement = "\xef\xbf\xbd"sv;

// A set of characters that an escape sequence puts into one half of the eight-bit code.
struct CharacterSet {
  std::string_view designation;  // what follows the escape character
  bool upper;                    // the half: bytes from 0xA0, else those below 0x80
  const char* charset;           // in which its bytes, in the half that `asUpper` says, mean the same
  bool asUpper;
  int width;  // bytes a character
};

constexpr CharacterSet ascii{"(B", false, "ISO-8859-1", false, 1};
constexpr CharacterSet latin1{"-A", true, "ISO-8859-1", true, 1};

// Those of the Compound Text Encoding, and those that came to be used later.
constexpr std::array sets{
    ascii,
    CharacterSet{"(J", false, "ISO-8859-1", false, 1},
    CharacterSet{")I", true, "SHIFT_JIS", true, 1},
    latin1,
    CharacterSet{"-B", true, "ISO-8859-2", true, 1},
    CharacterSet{"-C", true, "ISO-8859-3", true, 1},
    CharacterSet{"-D", true, "ISO-8859-4", true, 1},
    CharacterSet{"-F", true, "ISO-8859-7", true, 1},
    CharacterSet{"-G", true, "ISO-8859-6", true, 1},
    CharacterSet{"-H", true, "ISO-8859-8", true, 1},
    CharacterSet{"-L", true, "ISO-8859-5", true, 1},
    CharacterSet{"-M", true, "ISO-8859-9", true, 1},
    CharacterSet{"-T", true, "TIS-620", true, 1},
    CharacterSet{"-V", true, "ISO-8859-10", true, 1},
    CharacterSet{"-Y", true, "ISO-8859-13", true, 1},
    CharacterSet{"-_", true, "ISO-8859-14", true, 1},
    CharacterSet{"-b", true, "ISO-8859-15", true, 1},
    CharacterSet{"-f", true, "ISO-8859-16", true, 1},
    CharacterSet{"$(A", false, "EUC-CN", true, 2},
    CharacterSet{"$)A", true, "EUC-CN", true, 2},
    CharacterSet{"$(B", false, "EUC-JP", true, 2},
    CharacterSet{"$)B", true, "EUC-JP", true, 2},
    CharacterSet{"$(C", false, "EUC-KR", true, 2},
    CharacterSet{"$)C", true, "EUC-KR", true, 2},
};

class Converter {
 public:
  explicit Converter(const char* charset) : native_(iconv_open("UTF-8", charset)) {}
  ~Converter() {
    if (isOpen()) iconv_close(native_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Adds the UTF-8 of one character.
  void convert(std::string character, std::string& result) {
    std::array<char, 16> buffer{};
    char* in = character.data();
    std::size_t left = character.size();
    char* out = buffer.data();
    std::size_t room = buffer.size();
    if (!isOpen() || iconv(native_, &in, &left, &out, &room) == static_cast<std::size_t>(-1) || left > 0) {
      // So that the next one begins anew.
      if (isOpen()) iconv(native_, nullptr, nullptr, nullptr, nullptr);
      result += replacement;
    } else {
      result.append(buffer.data(), out);
    }
  }

 private:
  [[nodiscard]] bool isOpen() const {
    return native_ != reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr): as iconv says it
  }

  iconv_t native_;
};

bool isControl(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

bool isUpper(char byte) {
  return static_cast<unsigned char>(byte) >= 0x80;
}

class CompoundTextReader {
 public:
  explicit CompoundTextReader(std::string_view text) : rest_(text) {}

  std::string read() && {
    while (!rest_.empty()) {
      if (rest_.front() == escape) {
        readEscape();
      } else if (rest_.front() == controlSequence) {
        skipSequence('@');
      } else if (isControl(rest_.front())) {
        result_ += isUpper(rest_.front()) ? replacement : rest_.substr(0, 1);
        rest_.remove_prefix(1);
      } else {
        readCharacters(isUpper(rest_.front()) ? *upper_ : *lower_);
      }
    }
    return std::move(result_);
  }

 private:
  void readEscape() {
    const auto sequence = rest_.substr(1);
    if (sequence.starts_with("%G"sv)) return readUtf8();
    if (sequence.starts_with("%/"sv)) return skipExtendedSegment();
    const auto set = std::ranges::find_if(
        sets, [&](const CharacterSet& each) { return sequence.starts_with(each.designation); });
    if (set == sets.end()) return skipSequence('0');
    (set->upper ? upper_ : lower_) = &*set;
    rest_.remove_prefix(1 + set->designation.size());
  }

  // Goes on to the end, or to the sequence that ends it.
  void readUtf8() {
    rest_.remove_prefix(3);
    const auto end = std::min(rest_.find("\x1b%@"sv), rest_.size());
    result_ += Utf8::repaired(rest_.substr(0, end));
    rest_.remove_prefix(end);
    if (!rest_.empty()) rest_.remove_prefix(3);
  }

  // Text in an encoding that its program named; its length stands in front of it.
  void skipExtendedSegment() {
    constexpr std::size_t head = 6;
    result_ += replacement;
    if (rest_.size() < head) {
      rest_ = {};
      return;
    }
    const auto high = static_cast<std::size_t>(static_cast<unsigned char>(rest_[4]) & 0x7FU);
    const auto low = static_cast<std::size_t>(static_cast<unsigned char>(rest_[5]) & 0x7FU);
    rest_.remove_prefix(std::min(rest_.size(), head + high * 128 + low));
  }

  // One that says nothing that is shown here, the direction of writing among them. `firstEnding` is the least
  // of the bytes that may end it.
  void skipSequence(char firstEnding) {
    rest_.remove_prefix(1);
    while (!rest_.empty() && !isControl(rest_.front()) && !isUpper(rest_.front())) {
      const bool ends = rest_.front() >= firstEnding;
      rest_.remove_prefix(1);
      if (ends) return;
    }
  }

  void readCharacters(const CharacterSet& set) {
    const bool upper = isUpper(rest_.front());
    const auto end =
        std::ranges::find_if(rest_, [&](char each) { return isControl(each) || isUpper(each) != upper; });
    auto run = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
    rest_.remove_prefix(run.size());
    Converter& converter = converters_.try_emplace(set.charset, set.charset).first->second;
    while (!run.empty()) {
      // A space stands for itself in each set of the lower half.
      const auto length = run.front() == ' ' ? 1U : static_cast<std::size_t>(set.width);
      std::string character(run.substr(0, length));
      run.remove_prefix(character.size());
      if (character == " "sv) {
        result_ += character;
        continue;
      }
      for (char& each : character) {
        const auto code = static_cast<unsigned char>(each) & 0x7FU;
        each = static_cast<char>(set.asUpper ? code | 0x80U : code);
      }
      converter.convert(std::move(character), result_);
    }
  }

  std::string_view rest_;
  // A hostile text changes between sets at each character, and opening one takes its time.
  std::map<std::string_view, Converter> converters_;
  const CharacterSet* lower_ = &ascii;
  const CharacterSet* upper_ = &latin1;
  std::string result_;
};

}  // namespace

std::string utf8OfCompoundText(std::string_view text) {
  return CompoundTextReader(text).read();
}

}  // namespace pellar
