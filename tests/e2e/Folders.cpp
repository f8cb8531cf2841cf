#include "tests/e2e/Folders.h"

#include <stdlib.h>

#include <system_error>

#include "tests/support/Files.h"

namespace pellar::e2e {

Folders::Folders() {
  for (const char* name : {"home", "config", "data", "state", "cache", "run", "tmp"}) {
    std::filesystem::create_directory(root_ / name);
  }
  std::filesystem::permissions(root_ / "run", std::filesystem::perms::owner_all);
  // A GTK editor that was killed would otherwise greet with a question about its last session.
  write(config() / "Mousepad" / "settings.conf",
        "[org/xfce/mousepad/preferences/file]\nsession-restore='never'\n");
  settleIn();
}

Environment Folders::environment(const std::string& display) const {
  Environment variables{
      {"PATH", "/usr/local/bin:/usr/bin:/bin"},
      {"HOME", home().string()},
      {"LANG", "C.UTF-8"},
      {"XDG_CONFIG_HOME", config().string()},
      {"XDG_DATA_HOME", (root_ / "data").string()},
      {"XDG_STATE_HOME", (root_ / "state").string()},
      {"XDG_CACHE_HOME", (root_ / "cache").string()},
      {"XDG_RUNTIME_DIR", (root_ / "run").string()},
      {"TMPDIR", (root_ / "tmp").string()},
      {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
      {"GSETTINGS_BACKEND", "memory"},
      {"NO_AT_BRIDGE", "1"},
      {"GTK_CSD", "0"},
  };
  if (!display.empty()) variables["DISPLAY"] = display;
  // A sanitized build is told how to report; nothing else of our own surroundings reaches a program.
  for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
    if (const char* value = getenv(name)) variables[name] = value;
  }
  return variables;
}

void Folders::setOpener(const std::string& kind, const std::string& name, const std::string& command) const {
  write(
      root_ / "data" / "applications" / (name + ".desktop"),
      "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + command + "\nMimeType=" + kind + ";\n");
  const auto list = config() / "mimeapps.list";
  const std::string before = std::filesystem::exists(list) ? read(list) : "[Default Applications]\n";
  write(list, before + kind + "=" + name + ".desktop\n");
}

void Folders::openTextFilesWith(const std::string& command) const {
  setOpener("text/plain", "text-opener", command);
}

void Folders::openFoldersWith(const std::string& command) const {
  setOpener("inode/directory", "folder-opener", command);
}

void Folders::settleIn() const {
  const std::string settings = R"("acceptedEulaVersion":"1","autoUpdateCheck":false)";
  const auto folder = stateFile().parent_path();
  if (std::filesystem::exists(folder) && !std::filesystem::is_directory(folder)) return;
  if (!std::filesystem::exists(stateFile())) {
    write(stateFile(), "{\"settings\":{" + settings + "}}");
    return;
  }
  std::string state = read(stateFile());
  if (state.find("acceptedEulaVersion") != std::string::npos) return;
  const std::string begin = "\"settings\":{";
  if (const auto at = state.find(begin); at != std::string::npos) {
    state.insert(at + begin.size(), settings + ",");
  } else if (state.starts_with("{\"")) {
    state.insert(1, begin + settings + "},");
  } else {
    return;
  }
  write(stateFile(), state);
}

void Folders::remember(const std::vector<std::filesystem::path>& files,
                       const std::string& application) const {
  std::string times;
  std::string applications;
  int time = 1'700'000'000;
  for (const auto& file : files) {
    const std::string begin = (times.empty() ? "\"" : ",\"") + file.string() + "\":";
    times += begin + std::to_string(--time);
    applications += begin + "\"" + application + "\"";
  }
  write(stateFile(), "{\"recent\":{" + times + "},\"recentApp\":{" + applications + "}}");
}

std::vector<std::string> Folders::busCommand() const {
  const auto services = root_ / "services";
  std::filesystem::create_directories(services);
  for (const char* name : {"org.a11y.Bus.service", "org.xfce.Xfconf.service"}) {
    std::error_code isMissing;
    std::filesystem::copy_file(std::filesystem::path("/usr/share/dbus-1/services") / name, services / name,
                               std::filesystem::copy_options::overwrite_existing, isMissing);
  }
  const auto configuration = root_ / "bus.conf";
  write(configuration,
        "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
        " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n<busconfig><type>session</type>"
        "<listen>unix:dir=" +
            (root_ / "run").string() + "</listen><auth>EXTERNAL</auth><servicedir>" + services.string() +
            "</servicedir><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
            "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n");
  return {"dbus-daemon", "--config-file=" + configuration.string(), "--nofork", "--nopidfile",
          "--print-address=1"};
}

void Folders::write(const std::filesystem::path& file, const std::string& content) const {
  test::put(file, content);
}

std::string Folders::read(const std::filesystem::path& file) {
  return test::content(file);
}

}  // namespace pellar::e2e
