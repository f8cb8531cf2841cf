#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "platform/Accessibility.h"
#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/applications/SimElement.h"

namespace pellar {

// Round trips to other processes.
struct RoundTrips {
  int reads = 0;
  int writes = 0;
  int actions = 0;
  int batches = 0;  // one for each element whose attributes were fetched together
  int registrations = 0;
  [[nodiscard]] int total() const { return reads + writes + actions + batches + registrations; }
  friend bool operator==(const RoundTrips&, const RoundTrips&) = default;
};

// Accessibility of the simulated desktop. Every read, write and action is one round trip and takes as long as
// the application's quirks say; after willRead each of the attributes named is free once, until the loop
// turns or anything changes.
class SimAccessibility final : public Accessibility {
 public:
  // What a call waits for an application that does not answer.
  static constexpr std::chrono::seconds messagingTimeout{6};

  SimAccessibility(SimDesktop& desktop, SimMainLoop& loop) : desktop_(desktop), loop_(loop) {}

  [[nodiscard]] bool isTrusted() const override { return trusted_; }
  bool isTrustedPromptingUser() override;
  [[nodiscard]] Element applicationElement(ProcessId pid) override;
  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override;
  void set(const Element& element, std::string_view name, const AttributeValue& value) override;
  Performed perform(const Element& element, std::string_view action) override;
  [[nodiscard]] std::uint64_t unansweredReads() const override { return unanswered_; }
  void willRead(std::span<const Element> elements, std::span<const std::string_view> attributes) override;
  [[nodiscard]] std::unique_ptr<ElementObserver> observe(ProcessId pid,
                                                         std::function<void()> onNotification) override;
  [[nodiscard]] Subscription onceAtRest(const Element& window, std::function<void()> callback) override;

  // The user gives or takes the permission.
  void setTrusted(bool trusted) { trusted_ = trusted; }
  [[nodiscard]] int prompts() const { return prompts_; }

  [[nodiscard]] const RoundTrips& roundTrips() const { return roundTrips_; }
  void forgetRoundTrips() { roundTrips_ = {}; }
  [[nodiscard]] int liveObservers() const { return live_->observers; }
  [[nodiscard]] int liveRegistrations() const { return live_->registrations; }

  // What the program holds of other processes.
  struct Live {
    int observers = 0;
    int registrations = 0;
  };

 private:
  using Fetched = std::map<std::pair<WindowId, std::string>, std::optional<AttributeValue>, std::less<>>;

  // Waits for the application as long as it takes; false when it does not answer, or may not be asked.
  bool roundTrip(const SimElement& element, int& count);
  // The same for a read.
  bool askFor(const SimElement& element, int& count);
  [[nodiscard]] std::optional<AttributeValue> value(const SimElement& element, std::string_view name) const;
  [[nodiscard]] std::optional<AttributeValue> applicationValue(const SimApplicationState& application,
                                                               std::string_view name) const;
  [[nodiscard]] static std::optional<AttributeValue> windowValue(const SimWindowPointer& window,
                                                                 const SimApplicationState& owner,
                                                                 std::string_view name);
  [[nodiscard]] static std::optional<AttributeValue> menuValue(const SimMenuElement& menu,
                                                               const SimApplicationState& owner,
                                                               std::string_view name);
  Performed act(const SimElement& target, std::string_view action);
  Performed press(const SimMenuPointer& menu);
  [[nodiscard]] bool fetchedIsFresh() const {
    return fetchedTurn_ == loop_.turns() && fetchedRevision_ == desktop_.revision();
  }

  SimDesktop& desktop_;
  SimMainLoop& loop_;
  bool trusted_ = true;
  int prompts_ = 0;
  std::uint64_t unanswered_ = 0;
  RoundTrips roundTrips_;
  Fetched fetched_;
  std::uint64_t fetchedTurn_ = 0;
  std::uint64_t fetchedRevision_ = 0;
  std::shared_ptr<Live> live_ = std::make_shared<Live>();
};

}  // namespace pellar
