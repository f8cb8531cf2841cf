#include <gtest/gtest.h>

#include "app/tracking/PathInTitle.h"

namespace pellar {
namespace {

const std::string path = "/d/Plan.docx";

TEST(PathInTitle, ATitleThatNamesTheFileNoMoreShowsAnotherOne) {
  PathInTitle title;
  title.look("Plan.docx", path);
  EXPECT_TRUE(title.names());
  EXPECT_FALSE(title.isOutdated());
  title.look("Report.docx", path);
  EXPECT_FALSE(title.names());
  EXPECT_TRUE(title.isOutdated());
  title.look("Notes.docx", path);
  EXPECT_TRUE(title.isOutdated()) << "once is enough";
  title.look("Plan.docx", path);
  EXPECT_FALSE(title.isOutdated());
}

TEST(PathInTitle, ATitleThatNeverNamedItSaysNothing) {
  PathInTitle title;
  EXPECT_FALSE(title.names());
  title.look("My thoughts", path);
  title.look("My other thoughts", path);
  EXPECT_FALSE(title.names());
  EXPECT_FALSE(title.isOutdated());
}

}  // namespace
}  // namespace pellar
