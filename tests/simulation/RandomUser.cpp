#include "tests/simulation/RandomUser.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "tests/support/StripTools.h"

namespace pellar {

using namespace std::chrono_literals;

namespace {

bool offers(const SimOpenMenu& menu, const std::string& row) {
  const auto rows = menu.rows();
  return std::ranges::find(rows, row) != rows.end();
}

}  // namespace

RandomUser::RandomUser(unsigned seed) : RandomArranger(seed) {
  actMeanwhile = [this] { act(); };
}

void RandomUser::act() {
  judge().happened();
  const std::size_t what = below(30);
  if (what < 10) return useMouse(what);
  switch (what) {
    case 10:
      return mac().type(chance(2) ? "p" : "t");
    case 11:
      return mac().pressKey(
          std::array{"moveDown:", "moveUp:", "insertNewline:", "cancelOperation:"}[below(4)]);
    case 12:
    case 13:
    case 14:
      return dragTab();
    case 15:
    case 16:
    case 17:
      return tagTab();
    case 18:
      return saveGroup();
    case 19:
      return changeSettings();
    case 20:
    case 21:
      return closeTab();
    case 22:
    case 23:
      return renameTab();
    case 24:
      return openRecentFile();
    case 25:
    case 26:
      return arrange();
    default:
      return mac().pressKey(48, KeyFlags::control | (chance(2) ? KeyFlags::shift : 0));
  }
}

void RandomUser::useMouse(std::size_t what) {
  told(std::array{"clicks", "clicks", "clicks", "double-clicks", "right-clicks", "clicks in another way",
                  "moves the pointer", "moves the pointer", "drags", "drags"}
           .at(what));
  auto& pointer = mac().pointer();
  switch (what) {
    case 0:
    case 1:
    case 2:
      return click(somewhere(), [&](ScreenPoint point) { pointer.click(point); });
    case 3:
      // The second press may meet another strip than the first.
      judge().state().uncertain();
      judge().happened();
      judge().frames().becomeUnsure();
      return pointer.doubleClick(somewhere());
    case 4:
      return pointer.rightClick(somewhere());
    case 5:
      judge().frames().becomeUnsure();
      return chance(2) ? pointer.middleClick(somewhere()) : pointer.controlClick(somewhere());
    case 6:
    case 7:
      pointer.moveTo(somewhere());
      return mac().advance(std::chrono::milliseconds(below(700)));
    default:
      return dragSomewhere();
  }
}

// A press in the strip may meet the auto-save tool, which changes a setting.
void RandomUser::click(ScreenPoint point, const std::function<void(ScreenPoint)>& way) {
  if (strip().visible() && mac().panels().at(point) == &strip().panel()) judge().state().mayToggleAutoSave();
  if (mac().panels().at(point) != nullptr) judge().frames().becomeUnsure();
  way(point);
}

void RandomUser::dragSomewhere() {
  judge().draggedSomewhere();
  judge().frames().becomeUnsure();
  judge().log().userDragged();
  click(somewhere(), [this](ScreenPoint point) { mac().pointer().press(point); });
  for (std::size_t moves = below(5); moves > 0; --moves) {
    mac().pointer().moveTo(chance(2) ? somewhere() : anywhere());
    if (chance(4)) happen();
  }
  if (!chance(10)) return mac().pointer().release();
  // Somebody else takes the release.
  mac().settle();
  mac().pointer().release();
}

void RandomUser::dragTab() {
  const auto tab = anyTab();
  if (!tab || judge().tabs().size() < 2) return;
  // Of a tab without a label little more than its mark is left to be gripped.
  if (strip().tabs()[*tab].empty()) return;
  const auto tabs = judge().tabs();
  const std::size_t place = below(tabs.size());
  if (place == *tab) return;
  told("drags the tab of " + tabs[*tab].title() + " to place " + std::to_string(place));
  judge().log().userDragged();
  judge().dropped(tabs[*tab], place);
  try {
    strip().dragTab(static_cast<int>(*tab)).to(static_cast<int>(place));
  } catch (const std::runtime_error&) {
    // The press that takes hold of it may end another drag, which brings another strip.
    judge().draggedSomewhere();
    mac().pointer().release();
  }
}

void RandomUser::tagTab() {
  const auto tab = anyTab();
  if (!tab) return;
  const SimWindow window = judge().tabs()[*tab];
  constexpr std::array colors{"Red", "Orange", "Yellow", "Green", "Blue", "Purple", "None"};
  const std::string color = colors[below(colors.size())];
  told("gives " + window.title() + " the colour " + color);
  const auto keys = judge().names().tagKeys(window);
  if (keys.empty()) return;
  // The tabs are those of the last rest: where more happened since, it may be another one that is met.
  const bool known = judge().isSingle();
  const bool interrupted = chance(4);
  menuPlan_ = [this, window, color, keys, interrupted, known](SimOpenMenu& menu) {
    if (!offers(menu, "Colour tag \u25B8")) return chooseAny(menu);
    if (interrupted) happen();
    menu.choose({"Colour tag", color});
    auto lower = color;
    lower.front() = static_cast<char>(std::tolower(lower.front()));
    if (!known || !judge().isSingle() || keys != judge().names().tagKeys(window))
      return judge().state().uncertain();
    judge().state().tagged(keys, color == "None" ? std::nullopt : std::optional(lower));
  };
  mac().pointer().rightClick(strip().tabPoint(static_cast<int>(*tab)));
  menuPlan_ = nullptr;
}

// Its window may be one whose end is told to nobody: the tab goes all the same, since the user closed it
// here.
void RandomUser::closeTab() {
  const auto labels = strip().visible() ? strip().tabs() : std::vector<std::string>();
  if (labels.empty() || !judge().frontAnswers()) return;
  const std::size_t tab = below(labels.size());
  const auto window = judge().onlyWindowWith(labels[tab]);
  if (!window || !window->exists() || std::ranges::count(labels, labels[tab]) != 1) return;
  const ScreenPoint point = strip().tabPoint(static_cast<int>(tab));
  if (mac().panels().at(point) != &strip().panel()) return;
  told("closes the tab of " + window->title());
  mac().pointer().middleClick(point);
  if (window->exists() || !judge().frontAnswers() || !strip().visible()) return;
  const auto now = strip().tabs();
  if (std::ranges::find(now, labels[tab]) != now.end())
    judge().found("the tab of a window stays that the user closed: " + labels[tab]);
}

// A colour goes along with its document.
void RandomUser::renameTab() {
  const auto tab = anyTab();
  if (!tab) return;
  const SimWindow window = judge().tabs()[*tab];
  const auto before = judge().names().documentOf(window);
  const std::string from = before ? before->path : "";
  const bool known = judge().isSingle();
  const auto failuresBefore = judge().log().failedRenames();
  told("renames " + window.title());
  menuPlan_ = [](SimOpenMenu& menu) {
    if (offers(menu, "Rename\u2026")) menu.choose({"Rename\u2026"});
  };
  answerPlan_ = "Name " + std::to_string(below(1000));
  mac().pointer().rightClick(strip().tabPoint(static_cast<int>(*tab)));
  menuPlan_ = nullptr;
  answerPlan_.reset();
  mac().settle();
  if (const auto wrong = judge().log().compare()) judge().found("a line in the log: " + *wrong);
  const bool failed = judge().log().failedRenames() != failuresBefore;
  const auto now = judge().names().documentOf(window);
  // One that ended late takes it along when its application tells of it.
  if (failed && !from.empty()) lateRenames_.push_back({window, from});
  if (!known || failed || !judge().isSingle() || !now || now->path == from) return;
  judge().state().renamed(from, now->path);
}

// With the keys alone.
void RandomUser::openRecentFile() {
  if (!strip().visible()) return;
  told("searches for a recent file");
  // The picker may be in the way.
  judge().frames().becomeUnsure();
  if (strip().searchToolShown() && mac().panels().at(strip().tabPoint(0)) != nullptr)
    strip().clickSearchTool();
  else if (strip().searchField() != nullptr)
    strip().clickSearchField();
  mac().type(std::array{"p", "name", "re", "plan.txt"}[below(4)]);
  if (chance(4)) happen();
  // The list stays open while other things happen.
  if (chance(2)) return;
  for (std::size_t down = 1 + below(3); down > 0; --down) mac().pressKey("moveDown:");
  mac().pressKey("insertNewline:");
}

void RandomUser::saveGroup() {
  if (judge().tabs().empty() || !strip().visible()) return;
  const auto tools = strip().tools();
  if (std::ranges::find(tools, "Groups") == tools.end()) return;
  const ScreenPoint point = strip().toolPoint("Groups");
  if (mac().panels().at(point) != &strip().panel()) return;
  told("saves a group");
  menuPlan_ = [this](SimOpenMenu& menu) {
    constexpr auto* save = "Save open tabs as group\u2026";
    offers(menu, save) ? menu.choose({save}) : chooseAny(menu);
  };
  answerPlan_ = "Group " + std::to_string(below(3));
  filesPlan_.clear();
  for (const auto& each : judge().tabs()) filesPlan_.push_back(judge().names().filesOf(each));
  mac().pointer().click(point);
  menuPlan_ = nullptr;
  answerPlan_.reset();
}

void RandomUser::changeSettings() {
  if (!mac().statusBar().hasItem()) return;
  mac().statusBar().open([this](SimOpenMenu& menu) { changeSettings(menu); });
}

void RandomUser::changeTheUpdateSetting() {
  if (!mac().statusBar().hasItem()) return;
  told("changes whether updates are looked for");
  judge().happened();
  judge().state().chose(
      [](SavedState::Content& content) { content.autoUpdateCheck = !content.autoUpdateCheck; });
  mac().statusBar().choose({"Automatically check for updates"});
}

void RandomUser::changeSettings(SimOpenMenu& menu) {
  auto& saved = judge().state();
  const auto rows = menu.rows();
  const auto isThere = [&](const std::string& start) {
    return std::ranges::any_of(rows, [&](const auto& row) { return row.starts_with(start); });
  };
  using Content = SavedState::Content;
  if (isThere("Hidden apps")) {
    const auto hidden = *saved.expected().hiddenApps.begin();
    saved.chose([&](Content& content) { content.hiddenApps.erase(hidden); });
    told("shows the strip for " + hidden);
    return menu.choose({"Hidden apps", "Show " + hidden});
  }
  if (!saved.expected().allApps || chance(6)) {
    saved.chose([](Content& content) { content.allApps = !content.allApps; });
    told("changes whether all applications are followed");
    return menu.choose({"All apps"});
  }
  switch (below(4)) {
    case 0:
      saved.chose([](Content& content) { content.apps["word"] = !content.apps["word"]; });
      told("changes whether Word is followed");
      return menu.choose({"Word"});
    case 1:
      saved.chose([](Content& content) { content.autoUpdateCheck = !content.autoUpdateCheck; });
      return menu.choose({"Automatically check for updates"});
    case 2:
      saved.chose([&](Content& content) { content.autoSaveMinutes = content.autoSaveMinutes == 0 ? 5 : 0; });
      told("changes auto-save");
      return menu.choose(
          {"Auto-save changed files", saved.expected().autoSaveMinutes == 0 ? "Off" : "Every 5 min"});
    default:
      for (const auto& each : {"org.example.editor", "org.example.viewer"}) {
        if (!isThere(std::string("Hide for ") + each)) continue;
        saved.chose([&](Content& content) { content.hiddenApps.insert(each); });
        told(std::string("hides the strip for ") + each);
        return menu.choose({std::string("Hide for ") + each});
      }
  }
}

ScreenPoint RandomUser::anywhere() {
  return {static_cast<double>(below(1600)) - 100, static_cast<double>(below(900))};
}

// Mostly on the strip, also on the panels beside it.
ScreenPoint RandomUser::somewhere() {
  std::vector<ScreenRect> shown;
  for (const auto* panel : mac().panels().all())
    if (panel->isVisible()) shown.push_back(panel->frame());
  if (shown.empty() || chance(6)) return anywhere();
  const ScreenRect& rect = any(shown);
  return {rect.x + static_cast<double>(below(static_cast<std::size_t>(rect.width) + 1)),
          rect.y + static_cast<double>(below(static_cast<std::size_t>(rect.height) + 1))};
}

void RandomUser::answerMenusAndQuestions() {
  if (mac().menus().awaited() == 0) {
    mac().menus().next([this](SimOpenMenu& menu) {
      if (const auto plan = std::exchange(menuPlan_, nullptr)) return plan(menu);
      if (chance(2)) happen();
      mac().settle();
      chooseAny(menu);
    });
  }
  if (mac().alerts().awaited() == 0) {
    mac().alerts().next([this](const TextAlert& question) {
      const bool group = question.messageText == "Group name";
      const auto plan = std::exchange(answerPlan_, std::nullopt);
      if (plan && group) {
        judge().state().grouped(*plan, filesPlan_);
        // The tabs are those of the last rest.
        if (!judge().isSingle()) judge().state().uncertain();
        return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, *plan};
      }
      if (!plan && chance(2)) happen();
      mac().settle();
      const int button = TextAlertAnswer::firstButtonReturn + (!plan && chance(4) ? 1 : 0);
      const std::string name = plan.value_or("Name " + std::to_string(below(5)));
      told("answers " + name);
      if (group) {
        judge().state().uncertain();
      } else {
        judge().state().renaming(name);
        judge().documents().renaming(name);
        judge().log().userRenames();
      }
      return TextAlertAnswer{button, name};
    });
  }
}

void RandomUser::chooseAny(SimOpenMenu& menu) {
  const auto rows = menu.rows();
  const std::string row = rows[below(rows.size())];
  constexpr std::string_view submenu = " \u25B8";
  told("chooses " + row);
  if (row.ends_with(submenu)) {
    const std::string title = row.substr(0, row.size() - submenu.size());
    if (title != "Layout") judge().state().uncertain();
    judge().frames().becomeUnsure();
    if (const auto item = itemOf(menu.rows({title})); !item.empty()) menu.choose({title, item});
  } else if (const auto item = itemOf({row}); !item.empty()) {
    if (item.starts_with("Auto-save")) judge().state().uncertain();
    menu.choose({item});
  }
}

// One that can be chosen; empty when there is none in its place.
std::string RandomUser::itemOf(std::vector<std::string> rows) {
  constexpr std::string_view check = "\u2713 ";
  std::string row = any(rows);
  if (row == "---" || row.starts_with("(")) return {};
  return row.starts_with(check) ? row.substr(check.size()) : row;
}

}  // namespace pellar
