#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <optional>

namespace pellar {

// An environment variable that is changed for as long as this lives. Only while no other thread runs that
// reads the environment.
class TemporaryVariable {
 public:
  TemporaryVariable(const char* name, const QByteArray& value) : name_(name) {
    if (qEnvironmentVariableIsSet(name)) before_ = qgetenv(name);
    qputenv(name, value);
  }
  ~TemporaryVariable() {
    if (before_) {
      qputenv(name_, *before_);
    } else {
      qunsetenv(name_);
    }
  }
  TemporaryVariable(const TemporaryVariable&) = delete;
  TemporaryVariable& operator=(const TemporaryVariable&) = delete;

 private:
  const char* name_;
  std::optional<QByteArray> before_;
};

}  // namespace pellar
