#include "app/info/WebAddress.h"

#include <algorithm>
#include <cstddef>

#include "core/Ascii.h"

namespace pellar::WebAddress {
namespace {

constexpr std::size_t longestAddress = 2000;

// RFC 3986: unreserved and reserved characters, and the sign of an encoded one.
bool isAddressCharacter(char each) {
  return Ascii::isLetter(each) || Ascii::isDigit(each) ||
         std::string_view("-._~:/?#[]@!$&'()*+,;=%").find(each) != std::string_view::npos;
}

bool isEncodedRight(std::string_view text) {
  for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 3))
    if (at + 2 >= text.size() || !Ascii::hexDigit(text[at + 1]) || !Ascii::hexDigit(text[at + 2]))
      return false;
  return true;
}

}  // namespace

bool isValid(std::string_view text) {
  if (text.size() > longestAddress || !std::ranges::all_of(text, isAddressCharacter)) return false;
  std::string_view rest;
  for (const std::string_view scheme : {"http://", "https://"})
    if (Ascii::startsWith(text, scheme)) rest = text.substr(scheme.size());
  const std::string_view authority = rest.substr(0, rest.find_first_of("/?#"));
  const std::string_view host = authority.substr(authority.rfind('@') + 1);
  return !host.empty() && host.front() != ':' && isEncodedRight(text);
}

std::string withoutSlashAtEnd(std::string site) {
  while (site.ends_with('/')) site.pop_back();
  return site;
}

void open(Workspace& workspace, const std::string& address) {
  if (isValid(address)) workspace.openUrl(address);
}

}  // namespace pellar::WebAddress
