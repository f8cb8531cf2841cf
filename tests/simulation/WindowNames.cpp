#include "tests/simulation/WindowNames.h"

#include <algorithm>

#include "tests/simulation/Titles.h"

namespace pellar {

void WindowNames::lookAround() {
  for (const auto& application : applications_)
    for (const auto& window : application.windowsFrontToBack()) note(window);
  for (const auto& window : applications_.back().windowsFrontToBack())
    namesakes_.insert_or_assign(window.id(), Namesakes{window.title(), filesOf(window)});
}

SimDocumentPointer WindowNames::documentOf(const SimWindow& window) const {
  for (const auto& document : mac_.office().documents(applications_.back()))
    if (document->window == window) return document;
  return nullptr;
}

std::set<std::optional<std::string>> WindowNames::filesOf(const SimWindow& window) const {
  // An Office application is asked for its documents, and may not have been able to tell.
  if (window.pid() != applications_.back().pid()) return {titles::fileOf(window.document())};
  // Windows are told apart by their documents' names.
  std::set<std::optional<std::string>> files{std::nullopt};
  for (const auto& document : mac_.office().documents(applications_.back()))
    if (!document->path.empty() && (document->window == window ||
                                    titles::nameOfFile(document->name) == titles::plainName(window.title())))
      files.insert(document->path);
  const auto before = namesakes_.find(window.id());
  if (before != namesakes_.end() && before->second.title == window.title())
    files.insert(before->second.files.begin(), before->second.files.end());
  return files;
}

std::set<std::string> WindowNames::labelsOf(const SimWindow& window) const {
  std::set<std::string> labels;
  for (const auto& file : filesOf(window))
    labels.insert(file ? titles::nameOfFile(*file) : titles::plainName(window.title()));
  return labels;
}

std::set<std::string> WindowNames::tagKeys(const SimWindow& window) const {
  std::set<std::string> keys;
  // What has no path on this machine may be told under any.
  const auto isElsewhere = [](const auto& file) { return file && !file->starts_with("/"); };
  if (std::ranges::any_of(filesOf(window), isElsewhere)) return keys;
  for (const auto& file : filesOf(window)) keys.insert(titles::keyOf(window.title(), file));
  return keys;
}

bool WindowNames::mayBeCalled(const SimWindow& window, const std::string& name) const {
  const auto owners = titles_.find(name);
  if (owners != titles_.end() && owners->second.contains(window.id())) return true;
  return std::ranges::any_of(filesOf(window),
                             [&](const auto& file) { return file && file->ends_with("/" + name); });
}

}  // namespace pellar
