#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tests/support/fuzz/FuzzInput.h"

// Messages as they go over a bus (D-Bus Specification, "Message Protocol"), little-endian.
namespace pellar::test {

// What is known of a call.
struct BusCall {
  std::uint32_t serial = 0;
  std::string member;
};

// Bytes of values, each aligned as its type wants it.
class BusBytes {
 public:
  void align(std::size_t size) { bytes_.resize((bytes_.size() + size - 1) / size * size); }
  void byte(std::uint8_t value) { bytes_ += static_cast<char>(value); }
  void number(std::uint32_t value);
  void text(std::string_view value);
  void signature(std::string_view value);
  // A value of the first complete type in a signature, from the input; the rest of the signature.
  std::string_view value(std::string_view signature, FuzzInput& input);
  void values(std::string_view signature, FuzzInput& input);

  // The four bytes at `place`, written before their value was known.
  void setNumber(std::size_t place, std::uint32_t value);
  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  [[nodiscard]] const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

// A signature of up to three complete types, from the input.
[[nodiscard]] std::string signatureFrom(FuzzInput& input);

// The length of the whole message at the start of these bytes; 0 while its head is not there.
[[nodiscard]] std::size_t lengthOfMessage(std::string_view bytes);
[[nodiscard]] BusCall callIn(std::string_view message);
// The answer to a call, with values of that signature.
[[nodiscard]] std::string answerTo(const BusCall& call, std::string_view signature, const BusBytes& values);
[[nodiscard]] std::string errorTo(const BusCall& call);

}  // namespace pellar::test
