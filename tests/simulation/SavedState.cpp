#include "tests/simulation/SavedState.h"

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

namespace pellar {
namespace {

constexpr std::size_t mostRecent = 300;

}  // namespace

std::optional<SavedState::Content> SavedState::read() const {
  std::ifstream stream(file_);
  const auto json = nlohmann::json::parse(stream, nullptr, false);
  if (!json.is_object()) return std::nullopt;
  Content content;
  try {
    const auto& settings = json.at("settings");
    json.at("tags").get_to(content.tags);
    json.at("groups").get_to(content.groups);
    json.at("recent").get_to(content.recent);
    settings.at("hiddenApps").get_to(content.hiddenApps);
    settings.at("apps").get_to(content.apps);
    settings.at("allApps").get_to(content.allApps);
    settings.at("autoUpdateCheck").get_to(content.autoUpdateCheck);
    settings.at("launchAtLogin").get_to(content.launchAtLogin);
    settings.at("autoSaveMinutes").get_to(content.autoSaveMinutes);
    settings.at("acceptedEulaVersion").get_to(content.acceptedTerms);
  } catch (const nlohmann::json::exception&) {
    return std::nullopt;
  }
  return content;
}

// Each save brings a new file.
std::string SavedState::identity() const {
  struct ::stat status {};
  if (::stat(file_.c_str(), &status) != 0) return {};
  std::error_code unknown;
  const auto written = std::chrono::duration_cast<std::chrono::nanoseconds>(
      std::filesystem::last_write_time(file_, unknown).time_since_epoch());
  return std::to_string(status.st_ino) + " " + std::to_string(written.count()) + " " +
         std::to_string(status.st_size);
}

// Those of one that the other does not have.
std::string SavedState::difference(const Tags& a, const Tags& b) {
  std::string text;
  for (const auto& [key, value] : a)
    if (const auto found = b.find(key); found == b.end() || found->second != value)
      text += " [" + key + ": " + value + "]";
  return text;
}

void SavedState::adopt() {
  if (auto content = read()) content_ = last_ = std::move(*content);
}

void SavedState::renamed(const std::string& from, const std::string& to) {
  auto entry = content_.tags.extract(from);
  if (entry) content_.tags.insert_or_assign(to, entry.mapped());
}

bool SavedState::knows(const std::string& document) const {
  const auto now = read();
  return now && (now->recent.contains(document) || std::ranges::any_of(now->groups, [&](const auto& group) {
                   return std::ranges::find(group.second, document) != group.second.end();
                 }));
}

void SavedState::tagged(const std::set<std::string>& keys, const std::optional<std::string>& color) {
  if (tagging_) uncertain_ = true;
  tagging_ = Tagging{keys, color};
}

void SavedState::grouped(const std::string& name, std::vector<std::set<std::optional<std::string>>> files) {
  if (grouping_) uncertain_ = true;
  grouping_ = Grouping{name, std::move(files)};
}

std::set<std::optional<std::string>> SavedState::colorsOf(const std::set<std::string>& keys) const {
  std::set<std::optional<std::string>> colors;
  for (const auto& key : keys) {
    const auto found = content_.tags.find(key);
    colors.insert(found == content_.tags.end() ? std::nullopt : std::optional(found->second));
  }
  return colors;
}

bool SavedState::follows(const std::string& bundleId) const {
  if (content_.hiddenApps.contains(bundleId)) return false;
  if (bundleId != "com.microsoft.Word") return content_.allApps;
  const auto word = content_.apps.find("word");
  return word == content_.apps.end() || word->second;
}

// The colours, and what they are when a rename takes one along to a file of a name that the user gave.
std::vector<SavedState::Tags> SavedState::withOneRenamed(const Tags& tags, const Tags& read) const {
  std::vector<Tags> all{tags};
  std::set<std::string> files;
  for (const auto* each : {&tags, &read})
    for (const auto& [file, color] : *each) files.insert(file);
  if (tagging_) files.insert(tagging_->keys.begin(), tagging_->keys.end());
  for (const auto& to : files) {
    if (!newNames_.contains(std::filesystem::path(to).stem().string())) continue;
    for (const auto& [from, color] : tags) {
      if (from == to) continue;
      auto after = tags;
      after.erase(from);
      after.insert_or_assign(to, color);
      all.push_back(std::move(after));
    }
  }
  return all;
}

// One tagging changes one entry and no other. A rename may end before it and after it.
bool SavedState::tagsAreRight(const Content& read) const {
  if (read.tags == content_.tags && !tagging_) return true;
  for (const auto& before : withOneRenamed(content_.tags, read.tags)) {
    if (!tagging_) {
      if (read.tags == before) return true;
      continue;
    }
    for (const auto& key : tagging_->keys) {
      auto tagged = before;
      if (tagging_->color) {
        tagged.insert_or_assign(key, *tagging_->color);
      } else {
        tagged.erase(key);
      }
      const auto renamed = withOneRenamed(tagged, read.tags);
      if (std::ranges::find(renamed, read.tags) != renamed.end()) return true;
    }
  }
  return false;
}

bool SavedState::groupsAreRight(const Content& read) const {
  if (!grouping_) return read.groups == content_.groups;
  auto others = content_.groups;
  others.erase(grouping_->name);
  auto readOthers = read.groups;
  readOthers.erase(grouping_->name);
  if (others != readOthers) return false;
  const auto group = read.groups.find(grouping_->name);
  // Files in the order of the tabs; one that is not known for sure may be missing.
  std::size_t at = 0;
  bool mayBeEmpty = true;
  for (const auto& files : grouping_->files) {
    const bool here = group != read.groups.end() && at < group->second.size() &&
                      files.contains(std::optional(group->second[at]));
    if (here) {
      ++at;
    } else if (!files.contains(std::nullopt)) {
      mayBeEmpty = false;
      break;
    }
  }
  if (group == read.groups.end()) return mayBeEmpty;
  return mayBeEmpty && at == group->second.size();
}

std::optional<std::string> SavedState::compareWith(const Content& read) const {
  if (!tagsAreRight(read)) {
    std::string wrong = "the colours in the file: missing or other" + difference(content_.tags, read.tags) +
                        ", instead" + difference(read.tags, content_.tags);
    if (!tagging_) return wrong;
    wrong += "; just chosen " + tagging_->color.value_or("none") + " for";
    for (const auto& key : tagging_->keys) wrong += " " + key;
    return wrong;
  }
  if (!groupsAreRight(read)) {
    std::string wrong = "the groups in the file are";
    for (const auto& [name, files] : read.groups) {
      wrong += " " + name + ":";
      for (const auto& each : files) wrong += " [" + each + "]";
    }
    if (!grouping_) return wrong;
    wrong += "; just saved as " + grouping_->name + ":";
    for (const auto& each : grouping_->files) wrong += " [" + (*each.rbegin()).value_or("no file") + "]";
    return wrong;
  }
  if (read.hiddenApps != content_.hiddenApps || read.apps != content_.apps ||
      read.allApps != content_.allApps || read.autoUpdateCheck != content_.autoUpdateCheck ||
      read.launchAtLogin != content_.launchAtLogin || read.autoSaveMinutes != content_.autoSaveMinutes ||
      read.acceptedTerms != content_.acceptedTerms)
    return "the settings in the file";
  if (read.recent.size() > mostRecent) return "more recent files in the file than are kept";
  if (read.recent.size() == mostRecent) return std::nullopt;
  for (const auto& [path, time] : content_.recent) {
    const auto found = read.recent.find(path);
    if (found == read.recent.end() || (found->second < time && !clockIsSet_))
      return "a recent file is forgotten: " + path;
  }
  return std::nullopt;
}

std::optional<std::string> SavedState::compare() {
  const std::string now = identity();
  if (now == lastSeen_ && !wasKilled_ && !tagging_ && !grouping_ && !uncertain_ && !chosen_) {
    mayToggleAutoSave_ = false;
    return std::nullopt;
  }
  auto content = read();
  if (!content) return "the state file cannot be read";
  // On is once a minute, whatever it was before it went off.
  if (mayToggleAutoSave_ && content->autoSaveMinutes == (content_.autoSaveMinutes == 0 ? 1 : 0))
    content_.autoSaveMinutes = content->autoSaveMinutes;
  // Recent files may have been entered before it was killed.
  auto sameButRecent = last_;
  sameButRecent.recent = content->recent;
  const bool old = wasKilled_ && *content == sameButRecent;
  const auto wrong = uncertain_ || old ? std::nullopt : compareWith(*content);
  content_ = last_ = std::move(*content);
  wasKilled_ = false;
  tagging_.reset();
  grouping_.reset();
  uncertain_ = chosen_ = mayToggleAutoSave_ = false;
  lastSeen_ = now;
  return wrong;
}

}  // namespace pellar
