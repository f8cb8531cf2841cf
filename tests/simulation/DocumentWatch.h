#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace pellar {

// Watches the documents on the disk: the content of none may ever be gone, and the program may touch none but
// those that the user renames. Each document has a content of its own by which it is known again.
class DocumentWatch {
 public:
  DocumentWatch(std::filesystem::path home, std::filesystem::path programFolder)
      : home_(std::move(home)), programFolder_(std::move(programFolder)) {}

  // Content for a document that is opened next, unlike any other's.
  [[nodiscard]] std::string contentOfNext() { return "document " + std::to_string(++made_) + "\n"; }
  // The user, or an application, put a file there.
  void put(const std::filesystem::path& file) { put_.insert(file.string()); }
  // The user answered the question for another name.
  void renaming(const std::string& name) { names_.insert(name); }

  // What is wrong; nothing when all is there.
  [[nodiscard]] std::optional<std::string> compare();

 private:
  using Files = std::map<std::string, std::string>;  // content by path

  [[nodiscard]] Files look() const;
  [[nodiscard]] std::optional<std::string> strayFile() const;

  std::filesystem::path home_;
  std::filesystem::path programFolder_;
  std::size_t made_ = 0;
  std::set<std::string> put_;
  std::set<std::string> names_;
  Files last_;
};

}  // namespace pellar
