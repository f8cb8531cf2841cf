#include <gtest/gtest.h>

#include <vector>

#include "app/automation/OldFileDecision.h"

namespace pellar {
namespace {

// Everything proves that the old file's content is in the new one.
constexpr OldFileEvidence proven{
    .answered = true, .stillOpen = false, .newIsEmpty = false, .newLasts = true, .isNewToo = false};

OldFileEvidence with(bool OldFileEvidence::*line, bool value) {
  OldFileEvidence evidence = proven;
  evidence.*line = value;
  return evidence;
}

TEST(OldFileDecision, TheOldFileGoesWhenEverythingSpeaksForIt) {
  EXPECT_EQ(decideOldFile(proven), OldFile::removed);
}

TEST(OldFileDecision, WithoutAnAnswerBothStay) {
  EXPECT_EQ(decideOldFile(with(&OldFileEvidence::answered, false)), OldFile::keptUnanswered);
}

TEST(OldFileDecision, AnOpenDocumentsFileStays) {
  EXPECT_EQ(decideOldFile(with(&OldFileEvidence::stillOpen, true)), OldFile::keptOpen);
}

TEST(OldFileDecision, NothingGoesForAnEmptyFile) {
  EXPECT_EQ(decideOldFile(with(&OldFileEvidence::newIsEmpty, true)), OldFile::keptBesideEmpty);
}

TEST(OldFileDecision, NothingGoesForAFileThatAPowerFailureCouldTake) {
  EXPECT_EQ(decideOldFile(with(&OldFileEvidence::newLasts, false)), OldFile::keptBesideUnflushed);
}

TEST(OldFileDecision, ASecondNameOfTheNewFileStays) {
  EXPECT_EQ(decideOldFile(with(&OldFileEvidence::isNewToo, true)), OldFile::keptAsTheSame);
}

TEST(OldFileDecision, WhatIsNotLookedIntoRemovesNothing) {
  EXPECT_EQ(decideOldFile({}), OldFile::keptUnanswered);
  const auto saying = [](auto... lines) {
    OldFileEvidence evidence;
    ((evidence.*lines = proven.*lines), ...);
    return decideOldFile(evidence);
  };
  using Evidence = OldFileEvidence;
  EXPECT_EQ(saying(&Evidence::stillOpen, &Evidence::newIsEmpty, &Evidence::newLasts, &Evidence::isNewToo),
            OldFile::keptUnanswered);
  EXPECT_EQ(saying(&Evidence::answered, &Evidence::newIsEmpty, &Evidence::newLasts, &Evidence::isNewToo),
            OldFile::keptOpen);
  EXPECT_EQ(saying(&Evidence::answered, &Evidence::stillOpen, &Evidence::newLasts, &Evidence::isNewToo),
            OldFile::keptBesideEmpty);
  EXPECT_EQ(saying(&Evidence::answered, &Evidence::stillOpen, &Evidence::newIsEmpty, &Evidence::isNewToo),
            OldFile::keptBesideUnflushed);
  EXPECT_EQ(saying(&Evidence::answered, &Evidence::stillOpen, &Evidence::newIsEmpty, &Evidence::newLasts),
            OldFile::keptAsTheSame);
}

TEST(OldFileDecision, OnlyOneOfAllCasesRemovesIt) {
  int removed = 0;
  for (int bits = 0; bits < 32; ++bits) {
    const OldFileEvidence evidence{(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0,
                                   (bits & 16) != 0};
    if (decideOldFile(evidence) == OldFile::removed) ++removed;
  }
  EXPECT_EQ(removed, 1);
}

TEST(OldFileDecision, WhateverIsKeptHasItsReason) {
  for (const auto kept :
       {OldFile::keptUnconfirmed, OldFile::keptUnanswered, OldFile::keptOpen, OldFile::keptBesideEmpty,
        OldFile::keptBesideUnflushed, OldFile::keptAsTheSame, OldFile::keptIrremovable})
    EXPECT_FALSE(reason(kept).empty());
  EXPECT_TRUE(reason(OldFile::removed).empty());
}

}  // namespace
}  // namespace pellar
