#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <optional>

namespace pellar {

// An environment variable that is changed, or taken away, for as long as this lives. Only while no other
// thread runs that reads the environment.
class TemporaryVariable {
 public:
  // Absent: the variable is not set.
  using Value = std::optional<QByteArray>;

  TemporaryVariable(const char* name, const Value& value) : name_(name) {
    if (qEnvironmentVariableIsSet(name)) before_ = qgetenv(name);
    set(value);
  }
  ~TemporaryVariable() { set(before_); }
  TemporaryVariable(const TemporaryVariable&) = delete;
  TemporaryVariable& operator=(const TemporaryVariable&) = delete;

 private:
  void set(const Value& value) {
    if (value) {
      qputenv(name_, *value);
    } else {
      qunsetenv(name_);
    }
  }

  const char* name_;
  Value before_;
};

}  // namespace pellar
