#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "core/AppState.h"
#include "core/StateCoding.h"
#include "core/Utf8.h"

namespace pellar {
namespace {

rc::Gen<std::string> anyBytes() {
  return rc::gen::oneOf(rc::gen::string<std::string>(),
                        rc::gen::element<std::string>("", "/Users/ann/Résumé.docx", "\xFF", "a\nb", "\"\\/",
                                                      std::string("\0", 1), "\u2028", "😀", "\xED\xA0\x80"));
}

rc::Gen<double> anyTime() {
  return rc::gen::oneOf(rc::gen::arbitrary<double>(), rc::gen::element(0.0, -0.0, 1.7e9, 0.1, 1e308, 5e-324,
                                                                       std::nan(""), HUGE_VAL, -HUGE_VAL));
}

AppState anyState() {
  const auto texts = rc::gen::container<std::vector<std::string>>(anyBytes());
  AppState state;
  state.tags = *rc::gen::container<NameMap<std::string>>(anyBytes(), anyBytes());
  state.groups = *rc::gen::container<NameMap<std::vector<std::string>>>(anyBytes(), texts);
  state.recent = *rc::gen::container<NameMap<double>>(anyBytes(), anyTime());
  state.recentApp = *rc::gen::container<NameMap<std::string>>(anyBytes(), anyBytes());
  state.settings.apps =
      *rc::gen::container<std::map<std::string, bool>>(anyBytes(), rc::gen::arbitrary<bool>());
  state.settings.launchAtLogin = *rc::gen::arbitrary<bool>();
  state.settings.autoSaveMinutes = *rc::gen::arbitrary<std::int64_t>();
  state.settings.allApps = *rc::gen::arbitrary<bool>();
  state.settings.hiddenApps = *texts;
  state.settings.autoUpdateCheck = *rc::gen::arbitrary<bool>();
  state.settings.acceptedEulaVersion = *anyBytes();
  return state;
}

// What of a state the file can hold.
AppState storable(AppState state) {
  const auto bad = [](const std::string& text) { return !Utf8::isValid(text); };
  std::erase_if(state.tags, [&](const auto& entry) { return bad(entry.first) || bad(entry.second); });
  std::erase_if(state.groups, [&](const auto& entry) { return bad(entry.first); });
  for (auto& [name, paths] : state.groups) std::erase_if(paths, bad);
  std::erase_if(state.recent,
                [&](const auto& entry) { return bad(entry.first) || !std::isfinite(entry.second); });
  std::erase_if(state.recentApp, [&](const auto& entry) { return bad(entry.first) || bad(entry.second); });
  std::erase_if(state.settings.apps, [&](const auto& entry) { return bad(entry.first); });
  std::erase_if(state.settings.hiddenApps, bad);
  if (bad(state.settings.acceptedEulaVersion)) state.settings.acceptedEulaVersion.clear();
  return state;
}

RC_GTEST_PROP(AppStateProperty, WhatIsWrittenIsReadBack, ()) {
  const AppState state = anyState();
  const std::string text = encodeState(state);
  RC_ASSERT(Utf8::isValid(text));
  const auto read = decodeState(text);
  RC_ASSERT(read.has_value());
  RC_ASSERT(*read == storable(state));
  RC_ASSERT(encodeState(*read) == text);
}

RC_GTEST_PROP(AppStateProperty, AFileCutShortIsRefused, ()) {
  const std::string text = encodeState(anyState());
  const auto length = *rc::gen::inRange<std::size_t>(0, text.size());
  RC_ASSERT(!decodeState(std::string_view(text).substr(0, length)).has_value());
}

RC_GTEST_PROP(AppStateProperty, AFileWithDamagedBytesIsReadOrRefused, ()) {
  std::string text = encodeState(anyState());
  const int damages = *rc::gen::inRange(1, 10);
  for (int damage = 0; damage < damages; ++damage) {
    text[*rc::gen::inRange<std::size_t>(0, text.size())] = *rc::gen::arbitrary<char>();
  }
  if (const auto read = decodeState(text)) RC_ASSERT(decodeState(encodeState(*read)) == read);
}

}  // namespace
}  // namespace pellar
