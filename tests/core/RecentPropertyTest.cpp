#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>

#include "core/AppState.h"
#include "core/PathParts.h"
#include "core/Recent.h"
#include "core/Utf8.h"

namespace pellar {
namespace {

using Times = NameMap<double>;

rc::Gen<std::string> anyPath() {
  const auto folder =
      rc::gen::element<std::string>("/Users/ann/", "/tmp/", "/Résumés/", "/Re\u0301sume\u0301s/");
  const auto name = rc::gen::element<std::string>("Plan", "REPORT", "note", "\xFF", "Über", "a", "b", "c");
  const auto extension = rc::gen::element<std::string>(".docx", ".XLSX", ".txt", "", ".");
  return rc::gen::apply(
      [](const std::string& a, const std::string& b, const std::string& c) { return a + b + c; }, folder,
      name, extension);
}

rc::Gen<Times> anyTimes() {
  return rc::gen::container<Times>(
      anyPath(), rc::gen::map(rc::gen::inRange(-5, 50), [](int time) { return static_cast<double>(time); }));
}

double mergedTime(const Times& own, const Times& seeds, const std::string& path) {
  const auto seed = seeds.find(path);
  const double seeded = seed == seeds.end() ? 0 : seed->second;
  const auto used = own.find(path);
  return used == own.end() ? seeded : std::max(used->second, seeded);
}

RC_GTEST_PROP(RecentProperty, ListsExactlyWhatPassesEveryFilterNewestFirst, ()) {
  const Times own = *anyTimes();
  const Times seeds = *anyTimes();
  const auto query = *rc::gen::element<std::string>("", " ", "plan", "RÉSUMÉ", " uber", "/tmp", "\xFF");
  const auto app =
      *rc::gen::element<std::optional<OfficeApp>>(std::nullopt, OfficeApp::word, OfficeApp::excel);
  const auto key = *rc::gen::element<std::optional<std::string>>(std::nullopt, "k");
  const auto gone = *rc::gen::container<std::set<std::string>>(anyPath());
  NameMap<std::string> apps;
  for (const auto& path : *rc::gen::container<std::vector<std::string>>(anyPath())) apps[path] = "k";

  const auto exists = [&](const std::string& path) { return !gone.contains(path); };
  const std::vector<std::string> listed = Recent::list(own, seeds, query, app, key, apps, exists);

  Times all = own;
  all.insert(seeds.begin(), seeds.end());
  std::set<std::string> expected;
  const std::string valid = Utf8::repaired(query);
  const std::string wanted = Utf8::folded(Utf8::trimmed(valid));
  for (const auto& [path, time] : all) {
    const std::string extension = lowerPathExtension(path);
    const auto known = app ? extensions(*app) : std::span<const std::string_view>{};
    const bool belongs = app   ? std::find(known.begin(), known.end(), extension) != known.end()
                         : key ? apps.contains(path)
                               : true;
    if (belongs && exists(path) && Utf8::folded(path).find(wanted) != std::string::npos)
      expected.insert(path);
  }
  RC_ASSERT(std::set<std::string>(listed.begin(), listed.end()) == expected);
  RC_ASSERT(listed.size() == expected.size());
  for (std::size_t index = 1; index < listed.size(); ++index) {
    RC_ASSERT(mergedTime(own, seeds, listed[index - 1]) >= mergedTime(own, seeds, listed[index]));
  }
}

RC_GTEST_PROP(RecentProperty, TheRecordKeepsTheNewestThreeHundred, ()) {
  AppState state;
  const int count = *rc::gen::inRange(0, 700);
  const auto times =
      *rc::gen::container<std::vector<double>>(static_cast<std::size_t>(count), rc::gen::arbitrary<double>());
  for (int index = 0; index < count; ++index) {
    state.recent["/" + std::to_string(index)] = times[static_cast<std::size_t>(index)];
  }
  const Times before = state.recent;
  const double newest = 1e308;
  state.touchRecent("/touched", std::nullopt, newest);
  RC_ASSERT(state.recent.size() == std::min<std::size_t>(300, before.size() + 1));
  RC_ASSERT(state.recent.at("/touched") == newest);
  double oldestKept = newest;
  for (const auto& [path, time] : state.recent) oldestKept = std::min(oldestKept, time);
  for (const auto& [path, time] : before) {
    if (!state.recent.contains(path)) RC_ASSERT(time <= oldestKept);
  }
}

}  // namespace
}  // namespace pellar
