#pragma once

#include <string>
#include <string_view>

namespace pellar {

// The UTF-8 of a text in Compound Text, the encoding in which older programs write titles that Latin-1 cannot
// hold: stretches in different character sets, each begun by an escape sequence. Any bytes will do: what
// cannot be read becomes U+FFFD. Does not depend on the locale.
[[nodiscard]] std::string utf8OfCompoundText(std::string_view text);

}  // namespace pellar
