#pragma once

#include <string>
#include <string_view>

#include "platform/Workspace.h"

// Addresses of web pages, as they come with answers from the network.
namespace pellar::WebAddress {

// Whether a text is an absolute http or https address: of the characters that addresses are made of, with a
// host, and no longer than a browser takes.
bool isValid(std::string_view text);

// A web site's address as its pages' paths are appended to it.
std::string withoutSlashAtEnd(std::string site);

// Opens the page in the default browser; nothing happens for anything that is not valid.
void open(Workspace& workspace, const std::string& address);

}  // namespace pellar::WebAddress
