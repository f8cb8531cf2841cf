#include "tests/platform/linux/SharedDesktop.h"

#include <QApplication>
#include <cstdlib>
#include <stdexcept>

namespace pellar::contract {
namespace {

e2e::WindowManager chosenWindowManager() {
  const char* value = std::getenv("PELLAR_TEST_WM");
  const std::string name = value == nullptr ? "openbox" : value;
  for (const auto manager :
       {e2e::WindowManager::openbox, e2e::WindowManager::metacity, e2e::WindowManager::xfwm4}) {
    if (e2e::nameOf(manager) == name) return manager;
  }
  throw std::runtime_error("PELLAR_TEST_WM is no window manager of these tests: " + name);
}

}  // namespace

struct SharedDesktop::Parts {
  Parts() : desktop(chosenWindowManager()) {
    for (const auto& [name, value] : desktop.folders().environment(desktop.display())) {
      setenv(name.c_str(), value.c_str(), 1);
    }
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("QT_XCB_GL_INTEGRATION", "none", 1);
    setenv("QT_XCB_NO_MITSHM", "1", 1);
    setenv("QT_ENABLE_HIGHDPI_SCALING", "0", 1);
    setenv("QT_QPA_PLATFORMTHEME", "generic", 1);
    QApplication::setDesktopSettingsAware(false);
    QApplication::setQuitOnLastWindowClosed(false);
    application = std::make_unique<QApplication>(argumentCount, arguments);
  }

  e2e::Desktop desktop;
  char programName[7] = "pellar";
  int argumentCount = 1;
  char* arguments[2] = {programName, nullptr};
  std::unique_ptr<QApplication> application;  // depends-on: desktop
};

std::unique_ptr<SharedDesktop::Parts> SharedDesktop::parts_;

e2e::Desktop& SharedDesktop::get() {
  if (!parts_) parts_ = std::make_unique<Parts>();
  return parts_->desktop;
}

void SharedDesktop::end() {
  parts_.reset();
}

}  // namespace pellar::contract
