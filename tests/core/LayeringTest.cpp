#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

#include "platform/sim/system/TemporaryFolder.h"
#include "tests/support/Files.h"

namespace pellar {
namespace {

namespace fs = std::filesystem;
using test::put;

struct Verdict {
  bool passed = false;
  std::string said;
};

Verdict check(const fs::path& tree) {
  const std::string command =
      std::string(PELLAR_SOURCE_FOLDER "/scripts/check-layers ") + tree.string() + " 2>&1";
  FILE* const output = ::popen(command.c_str(), "r");
  Verdict verdict;
  std::array<char, 4096> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), output)) {
    verdict.said.append(buffer.data(), count);
  }
  verdict.passed = ::pclose(output) == 0;
  return verdict;
}

// A tree of one file, checked.
Verdict checkFile(const std::string& name, const std::string& text) {
  const TemporaryFolder tree;
  put(tree / name, text);
  if (name.starts_with("tests/"))
    put(tree / "tests/CMakeLists.txt", "add_executable(t " + name.substr(6) + ")");
  return check(tree.path());
}

void expectRefused(const std::string& name, const std::string& text) {
  const Verdict verdict = checkFile(name, text);
  EXPECT_FALSE(verdict.passed) << text;
  EXPECT_NE(verdict.said.find(name), std::string::npos) << "the file is named: " << verdict.said;
}

void expectAccepted(const std::string& name, const std::string& text) {
  const Verdict verdict = checkFile(name, text);
  EXPECT_TRUE(verdict.passed) << verdict.said;
}

TEST(Layering, CoreIncludesNothingOfOursFromOutside) {
  expectRefused("core/A.h", "#include \"app/strip/TabItem.h\"\n");
  expectRefused("core/A.cpp", "#include \"platform/Canvas.h\"\n");
  expectRefused("core/A.cpp", "  #  include <platform/Canvas.h>\n");
  expectRefused("core/A.cpp", "#include \"../app/A.h\"\n");
  expectAccepted("core/A.cpp", "#include <unistd.h>\n#include <re2/re2.h>\n#include \"core/Log.h\"\n");
}

TEST(Layering, AppIncludesNoAdapterAndNoSystemHeader) {
  for (const std::string include :
       {"\"platform/linux/X.h\"", "\"platform/sim/SimMac.h\"", "<platform/linux/X.h>", "<unistd.h>",
        "<X11/Xlib.h>", "<QWidget>", "<xcb/xcb.h>", "<sys/stat.h>", "<AppKit/AppKit.h>",
        "<nlohmann/json.hpp>", "\"tests/support/X.h\"", "\"TabItem.h\"", "\"app/../platform/linux/X.h\"",
        "\"platform/../bench/X.h\""}) {
    expectRefused("app/strip/A.cpp", "#include " + include + "\n");
  }
  expectRefused("app/strip/A.mm", "#import <AppKit/AppKit.h>\n");
  expectAccepted("app/strip/A.cpp",
                 "#include <vector>\n#include <cmath>\n#include \"app/strip/A.h\"\n#include \"core/Log.h\"\n"
                 "#include \"platform/Canvas.h\"\n");
}

TEST(Layering, RoomsIncludeNoRoomAboveThem) {
  expectRefused("app/panels/A.cpp", "#include \"app/strip/tabs/A.h\"\n");
  expectAccepted("app/panels/A.cpp", "#include \"app/strip/place/A.h\"\n");
  expectRefused("app/strip/windows/A.cpp", "#include \"app/strip/documents/A.h\"\n");
  expectAccepted("app/strip/documents/A.cpp", "#include \"app/strip/windows/A.h\"\n");
  expectRefused("app/strip/tabs/A.cpp", "#include \"app/strip/StripController.h\"\n");
  expectAccepted("app/shell/A.cpp", "#include \"app/strip/StripController.h\"\n");
  expectRefused("app/strip/attic/A.h", "");
  for (const std::string world : {"shared", "sim", "linux", "mac"}) {
    const std::string tree = "platform/" + world + "/";
    expectRefused(tree + "panel/A.cpp", "#include \"" + tree + "desktop/A.h\"\n");
    expectAccepted(tree + "desktop/A.cpp", "#include \"" + tree + "panel/A.h\"\n");
    expectRefused(tree + "A.mm", "#import \"platform/elsewhere/panel/A.h\"\n");
    expectRefused(tree + "panel/A.cpp", "#include \"app/shell/AppDelegate.h\"\n");
    expectRefused(tree + "cellar/A.h", "");
  }
}

// Put together from parts, lest this file be a breach itself.
const std::string now = std::string("::") + "now()";
const std::string pause = std::string("sleep") + "_for(1s)";
const std::string chance = std::string("random") + "_device d;";

TEST(Layering, TimeAndChanceAreInjected) {
  for (const std::string file : {"core/A.cpp", "app/A.cpp", "tests/app/A.cpp"}) {
    expectRefused(file, "auto t = std::chrono::steady_clock" + now + ";\n");
    expectRefused(file, "auto t = system_clock" + now + ";\n");
    expectRefused(file, "std::this_thread::" + pause + ";\n");
    expectRefused(file, std::string("us") + "leep(5);\n");
    expectRefused(file, "  ::" + std::string("sle") + "ep(5);\n");
    expectRefused(file, "std::" + chance + "\n");
    expectAccepted(file, "// no steady_clock" + now + " here\nmac.sleepUntilMorning();\n");
  }
}

TEST(Layering, TestsOfARealDesktopMayAskTheTimeButNotSleep) {
  expectAccepted("tests/e2e/A.cpp", "auto t = std::chrono::steady_clock" + now + ";\n");
  expectRefused("tests/e2e/A.cpp", "std::this_thread::" + pause + ";\n");
}

TEST(Layering, EveryTestFileIsBuilt) {
  const TemporaryFolder tree;
  put(tree / "tests/core/ATest.cpp", "");
  put(tree / "tests/core/BTest.cpp", "");
  put(tree / "tests/core/deep/CTest.cpp", "");
  put(tree / "tests/core/CMakeLists.txt",
      "add_executable(t\n  ATest.cpp\n  # BTest.cpp\n  deep/CTest.cpp)\n");
  const Verdict verdict = check(tree.path());
  EXPECT_FALSE(verdict.passed);
  EXPECT_NE(verdict.said.find("tests/core/BTest.cpp"), std::string::npos) << verdict.said;
  EXPECT_EQ(verdict.said.find("ATest.cpp"), std::string::npos) << verdict.said;
  EXPECT_EQ(verdict.said.find("CTest.cpp"), std::string::npos) << verdict.said;
  put(tree / "tests/core/CMakeLists.txt", "add_executable(t ATest.cpp BTest.cpp deep/CTest.cpp)\n");
  EXPECT_TRUE(check(tree.path()).passed);
}

}  // namespace
}  // namespace pellar
