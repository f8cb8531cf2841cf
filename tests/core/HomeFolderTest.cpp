#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "core/HomeFolder.h"

namespace pellar {
namespace {

class HomeFolder : public testing::Test {
 protected:
  ~HomeFolder() override { before_.empty() ? ::unsetenv("HOME") : ::setenv("HOME", before_.c_str(), 1); }

  static std::string with(const char* home) {
    ::setenv("HOME", home, 1);
    return homeFolder().string();
  }

 private:
  std::string before_ = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
};

TEST_F(HomeFolder, IsTheOneTheUserSaysWithoutASlashAtItsEnd) {
  EXPECT_EQ(with("/home/ann"), "/home/ann");
  EXPECT_EQ(with("/home/ann/"), "/home/ann");
  EXPECT_EQ(with("/home/./ann/x/../"), "/home/ann");
  EXPECT_EQ(with("/"), "/");
}

TEST_F(HomeFolder, IsTheOneTheSystemKnowsWhereTheUserSaysNoneThatCanBe) {
  ::unsetenv("HOME");
  const std::string known = homeFolder().string();
  EXPECT_TRUE(known.starts_with('/'));
  EXPECT_EQ(with(""), known);
  EXPECT_EQ(with("ann"), known);
}

}  // namespace
}  // namespace pellar
