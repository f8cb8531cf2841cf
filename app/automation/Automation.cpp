#include "app/automation/Automation.h"

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>
#include <variant>

#include "app/automation/OfficeScripts.h"
#include "core/Log.h"
#include "core/PathExtension.h"
#include "core/TabLabel.h"

namespace pellar {

namespace {

namespace fs = std::filesystem;

std::string nameWithExtension(const std::string& newName, const std::string& oldPath) {
  if (!pathExtension(newName).empty()) return newName;
  const auto extension = pathExtension(oldPath);
  return extension.empty() ? newName : newName + "." + std::string(extension);
}

// Whether there is nothing at all under this path. What cannot be looked at counts as something.
bool isFree(const std::string& path) {
  std::error_code ignored;  // the type says what is known
  return fs::status(path, ignored).type() == fs::file_type::not_found;
}

bool isFile(const std::string& path) {
  std::error_code ignored;  // then there is no file as far as anybody can tell
  return fs::is_regular_file(path, ignored);
}

// A size of zero where the file cannot be looked at.
std::uintmax_t sizeOf(const std::string& path) {
  std::error_code error;
  const auto size = fs::file_size(path, error);
  return error ? 0 : size;
}

// An application that was cut short may have created the file and written nothing of it.
bool holdsTheDocument(const std::string& newPath, const std::string& oldPath) {
  return sizeOf(newPath) > 0 || sizeOf(oldPath) == 0;
}

// Two names of one file. Where that cannot be told the old one is missing.
bool isSameFile(const std::string& a, const std::string& b) {
  std::error_code ignored;
  return fs::equivalent(a, b, ignored);
}

}  // namespace

std::string Automation::quoted(std::string_view text) {
  return OfficeScripts::quoted(text);
}

std::optional<ScriptDescriptor> Automation::run(const std::string& source) {
  ScriptResult result = runner_.run(source);
  if (!result.error) return std::move(result.descriptor);
  Log::write("applescript error: " + *result.error);
  return std::nullopt;
}

std::unordered_map<std::string, std::string> Automation::pathsByName(OfficeApp app) {
  std::unordered_map<std::string, std::string> paths;
  const auto script = OfficeScripts::pathsByName(app);
  if (!script) return paths;
  const auto result = run(*script);
  if (!result) return paths;
  for (const ScriptDescriptor& item : result->items()) {
    const auto text = item.stringValue();
    if (!text) continue;
    const auto tab = text->find('\t');
    if (tab == std::string::npos) continue;
    paths.insert_or_assign(text->substr(0, tab), text->substr(tab + 1));
  }
  return paths;
}

std::optional<std::string> Automation::path(const OfficeWindow& window) {
  if (!window.app.office) return window.path;
  const auto paths = pathsByName(*window.app.office);
  const std::string label = TabLabel::label(window.title, std::nullopt);
  for (const auto& [name, path] : paths) {
    if (TabLabel::label(name, std::nullopt) == label) return path;
  }
  return std::nullopt;
}

int Automation::saveAll(OfficeApp app, bool onlyModified) {
  const auto script = OfficeScripts::saveAll(app, onlyModified);
  const auto result = script ? run(*script) : std::nullopt;
  const auto* saved = result ? std::get_if<std::int32_t>(&result->value) : nullptr;
  return saved != nullptr ? *saved : 0;
}

void Automation::newDocument(OfficeApp app) {
  run(OfficeScripts::newDocument(app));
}

std::optional<std::string> Automation::rename(const OfficeWindow& window, const std::string& oldPath,
                                              const std::string& newName) {
  if (!window.app.office || !isUsablePath(oldPath) || !isUsablePath(newName)) return std::nullopt;
  // The text passed in may be the window's own, which can change while the script runs.
  const std::string from = oldPath;  // NOLINT(performance-unnecessary-copy-initialization)
  const std::string folder(withoutLastComponent(from));
  if (folder.empty()) return std::nullopt;
  std::string to = (folder == "/" ? folder : folder + "/") + nameWithExtension(newName, from);
  if (to == from || !isFree(to)) return std::nullopt;

  const auto script = OfficeScripts::saveAs(*window.app.office, lastComponent(from), to);
  const auto result = script ? run(*script) : std::nullopt;
  if (!result || result->stringValue() != "ok") return std::nullopt;
  // The application alone does not make its new file last: a power failure could take it after the old one is
  // gone. So it is flushed, and looked at last of all before that. The name typed may lead to another folder.
  const bool lasts = !files_.flushFile(to) && !files_.flushFolder(withoutLastComponent(to));
  if (!isFile(to)) return std::nullopt;
  // An old file that is not removed does no harm beside the new one.
  if (lasts && holdsTheDocument(to, from) && !isSameFile(from, to)) static_cast<void>(files_.remove(from));
  return to;
}

}  // namespace pellar
