#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/OfficeApp.h"
#include "platform/sim/office/ScriptValue.h"
#include "platform/sim/office/SimOffice.h"

namespace pellar {

// The application that a `tell` block addresses, as one process of it. Every call is one event sent to it,
// and throws a ScriptError when that fails.
class ScriptedApplication {
 public:
  // Throws when the application is not running.
  ScriptedApplication(SimOffice& office, OfficeApp app);

  [[nodiscard]] ScriptValue everyDocument();
  // `property` is "name", "full name", "path" or "saved".
  [[nodiscard]] ScriptValue firstDocumentWhose(std::string_view property, const ScriptValue& value);
  [[nodiscard]] ScriptValue property(std::string_view property, const ScriptValue& document);
  void activate();
  ScriptValue makeDocument();
  ScriptValue makeMessage();
  void openMessage(const ScriptValue& message);
  void save(const ScriptValue& document);
  void saveAs(const ScriptValue& document, const std::string& posixPath);

 private:
  void send(const std::string& event, const std::function<void()>& handle);
  // The document that a value stands for, when it can be touched.
  [[nodiscard]] SimDocumentPointer documentOf(const ScriptValue& value) const;
  [[nodiscard]] ScriptValue read(std::string_view property, const ScriptValue& document) const;

  SimOffice& office_;
  OfficeApp app_;
  ProcessId pid_;
};

}  // namespace pellar
