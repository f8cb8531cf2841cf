#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace pellar {

// What must be in the program's file, from what the user chose and was not told to have failed. Reads the
// file itself.
class SavedState {
 public:
  explicit SavedState(std::filesystem::path file) : file_(std::move(file)) {}

  using Tags = std::map<std::string, std::string>;  // colours by key
  struct Content {
    Tags tags;
    std::map<std::string, std::vector<std::string>> groups;
    std::map<std::string, double> recent;
    std::set<std::string> hiddenApps;
    std::map<std::string, bool> apps;
    bool allApps = true;
    bool autoUpdateCheck = true;
    bool launchAtLogin = false;
    int autoSaveMinutes = 0;
    std::string acceptedTerms;
    friend bool operator==(const Content&, const Content&) = default;
  };

  // Takes what is in the file for right.
  void adopt();
  // The user gave the window with these keys a colour, or took it away.
  void tagged(const std::set<std::string>& keys, const std::optional<std::string>& color);
  // The user answered the question for another name of a document: its colour may move to the new file.
  void renaming(const std::string& name) { newNames_.insert(name); }
  // What was chosen may or may not have come about: once, the file tells.
  void uncertain() { uncertain_ = true; }
  // The program was killed: what was chosen since the last comparison came about, or did not.
  void wasKilled() { wasKilled_ = true; }
  // From now on a file may be used at an earlier time than before.
  void clockIsSet() { clockIsSet_ = true; }
  // A document that had this key has another file, and its colour with it.
  void renamed(const std::string& from, const std::string& to);
  [[nodiscard]] bool isWhole() const { return read().has_value(); }
  // Whether the file names this document, in any list.
  [[nodiscard]] bool knows(const std::string& document) const;
  // The user pressed where the auto-save tool may be.
  void mayToggleAutoSave() { mayToggleAutoSave_ = true; }
  void grouped(const std::string& name, std::vector<std::set<std::optional<std::string>>> files);
  // The user changed a setting.
  void chose(const std::function<void(Content&)>& change) {
    change(content_);
    chosen_ = true;
  }
  [[nodiscard]] const Content& expected() const { return content_; }

  // The colour that the window with these keys has, one of several where it is not sure under which.
  [[nodiscard]] std::set<std::optional<std::string>> colorsOf(const std::set<std::string>& keys) const;
  // All of them, in words.
  [[nodiscard]] std::string describedTags() const { return difference(content_.tags, {}); }
  [[nodiscard]] bool follows(const std::string& bundleId) const;

  // What is wrong with the file; nothing when it is as it must be.
  [[nodiscard]] std::optional<std::string> compare();

 private:
  [[nodiscard]] std::optional<Content> read() const;
  [[nodiscard]] std::string identity() const;
  [[nodiscard]] std::optional<std::string> compareWith(const Content& read) const;
  [[nodiscard]] static std::string difference(const Tags& a, const Tags& b);
  [[nodiscard]] std::vector<Tags> withOneRenamed(const Tags& tags, const Tags& read) const;
  [[nodiscard]] bool tagsAreRight(const Content& read) const;
  [[nodiscard]] bool groupsAreRight(const Content& read) const;

  std::filesystem::path file_;
  Content content_;
  Content last_;  // as it was read last
  bool wasKilled_ = false;
  bool clockIsSet_ = false;
  bool uncertain_ = false;
  bool chosen_ = false;  // since the last comparison, as the next
  bool mayToggleAutoSave_ = false;
  std::string lastSeen_;  // which file that was

  struct Tagging {
    std::set<std::string> keys;
    std::optional<std::string> color;
  };
  std::optional<Tagging> tagging_;  // since the last comparison
  struct Grouping {
    std::string name;
    std::vector<std::set<std::optional<std::string>>> files;
  };
  std::optional<Grouping> grouping_;  // likewise
  std::set<std::string> newNames_;
};

}  // namespace pellar
