#include "core/UpdateInfo.h"

#include <nlohmann/json.hpp>

#include "core/JsonText.h"

namespace pellar {

namespace {

using Json = nlohmann::json;

void put(Json& object, const char* key, const std::optional<std::string>& value) {
  if (value) object[key] = *value;
}

using JsonText::decode;

bool decode(const Json& json, UpdateEula& eula);

template <class Value>
bool decodeRequired(const Json& object, const char* key, Value& value) {
  const auto found = object.find(key);
  return found != object.end() && decode(*found, value);
}

template <class Value>
bool decodeOptional(const Json& object, const char* key, std::optional<Value>& value) {
  const auto found = object.find(key);
  return found == object.end() || found->is_null() || decode(*found, value.emplace());
}

bool decode(const Json& json, UpdateEula& eula) {
  return json.is_object() && decodeRequired(json, "version", eula.version) &&
         decodeOptional(json, "url", eula.url);
}

}  // namespace

std::string encodeUpdateInfo(const UpdateInfo& info) {
  Json json{{"latest", info.latest}};
  put(json, "min", info.min);
  put(json, "notes", info.notes);
  put(json, "url", info.url);
  if (info.eula) {
    json["eula"] = Json{{"version", info.eula->version}};
    put(json["eula"], "url", info.eula->url);
  }
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<UpdateInfo> decodeUpdateInfo(std::string_view text) {
  const Json json = JsonText::parsed(text);
  UpdateInfo info;
  if (!json.is_object() || !decodeRequired(json, "latest", info.latest) ||
      !decodeOptional(json, "min", info.min) || !decodeOptional(json, "notes", info.notes) ||
      !decodeOptional(json, "url", info.url) || !decodeOptional(json, "eula", info.eula)) {
    return std::nullopt;
  }
  return info;
}

}  // namespace pellar
