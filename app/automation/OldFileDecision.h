#pragma once

#include <string_view>

namespace pellar {

// What is known once an application has said that it saved a document under its new name. What is not said is
// taken for what keeps the old file.
struct OldFileEvidence {
  bool answered = false;  // it named open documents when it was asked afterwards
  bool stillOpen = true;  // one of them is the old file, or may be
  bool newIsEmpty = true;
  bool newLasts = false;  // the new file and its name are on the disk
  bool isNewToo = true;   // the old path leads to the new file
};

// What becomes of the old file of a renamed document.
enum class OldFile {
  removed,
  keptUnconfirmed,  // the application did not say that it saved
  keptUnanswered,
  keptOpen,
  keptBesideEmpty,
  keptBesideUnflushed,
  keptAsTheSame,
  keptIrremovable,
};

// The old file goes only when everything proves that its content is in the new one.
[[nodiscard]] constexpr OldFile decideOldFile(const OldFileEvidence& evidence) {
  if (!evidence.answered) return OldFile::keptUnanswered;
  if (evidence.isNewToo) return OldFile::keptAsTheSame;
  if (evidence.stillOpen) return OldFile::keptOpen;
  if (evidence.newIsEmpty) return OldFile::keptBesideEmpty;
  if (!evidence.newLasts) return OldFile::keptBesideUnflushed;
  return OldFile::removed;
}

// Why, for the log; empty when it is removed.
[[nodiscard]] constexpr std::string_view reason(OldFile decision) {
  switch (decision) {
    case OldFile::removed:
      break;
    case OldFile::keptUnconfirmed:
      return "the application did not confirm the new file";
    case OldFile::keptUnanswered:
      return "the application did not name its open documents";
    case OldFile::keptOpen:
      return "the document may still be open";
    case OldFile::keptBesideEmpty:
      return "the new file is empty";
    case OldFile::keptBesideUnflushed:
      return "the new file may not be on the disk";
    case OldFile::keptAsTheSame:
      return "the new name leads to it";
    case OldFile::keptIrremovable:
      return "it cannot be removed";
  }
  return "";
}

}  // namespace pellar
