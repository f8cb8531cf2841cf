#include "tests/endurance/Footprint.h"

#include <unistd.h>
#include <xcb/res.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <sstream>
#include <stdexcept>

#include "tests/e2e/XReply.h"

namespace pellar::e2e {

namespace {

template <class Reply>
XReply<Reply> owned(Reply* reply) {
  if (reply == nullptr) throw std::runtime_error("the X server does not tell what its clients hold");
  return XReply<Reply>(reply);
}

// What stands for the connections that a process has to the server.
std::vector<std::uint32_t> connectionsOf(pid_t process, xcb_connection_t* connection) {
  const xcb_res_client_id_spec_t everyone{XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const auto reply = owned(xcb_res_query_client_ids_reply(
      connection, xcb_res_query_client_ids(connection, 1, &everyone), nullptr));
  std::vector<std::uint32_t> result;
  auto each = xcb_res_query_client_ids_ids_iterator(reply.get());
  for (; each.rem > 0; xcb_res_client_id_value_next(&each)) {
    if (xcb_res_client_id_value_value_length(each.data) == 0) continue;
    if (*xcb_res_client_id_value_value(each.data) == static_cast<std::uint32_t>(process))
      result.push_back(each.data->spec.client);
  }
  return result;
}

std::string nameOf(xcb_atom_t atom, xcb_connection_t* connection) {
  const auto reply = owned(xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
  return {xcb_get_atom_name_name(reply.get()),
          static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

std::size_t entriesOf(const std::filesystem::path& folder) {
  return static_cast<std::size_t>(
      std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()));
}

}  // namespace

std::size_t Footprint::resourceCount() const {
  return std::accumulate(resources.begin(), resources.end(), std::size_t{0},
                         [](std::size_t sum, const auto& each) { return sum + each.second; });
}

std::string Footprint::text() const {
  std::ostringstream line;
  line << residentKilobytes << " kB resident, " << descriptors << " descriptors, " << threads << " threads, "
       << resourceCount() << " X resources, " << pixmapKilobytes << " kB of pixmaps";
  return line.str();
}

Footprint footprintOf(pid_t process, XObserver& observer) {
  const std::filesystem::path folder("/proc/" + std::to_string(process));
  Footprint result;
  std::size_t whole = 0;
  std::size_t resident = 0;
  std::ifstream(folder / "statm") >> whole >> resident;
  result.residentKilobytes = resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 1024;
  result.descriptors = entriesOf(folder / "fd");
  result.threads = entriesOf(folder / "task");
  xcb_connection_t* const connection = observer.connection();
  std::uint64_t pixmapBytes = 0;
  for (const std::uint32_t client : connectionsOf(process, connection)) {
    const auto bytes = owned(xcb_res_query_client_pixmap_bytes_reply(
        connection, xcb_res_query_client_pixmap_bytes(connection, client), nullptr));
    pixmapBytes += bytes->bytes;
    const auto reply = owned(xcb_res_query_client_resources_reply(
        connection, xcb_res_query_client_resources(connection, client), nullptr));
    auto each = xcb_res_query_client_resources_types_iterator(reply.get());
    for (; each.rem > 0; xcb_res_type_next(&each))
      result.resources[nameOf(each.data->resource_type, connection)] += each.data->count;
  }
  if (result.resources.empty()) throw std::runtime_error("the X server knows nothing of the process");
  result.pixmapKilobytes = static_cast<std::size_t>(pixmapBytes / 1024);
  return result;
}

Footprint largestOf(const std::vector<Footprint>& all) {
  Footprint result;
  const auto take = [](std::size_t& largest, std::size_t value) { largest = std::max(largest, value); };
  for (const Footprint& each : all) {
    take(result.residentKilobytes, each.residentKilobytes);
    take(result.descriptors, each.descriptors);
    take(result.threads, each.threads);
    take(result.pixmapKilobytes, each.pixmapKilobytes);
    for (const auto& [type, count] : each.resources) take(result.resources[type], count);
  }
  return result;
}

}  // namespace pellar::e2e
