// The machine that the stories run on takes no part in them.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/e2e/Desktop.h"

namespace pellar::e2e {
namespace {

TEST(Surroundings, ASessionBusStartsNothingThatHappensToBeInstalled) {
  Desktop desktop(WindowManager::openbox);
  desktop.openSessionBus();
  const auto asked = desktop.start({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
                                    "/", "org.freedesktop.DBus.ListActivatableNames"},
                                   "dbus-send");
  std::set<std::string> names;
  for (std::string line = asked->readLine(); !line.ends_with(']'); line = asked->readLine()) {
    const auto quote = line.find('"');
    if (quote != std::string::npos) names.insert(line.substr(quote + 1, line.rfind('"') - quote - 1));
  }
  names.erase("org.freedesktop.DBus");
  names.erase("org.xfce.Xfconf");
  EXPECT_EQ(names, std::set<std::string>{"org.a11y.Bus"});
}

}  // namespace
}  // namespace pellar::e2e
