#include <gtest/gtest.h>

#include <string>

#include "app/info/WebAddress.h"

namespace pellar {
namespace {

// What a web site tells is opened in the user's browser only when it can be nothing else than a page's
// address.

TEST(WebAddressTest, APagesAddressIsOne) {
  for (const char* address :
       {"https://pellar.example", "http://pellar.example/", "HTTPS://Pellar.example/a?b=c#d",
        "https://user@pellar.example:8443/", "https://pellar.example/%C3%BCber%20uns%aF"})
    EXPECT_TRUE(WebAddress::isValid(address)) << address;
}

TEST(WebAddressTest, WhatHasNoHostIsNone) {
  for (const char* address : {"", "https", "https://", "http:///etc/passwd", "https://?q", "https://#top",
                              "https://user@/", "https://:443/", "pellar.example"})
    EXPECT_FALSE(WebAddress::isValid(address)) << address;
}

TEST(WebAddressTest, AnotherSchemeIsNone) {
  for (const char* address : {"file:///etc/passwd", "javascript:alert(1)", "ftp://pellar.example/",
                              "httpx://pellar.example", "ahttp://pellar.example"})
    EXPECT_FALSE(WebAddress::isValid(address)) << address;
}

TEST(WebAddressTest, CharactersThatStandInNoAddressAreRefused) {
  for (const char* address :
       {"https://pellar.example/a b", "https://pellar.example/\n", "https://pellar.example/ü",
        "https://pellar.example/\"", "https://pellar.example/<", "https://pellar.example/\\"})
    EXPECT_FALSE(WebAddress::isValid(address)) << address;
}

TEST(WebAddressTest, APercentSignBeginsTwoHexDigits) {
  for (const char* end : {"%", "%4", "%4g", "%g4", "%%41", "%-1", "%00%"})
    EXPECT_FALSE(WebAddress::isValid(std::string("https://pellar.example/") + end)) << end;
  for (const char* end : {"%41", "%aF", "%0a%Fa"})
    EXPECT_TRUE(WebAddress::isValid(std::string("https://pellar.example/") + end)) << end;
}

TEST(WebAddressTest, NoAddressIsLongerThanABrowserTakes) {
  const std::string start = "https://pellar.example/";
  const std::string longest = start + std::string(2000 - start.size(), 'a');
  EXPECT_TRUE(WebAddress::isValid(longest));
  EXPECT_FALSE(WebAddress::isValid(longest + "a"));
}

TEST(WebAddressTest, ASiteIsNamedWithoutSlashesAtItsEnd) {
  EXPECT_EQ(WebAddress::withoutSlashAtEnd("https://pellar.example//"), "https://pellar.example");
  EXPECT_EQ(WebAddress::withoutSlashAtEnd("https://pellar.example"), "https://pellar.example");
  EXPECT_EQ(WebAddress::withoutSlashAtEnd(""), "");
}

}  // namespace
}  // namespace pellar
