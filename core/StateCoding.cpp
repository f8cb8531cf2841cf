#include "core/StateCoding.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>

#include "core/JsonText.h"
#include "core/Utf8.h"

namespace pellar {

namespace {

// Its objects are ordered by key, which is what keeps the file's keys sorted.
using Json = nlohmann::json;

Json encoded(bool value) {
  return value;
}
Json encoded(double value) {
  return value;
}
Json encoded(const std::string& value) {
  return value;
}
Json encoded(const std::vector<std::string>& values) {
  Json result = Json::array();
  for (const std::string& value : values) {
    if (Utf8::isValid(value)) result.push_back(value);
  }
  return result;
}

bool isStorable(bool) {
  return true;
}
bool isStorable(double value) {
  return std::isfinite(value);
}
bool isStorable(const std::string& value) {
  return Utf8::isValid(value);
}
bool isStorable(const std::vector<std::string>&) {
  return true;
}

template <class Value, class Order>
Json encoded(const std::map<std::string, Value, Order>& values) {
  Json result = Json::object();
  for (const auto& [key, value] : values) {
    if (Utf8::isValid(key) && isStorable(value)) result[key] = encoded(value);
  }
  return result;
}

Json encoded(const Settings& settings) {
  const std::string& version = settings.acceptedEulaVersion;
  return {{"acceptedEulaVersion", Utf8::isValid(version) ? version : std::string()},
          {"allApps", settings.allApps},
          {"apps", encoded(settings.apps)},
          {"autoSaveMinutes", settings.autoSaveMinutes},
          {"autoUpdateCheck", settings.autoUpdateCheck},
          {"hiddenApps", encoded(settings.hiddenApps)},
          {"launchAtLogin", settings.launchAtLogin}};
}

using JsonText::decode;

// Each of these stores the value and says whether it had the right type.
bool decode(const Json& json, bool& value) {
  if (!json.is_boolean()) return false;
  value = json.get<bool>();
  return true;
}

bool decode(const Json& json, double& value) {
  if (!json.is_number()) return false;
  value = json.get<double>();
  return std::isfinite(value);
}

bool decode(const Json& json, std::int64_t& value) {
  if (json.is_number_unsigned() &&
      json.get<std::uint64_t>() > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    return false;
  }
  if (json.is_number_float()) {
    constexpr double bound = 9223372036854775808.0;  // 2^63; its negative is read as an integer
    const double number = json.get<double>();
    if (!(number > -bound && number < bound) || std::trunc(number) != number) return false;
    value = static_cast<std::int64_t>(number);
    return true;
  }
  if (!json.is_number_integer()) return false;
  value = json.get<std::int64_t>();
  return true;
}

bool decode(const Json& json, std::vector<std::string>& values) {
  if (!json.is_array()) return false;
  values.clear();
  for (const Json& element : json) {
    if (!decode(element, values.emplace_back())) return false;
  }
  return true;
}

template <class Value, class Order>
bool decode(const Json& json, std::map<std::string, Value, Order>& values) {
  if (!json.is_object()) return false;
  values.clear();
  for (const auto& [key, element] : json.items()) {
    if (!decode(element, values[key])) return false;
  }
  return true;
}

bool decode(const Json& json, Settings& settings);

// A key that is missing or null leaves the default in place.
template <class Value>
bool decodeKey(const Json& object, const char* key, Value& value) {
  const auto found = object.find(key);
  return found == object.end() || found->is_null() || decode(*found, value);
}

bool decode(const Json& json, Settings& settings) {
  return json.is_object() && decodeKey(json, "apps", settings.apps) &&
         decodeKey(json, "launchAtLogin", settings.launchAtLogin) &&
         decodeKey(json, "autoSaveMinutes", settings.autoSaveMinutes) &&
         decodeKey(json, "allApps", settings.allApps) && decodeKey(json, "hiddenApps", settings.hiddenApps) &&
         decodeKey(json, "autoUpdateCheck", settings.autoUpdateCheck) &&
         decodeKey(json, "acceptedEulaVersion", settings.acceptedEulaVersion);
}

}  // namespace

std::string encodeState(const AppState& state) {
  const Json json{{"groups", encoded(state.groups)},
                  {"recent", encoded(state.recent)},
                  {"recentApp", encoded(state.recentApp)},
                  {"settings", encoded(state.settings)},
                  {"tags", encoded(state.tags)}};
  return json.dump(2);
}

std::set<std::string> namesLeftOut(const AppState& state) {
  std::set<std::string> names;
  const auto look = [&](const std::string& name) {
    if (!Utf8::isValid(name)) names.insert(name);
  };
  for (const auto& [key, color] : state.tags) look(key);
  for (const auto& [name, paths] : state.groups) {
    look(name);
    std::ranges::for_each(paths, look);
  }
  for (const auto& [path, time] : state.recent) look(path);
  for (const auto& [path, app] : state.recentApp) {
    look(path);
    look(app);
  }
  for (const auto& [app, enabled] : state.settings.apps) look(app);
  std::ranges::for_each(state.settings.hiddenApps, look);
  return names;
}

std::optional<AppState> decodeState(std::string_view text) {
  const Json json = JsonText::parsed(text);
  AppState state;
  if (!json.is_object() || !decodeKey(json, "tags", state.tags) || !decodeKey(json, "groups", state.groups) ||
      !decodeKey(json, "settings", state.settings) || !decodeKey(json, "recent", state.recent) ||
      !decodeKey(json, "recentApp", state.recentApp)) {
    return std::nullopt;
  }
  return state;
}

}  // namespace pellar
