#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <variant>

#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    value != nullptr ? setenv(name, value, 1) : unsetenv(name);
  }
  ~Variable() { before_ ? setenv(name_, before_->c_str(), 1) : unsetenv(name_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
  std::optional<std::string> before_;
};

std::string refusal() {
  const auto opened = X11Connection::open();
  const auto* failure = std::get_if<X11Failure>(&opened);
  return failure == nullptr ? std::string() : failure->sentence;
}

TEST(X11ConnectionTest, SaysThatThereIsNoDisplay) {
  const Variable display("DISPLAY", nullptr);
  const Variable wayland("WAYLAND_DISPLAY", nullptr);
  EXPECT_EQ(refusal(), "Pellar needs an X11 display, and DISPLAY is not set.");
}

TEST(X11ConnectionTest, SaysThatWaylandWillNotDo) {
  const Variable display("DISPLAY", nullptr);
  const Variable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_NE(refusal().find("Wayland"), std::string::npos);
}

TEST(X11ConnectionTest, SaysWhichDisplayDoesNotAnswer) {
  const Variable display("DISPLAY", ":4242");
  EXPECT_NE(refusal().find("\":4242\""), std::string::npos);
}

class LostConnectionTest : public X11WorldTest {};

TEST_F(LostConnectionTest, IsToldOnceFromTheLoopAndReadsStayHarmless) {
  auto server = std::make_unique<e2e::Desktop>(e2e::WindowManager::openbox);
  std::optional<LinuxPlatform> other;
  int lost = 0;
  {
    const Variable display("DISPLAY", server->display().c_str());
    auto opened = X11Connection::open();
    other.emplace(std::move(std::get<std::unique_ptr<X11Connection>>(opened)), [&lost] { ++lost; });
  }
  EXPECT_FALSE(other->platform().screens.screens().empty());
  server->server().signal(SIGKILL);
  EXPECT_TRUE(wait([&lost] { return lost > 0; }));
  letPass(std::chrono::milliseconds(50));
  EXPECT_EQ(lost, 1);
  EXPECT_FALSE(other->platform().workspace.frontmostApplication().has_value());
}

}  // namespace
}  // namespace pellar::contract
