#include "app/automation/OpenDocuments.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "core/PathParts.h"
#include "core/TabLabel.h"
#include "core/Utf8.h"

namespace pellar {
namespace {

using Document = OpenDocuments::Document;

// Scripts take the address of a document in the cloud for a path of the old kind, and mangle it into what
// only looks like a file.
bool isMangledAddress(const std::string& path) {
  return path.starts_with("/https/::") || path.starts_with("/http/::");
}

bool isOnThisMachine(const std::string& path) {
  return path.starts_with('/') && !isMangledAddress(path) && isUsablePath(path);
}

// The name of a file in the form in which scripts compare names: they take no account of case.
std::string nameOf(const std::string& path) {
  return Utf8::folded(lastComponent(path));
}

// The last of the documents that serve; absent when that one has no file here.
template <class Serves>
std::optional<OpenDocuments::Match> lastOf(const std::vector<Document>& documents, const Serves& serves) {
  const auto count = std::ranges::count_if(documents, serves);
  if (count == 0) return std::nullopt;
  const auto last = std::find_if(documents.rbegin(), documents.rend(), serves);
  return OpenDocuments::Match{last->path, count == 1};
}

}  // namespace

std::unordered_map<std::string, std::string> OpenDocuments::pathsByName() const {
  std::unordered_map<std::string, std::string> paths;
  for (const auto& [name, path] : all_) paths.insert_or_assign(name, path);
  return paths;
}

std::optional<OpenDocuments::Match> OpenDocuments::match(std::string_view title) const {
  const std::string shown = TabLabel::documentName(title);
  const std::string label = TabLabel::label(title, std::nullopt);
  auto found = lastOf(all_, [&](const Document& each) {
    return Utf8::areEquivalent(each.name, shown) || Utf8::areEquivalent(each.name, title);
  });
  if (!found) {
    found = lastOf(all_, [&](const Document& each) {
      return Utf8::areEquivalent(TabLabel::label(each.name, std::nullopt), label);
    });
  }
  return found && isOnThisMachine(found->path) ? found : std::nullopt;
}

bool OpenDocuments::contradict(std::string_view title, const std::string& path) const {
  const auto bearsName = [name = nameOf(path)](const Document& each) {
    return Utf8::folded(each.name) == name;
  };
  if (std::ranges::count_if(all_, bearsName) > 1) return true;
  const auto named = std::ranges::find_if(all_, bearsName);
  if (named != all_.end() && !isSameFile(named->path, path)) return true;
  const auto shown = match(title);
  return shown && (!shown->isOnly || !isSameFile(shown->path, path));
}

bool OpenDocuments::mayHold(const std::string& path) const {
  return std::ranges::any_of(all_, [&](const Document& each) {
    return isOnThisMachine(each.path) ? isSameFile(each.path, path) : Utf8::folded(each.name) == nameOf(path);
  });
}

bool isSameFile(const std::string& a, const std::string& b) {
  if (!isUsablePath(a) || !isUsablePath(b)) return false;
  std::error_code unknown;
  const bool same = std::filesystem::equivalent(a, b, unknown);
  return unknown ? Utf8::areEquivalent(a, b) : same;
}

}  // namespace pellar
