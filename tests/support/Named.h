#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace pellar::test {

// A parameter of a test that is told by its name, not by its bytes.
template <typename Value>
struct Named {
  std::string name;  // a word, as tests' names take
  Value value;

  friend void PrintTo(const Named& named, std::ostream* stream) { *stream << named.name; }
};

template <typename Value>
std::string byName(const testing::TestParamInfo<Named<Value>>& info) {
  return info.param.name;
}

}  // namespace pellar::test
