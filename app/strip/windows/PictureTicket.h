#pragma once

#include <cstdint>
#include <memory>
#include <utility>

namespace pellar {

// Held by who works on a picture. Calls to the system run nested loops that deliver the next picture; its
// ticket overtakes all earlier ones, and their holders leave the rest of the work to it. Main thread only.
class PictureTicket {
 public:
  [[nodiscard]] bool overtaken() const { return *latest_ != number_; }

  // Takes the steps one after another until a later ticket is drawn.
  template <class... Steps>
  void inTurn(Steps&&... steps) const {
    static_cast<void>((taken(steps) && ...));
  }

 private:
  friend class PictureTickets;
  PictureTicket(std::shared_ptr<const std::uint64_t> latest, std::uint64_t number)
      : latest_(std::move(latest)), number_(number) {}

  template <class Step>
  [[nodiscard]] bool taken(Step& step) const {
    if (!overtaken()) step();
    return !overtaken();
  }

  std::shared_ptr<const std::uint64_t> latest_;  // the ticket may outlast who gave it out
  std::uint64_t number_;
};

// Gives out the tickets.
class PictureTickets {
 public:
  // The ticket of a new picture; every earlier one is overtaken.
  [[nodiscard]] PictureTicket draw() { return {latest_, ++*latest_}; }

 private:
  std::shared_ptr<std::uint64_t> latest_ = std::make_shared<std::uint64_t>(0);
};

}  // namespace pellar
