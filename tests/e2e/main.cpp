#include <gtest/gtest.h>

#include "tests/e2e/Process.h"

namespace {

// After each test, when its desktop is gone.
class NothingIsLeft : public ::testing::EmptyTestEventListener {
  void OnTestEnd(const ::testing::TestInfo& /*test*/) override {
    const auto left = pellar::e2e::childrenLeft();
    if (left.empty()) return;
    ADD_FAILURE() << "left running: " << ::testing::PrintToString(left);
    pellar::e2e::killChildrenLeft();
  }
};

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  pellar::e2e::adoptOrphans();
  ::testing::UnitTest::GetInstance()->listeners().Append(new NothingIsLeft);
  return RUN_ALL_TESTS();
}
