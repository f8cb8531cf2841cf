#include <string>

#include "platform/Pasteboard.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

class PasteboardContract : public ContractTest {
 protected:
  Pasteboard& pasteboard() { return world().platform().pasteboard; }
};

TEST_F(PasteboardContract, APasteGivesTheText) {
  const std::string path = "/home/ann/Caf\xc3\xa9 & R\xc3\xa9sum\xc3\xa9\n2.txt";
  pasteboard().setString(path);
  EXPECT_EQ(world().pasted(), path);
}

TEST_F(PasteboardContract, ALaterTextReplacesAnEarlierOne) {
  pasteboard().setString("first");
  EXPECT_EQ(world().pasted(), "first");
  pasteboard().setString("second");
  EXPECT_EQ(world().pasted(), "second");
  EXPECT_EQ(world().pasted(), "second") << "and stays";
}

TEST_F(PasteboardContract, ALongTextArrivesWhole) {
  std::string text;
  for (int line = 0; line < 5000; ++line) text += "line " + std::to_string(line) + "\n";
  pasteboard().setString(text);
  EXPECT_EQ(world().pasted(), text);
}

}  // namespace pellar::contract
