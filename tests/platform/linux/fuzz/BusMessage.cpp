#include "tests/platform/linux/fuzz/BusMessage.h"

#include <algorithm>
#include <array>

#include "core/Utf8.h"

namespace pellar::test {
namespace {

constexpr std::uint8_t methodReturn = 2;
constexpr std::uint8_t error = 3;
constexpr std::uint8_t memberField = 3;
constexpr std::uint8_t errorNameField = 4;
constexpr std::uint8_t replySerialField = 5;
constexpr std::uint8_t signatureField = 8;
constexpr std::size_t fixedHead = 16;

// Among them the roles and states that menus have.
constexpr std::array<std::uint32_t, 16> numbers{0,  1,  2,  8,  20, 23,   34,        35,
                                                39, 41, 45, 46, 69, 4711, 0x1000100, 0xffffffff};
constexpr std::array<std::string_view, 9> keys{"label",    "action",      "accel",   "target", ":section",
                                               ":submenu", "toggle-type", "visible", ""};

std::uint32_t numberAt(std::string_view bytes, std::size_t place) {
  std::uint32_t value = 0;
  for (std::size_t index = 4; index > 0; --index)
    value = (value << 8U) | static_cast<std::uint8_t>(bytes[place + index - 1]);
  return value;
}

std::size_t aligned(std::size_t place, std::size_t size) {
  return (place + size - 1) / size * size;
}

std::string basicTypeFrom(FuzzInput& input) {
  constexpr std::string_view basic = "ybnqiuxtdsog";
  return {basic[input.below(basic.size())]};
}

std::string typeFrom(FuzzInput& input, int deepest) {
  switch (deepest > 0 ? input.below(6) : 0) {
    case 1:
      return "v";
    case 2:
      return "a" + typeFrom(input, deepest - 1);
    case 3:
      return "a{" + basicTypeFrom(input) + typeFrom(input, deepest - 1) + "}";
    case 4: {
      std::string types = "(";
      for (std::size_t count = 1 + input.below(4); count > 0; --count) types += typeFrom(input, deepest - 1);
      return types + ")";
    }
    default:
      return basicTypeFrom(input);
  }
}

std::size_t alignmentOf(char type) {
  switch (type) {
    case 'y':
    case 'g':
    case 'v':
      return 1;
    case 'n':
    case 'q':
      return 2;
    case 'x':
    case 't':
    case 'd':
    case '(':
    case '{':
      return 8;
    default:
      return 4;
  }
}

// Behind the first complete type.
std::string_view behindType(std::string_view signature) {
  while (signature.front() == 'a') signature.remove_prefix(1);
  int open = 0;
  do {
    const char each = signature.front();
    if (each == '(' || each == '{') ++open;
    if (each == ')' || each == '}') --open;
    signature.remove_prefix(1);
  } while (open > 0);
  return signature;
}

std::string textFrom(FuzzInput& input) {
  if (input.flag()) return std::string(keys[input.below(keys.size())]);
  std::string text = Utf8::repaired(input.text());
  std::erase(text, '\0');
  return text;
}

std::string messageOf(std::uint8_t type, const BusCall& call, std::uint8_t field, std::string_view fieldType,
                      std::string_view signature, const std::string& body) {
  static std::uint32_t lastSerial = 0;
  BusBytes message;
  message.byte('l');
  message.byte(type);
  message.byte(1);  // no answer is expected
  message.byte(1);
  message.number(static_cast<std::uint32_t>(body.size()));
  message.number(++lastSerial);
  message.number(0);
  message.byte(replySerialField);
  message.signature("u");
  message.number(call.serial);
  message.align(8);
  message.byte(field);
  message.signature(fieldType);
  if (fieldType == "g") {
    message.signature(signature);
  } else {
    message.text(signature);
  }
  message.setNumber(fixedHead - 4, static_cast<std::uint32_t>(message.size() - fixedHead));
  message.align(8);
  return message.bytes() + body;
}

}  // namespace

void BusBytes::number(std::uint32_t value) {
  align(4);
  for (int index = 0; index < 4; ++index, value >>= 8U) byte(static_cast<std::uint8_t>(value & 0xffU));
}

void BusBytes::setNumber(std::size_t place, std::uint32_t value) {
  for (std::size_t index = 0; index < 4; ++index, value >>= 8U)
    bytes_[place + index] = static_cast<char>(value & 0xffU);
}

void BusBytes::text(std::string_view value) {
  number(static_cast<std::uint32_t>(value.size()));
  bytes_ += value;
  byte(0);
}

void BusBytes::signature(std::string_view value) {
  byte(static_cast<std::uint8_t>(value.size()));
  bytes_ += value;
  byte(0);
}

void BusBytes::values(std::string_view signature, FuzzInput& input) {
  while (!signature.empty()) signature = value(signature, input);
}

std::string_view BusBytes::value(std::string_view signature, FuzzInput& input) {
  const char type = signature.front();
  const auto rest = behindType(signature);
  align(alignmentOf(type));
  switch (type) {
    case 'y':
      byte(input.byte());
      break;
    case 'n':
    case 'q':
      byte(input.byte());
      byte(input.byte());
      break;
    case 'b':
      number(input.flag() ? 1 : 0);
      break;
    case 'x':
    case 't':
    case 'd':
      number(input.number());
      number(input.number());
      break;
    case 's':
      text(textFrom(input));
      break;
    case 'o':
      text("/o/" + std::to_string(input.below(8)));
      break;
    case 'g':
      this->signature("s");
      break;
    case 'v': {
      const std::string inside = input.flag() ? "s" : input.flag() ? "(uu)" : typeFrom(input, 2);
      this->signature(inside);
      value(inside, input);
      break;
    }
    case 'a': {
      const auto item = signature.substr(1, signature.size() - rest.size() - 1);
      const std::size_t place = size();
      number(0);
      align(alignmentOf(item.front()));
      const std::size_t start = size();
      for (std::size_t count = input.below(5); count > 0; --count) value(item, input);
      setNumber(place, static_cast<std::uint32_t>(size() - start));
      break;
    }
    case '(':
    case '{': {
      const auto inside = signature.substr(1, signature.size() - rest.size() - 2);
      values(inside, input);
      break;
    }
    default:
      number(input.flag() ? numbers[input.below(numbers.size())] : input.byte());
      break;
  }
  return rest;
}

std::string signatureFrom(FuzzInput& input) {
  std::string types;
  for (std::size_t count = input.below(4); count > 0; --count) types += typeFrom(input, 4);
  return types.size() < 256 ? types : "s";
}

std::size_t lengthOfMessage(std::string_view bytes) {
  if (bytes.size() < fixedHead) return 0;
  return aligned(fixedHead + numberAt(bytes, 12), 8) + numberAt(bytes, 4);
}

BusCall callIn(std::string_view message) {
  BusCall call{numberAt(message, 8), {}};
  const std::size_t end = fixedHead + numberAt(message, 12);
  // Every field's value is a text, a path, a signature or a number.
  for (std::size_t place = fixedHead; place + 4 < end;) {
    const auto field = static_cast<std::uint8_t>(message[place]);
    const char type = message[place + 2];
    place += 4;
    if (type == 'g') {
      place += static_cast<std::uint8_t>(message[place]) + std::size_t{2};
    } else if (type == 'u') {
      place += 4;
    } else {
      const std::size_t length = numberAt(message, place);
      if (field == memberField) call.member = message.substr(place + 4, length);
      place += 4 + length + 1;
    }
    place = aligned(place, 8);
  }
  return call;
}

std::string answerTo(const BusCall& call, std::string_view signature, const BusBytes& values) {
  return messageOf(methodReturn, call, signatureField, "g", signature, values.bytes());
}

std::string errorTo(const BusCall& call) {
  return messageOf(error, call, errorNameField, "s", "org.freedesktop.DBus.Error.Failed", {});
}

}  // namespace pellar::test
