#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "app/strip/windows/PictureTicket.h"

namespace pellar {
namespace {

TEST(PictureTicket, ALaterTicketOvertakesEveryEarlierOne) {
  PictureTickets tickets;
  const auto first = tickets.draw();
  EXPECT_FALSE(first.overtaken());
  const auto second = tickets.draw();
  const auto third = tickets.draw();
  EXPECT_TRUE(first.overtaken());
  EXPECT_TRUE(second.overtaken());
  EXPECT_FALSE(third.overtaken());
}

TEST(PictureTicket, StepsAreTakenInTurn) {
  PictureTickets tickets;
  std::vector<int> steps;
  tickets.draw().inTurn([&] { steps.push_back(1); }, [&] { steps.push_back(2); },
                        [&] { steps.push_back(3); });
  EXPECT_EQ(steps, (std::vector{1, 2, 3}));
}

TEST(PictureTicket, TheRestIsLeftToThePictureThatCameMeanwhile) {
  PictureTickets tickets;
  std::vector<int> steps;
  tickets.draw().inTurn(
      [&] { steps.push_back(1); },
      [&] { tickets.draw().inTurn([&] { steps.push_back(11); }, [&] { steps.push_back(12); }); },
      [&] { steps.push_back(3); });
  EXPECT_EQ(steps, (std::vector{1, 11, 12}));
}

TEST(PictureTicket, OneThatIsOvertakenBeforeItsFirstStepTakesNone) {
  PictureTickets tickets;
  const auto first = tickets.draw();
  static_cast<void>(tickets.draw());
  bool taken = false;
  first.inTurn([&] { taken = true; });
  EXPECT_FALSE(taken);
}

TEST(PictureTicket, ATicketMayOutlastWhatGaveItOut) {
  std::optional<PictureTickets> tickets(std::in_place);
  const auto ticket = tickets->draw();
  tickets.reset();
  EXPECT_FALSE(ticket.overtaken());
}

}  // namespace
}  // namespace pellar
