#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/Platform.h"
#include "platform/PropertyLists.h"
#include "platform/ScriptRunner.h"
#include "platform/Subscription.h"

namespace pellar {

// The ports in whose calls the main thread may wait for another program or for the user: a script for the
// application that it addresses, the first look into another program's lists for a permission. What `waiting`
// returns is kept for as long as such a call takes. Main thread only.
class WaitingPorts {
 public:
  using Scope = std::function<Subscription()>;

  // The same platform with these ports in it, which every copy of it owns.
  [[nodiscard]] static Platform in(const Platform& platform, const Scope& waiting);

  WaitingPorts(const Platform& platform, const Scope& waiting)
      : scripts_(platform.scripts, waiting), propertyLists_(platform.propertyLists, waiting) {}
  WaitingPorts(const WaitingPorts&) = delete;
  WaitingPorts& operator=(const WaitingPorts&) = delete;

 private:
  class Scripts final : public ScriptRunner {
   public:
    Scripts(ScriptRunner& runner, Scope waiting) : runner_(runner), waiting_(std::move(waiting)) {}
    [[nodiscard]] ScriptResult run(const std::string& source) override {
      const auto scope = waiting_();
      return runner_.run(source);
    }

   private:
    ScriptRunner& runner_;
    Scope waiting_;
  };

  class Lists final : public PropertyLists {
   public:
    Lists(PropertyLists& lists, Scope waiting) : lists_(lists), waiting_(std::move(waiting)) {}
    [[nodiscard]] std::optional<PropertyListValue::Dictionary> read(
        const std::filesystem::path& file) override {
      const auto scope = waiting_();
      return lists_.read(file);
    }

   private:
    PropertyLists& lists_;
    Scope waiting_;
  };

  Scripts scripts_;
  Lists propertyLists_;
};

}  // namespace pellar
