#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace pellar {

// What an Office application answered when it was asked for its open documents. Documents that were never
// saved, or that could not be read, are not among them.
class OpenDocuments {
 public:
  struct Document {
    std::string name;  // as the application calls it
    std::string path;  // as answered: POSIX, or a mangled address of a document in the cloud
  };
  // The file of the document that a window shows.
  struct Match {
    std::string path;     // absolute
    bool isOnly = false;  // no other open document could be the one meant
  };

  OpenDocuments() = default;
  explicit OpenDocuments(std::vector<Document> documents) : all_(std::move(documents)) {}

  // In the order answered. Empty also when there was no answer.
  [[nodiscard]] const std::vector<Document>& all() const { return all_; }
  // The path of each name as answered; of several documents of one name that of the last.
  [[nodiscard]] std::unordered_map<std::string, std::string> pathsByName() const;

  // The document of a window of this title: the one whose whole name stands there, else one that has the same
  // label. Of several that serve equally the last; one without a file on this machine is none.
  [[nodiscard]] std::optional<Match> match(std::string_view title) const;

  // Whether renaming the document of a window of this title from `path` may touch a document other than the
  // one in that file: another open one bears its name, or the answer names another file for it or for the
  // title. Nothing said about it is no reason.
  [[nodiscard]] bool contradict(std::string_view title, const std::string& path) const;

  // Whether an open document is that file, or may be: it bears the file's name and no path.
  [[nodiscard]] bool mayHold(const std::string& path) const;

 private:
  std::vector<Document> all_;
};

// Whether two paths lead to one file; also when they are spelt alike and nothing is there.
[[nodiscard]] bool isSameFile(const std::string& a, const std::string& b);

}  // namespace pellar
