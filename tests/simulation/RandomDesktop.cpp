#include "tests/simulation/RandomDesktop.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <utility>

namespace pellar {

using namespace std::chrono_literals;

namespace {

std::string urlOf(const std::string& path) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string url = "file://";
  for (const char letter : path) {
    const auto byte = static_cast<unsigned char>(letter);
    if (std::isalnum(byte) != 0 || letter == '/' || letter == '.') {
      url += letter;
    } else {
      url += {'%', digits[byte / 16], digits[byte % 16]};
    }
  }
  return url;
}

// What happens by its number, for the story.
constexpr std::array happenings{"opens a window",
                                "opens a window",
                                "opens a window",
                                "opens a window",
                                "closes",
                                "closes",
                                "minimises",
                                "restores",
                                "makes full screen",
                                "ends full screen of",
                                "gives another title to",
                                "moves",
                                "focuses",
                                "activates",
                                "clicks",
                                "ends and launches",
                                "activates another program than",
                                "hides or shows",
                                "changes the displays",
                                "shows a space",
                                "takes to a space",
                                "changes native tabs of",
                                "hangs",
                                "hangs"};

}  // namespace

RandomDesktop::RandomDesktop(unsigned seed) : seed_(seed), random_(seed) {
  std::filesystem::create_directories(mac_.platform().folders.logFile.parent_path());
  std::filesystem::create_directories(mac_.home() / "Documents");
  mac_.workspace().onOpen = [this](const std::string& path) {
    if (!judge_.state().knows(path)) judge_.found("a file is opened that no list has: " + path);
    if (chance(2)) open(path.substr(path.rfind('/') + 1));
  };
  mac_.office().beforeEvent = [this](const std::string&) {
    if (chance(20)) happen();
  };
  if (chance(3)) mac_.workspace().activationTime = std::chrono::milliseconds(below(500));
  mac_.office().asksForAccess = chance(4);
  mac_.office().asksBeforeReplacing = chance(2);
}

std::size_t RandomDesktop::below(std::size_t bound) {
  return bound == 0 ? 0 : std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
}

void RandomDesktop::begin() {
  for (std::size_t i = 0; i < names.size(); ++i) launch(i);
}

void RandomDesktop::calmDown() {
  calm_ = true;
  for (auto& each : applications_) {
    judge_.leftInDoubt(each.pid());
    each.resume();
  }
  thaws_.clear();
}

void RandomDesktop::launch(std::size_t which) {
  SimLaunch launched{.bundleId = names[which], .name = names[which]};
  if (chance(3)) {
    launched.refusesAtFirst =
        std::array{SimRefusal::observers, SimRefusal::registrations, SimRefusal::everything}[below(3)];
    launched.readyAfter = std::chrono::milliseconds(1 + below(7000));
    launched.launchedAfter = std::chrono::milliseconds(below(9000));
  }
  auto application = mac_.launch(launched);
  if (launched.refusesAtFirst != SimRefusal::nothing) {
    judge_.leftInDoubt(application.pid());
    judge_.log().mayRefuse(application.pid());
  }
  application.quirks().listsWindowsByCreation = chance(2);
  application.quirks().validatesOpenMenusOnly = chance(2);
  if (chance(2)) application.quirks().answerTime = std::chrono::milliseconds(below(40));
  application.quirks().mainIsNotKey = chance(3);
  if (chance(6)) application.quirks().untoldNotifications = {"AXUIElementDestroyed", "AXWindowMiniaturized"};
  if (!chance(4)) giveMenus(application);
  if (applications_.size() <= which) {
    applications_.push_back(application);
  } else {
    applications_[which] = application;
  }
  if (!chance(4)) open(newTitle());
}

std::string RandomDesktop::newTitle() {
  constexpr std::array kinds{"Window %.docx",
                             "Plan %",
                             "Report %.xlsx - Excel",
                             "Notes %.txt",
                             "Deck % \u2013 Saved to my Mac",
                             "Memo %.doc - Read-Only - Word",
                             "Budget % [Compatibility Mode]",
                             "A-%-Final"};
  std::string title = kinds[below(kinds.size())];
  return title.replace(title.find('%'), 1, std::to_string(++titles_));
}

void RandomDesktop::giveMenus(SimApplication& application) {
  const auto press = [this] {
    if (chance(3)) happen();
  };
  SimMenuItem create{"New", [this] { open(newTitle()); }};
  if (chance(4)) create.submenu = {{"Window", press}};
  application.setMenuBar({{"Apple", {}}, {"File", {create, {"Save", press, !chance(4)}}}});
  auto& save = application.menu({"File", "Save"});
  save.unansweredPress = chance(4);
  save.validated = !chance(3);
  if (chance(4)) save.refusedAttributes = {"AXEnabled"};
}

// Where a document is: nowhere yet, in the cloud, or on the disk.
std::string RandomDesktop::placeOf(const std::string& title) {
  if (chance(3)) return "";
  if (chance(4)) return "https://d.docs.live.net/1/" + title;
  return (mac_.home() / "Documents" / title).string();
}

AxRect RandomDesktop::frame() {
  const double x = static_cast<double>(below(1600)) - 200;
  const double y = static_cast<double>(below(700)) - 50;
  return {x, y, 150 + static_cast<double>(below(1300)), 100 + static_cast<double>(below(700))};
}

void RandomDesktop::open(const std::string& title) {
  auto& application = any(applications_);
  if (!application.isRunning()) return;
  if (applications_.size() == names.size() && application == applications_.back() && chance(2)) {
    SimDocument document{.name = title, .path = placeOf(title)};
    document.content = judge_.documents().contentOfNext();
    judge_.documents().put(document.path);
    const auto opened = mac_.office().openInWindow(application, document);
    if (opened->window) windows_.push_back(*opened->window);
    return;
  }
  if (chance(8)) {
    windows_.push_back(application.openUnfinished());
    return;
  }
  windows_.push_back(application.open(title, frame()));
  if (chance(2)) windows_.back().setDocument(urlOf("/Users/ann/" + title));
  giveQuirks(windows_.back());
}

void RandomDesktop::giveQuirks(SimWindow& window) {
  auto& quirks = window.quirks();
  if (chance(8)) quirks.asksBeforeClosing = true;
  if (chance(8)) quirks.minimumSize = {400, 300};
  if (chance(12)) quirks.maximumSize = {800, 500};
  // As terminals do.
  if (chance(12)) quirks.sizeIncrement = {7, 15};
  if (chance(12)) quirks.refusesSizes = true;
  if (chance(12)) quirks.listedTwice = true;
  if (chance(12)) quirks.confinedTo = AxRect{0, 25, 700, 400};
  if (chance(8)) {
    quirks.refusesMoves = true;
  } else if (chance(8)) {
    quirks.frameDelay = 200ms;
  }
}

void RandomDesktop::happen() {
  if (calm_) return;
  // Users answer what their applications ask.
  if (mac_.office().isAsking() && chance(2)) mac_.office().answer(chance(2));
  judge_.happened();
  const std::size_t what = below(24);
  if (what < 4 || windows_.empty()) {
    told("opens a window");
    return open(newTitle());
  }
  auto window = anyWindow();
  auto& application = any(applications_);
  told(std::string(happenings.at(what)) + " [" + window.title() + "], process " +
       std::to_string(what < 12 ? window.pid() : application.pid()));
  judge_.touched(window);
  what < 13 ? changeWindow(what, window, application) : changeDesktop(what, window, application);
}

// Mostly one that is still there.
SimWindow RandomDesktop::anyWindow() {
  std::vector<SimWindow> there;
  std::ranges::copy_if(windows_, std::back_inserter(there), [](const auto& each) { return each.exists(); });
  return there.empty() || chance(6) ? any(windows_) : any(there);
}

void RandomDesktop::changeWindow(std::size_t what, SimWindow& window, SimApplication& owner) {
  switch (what) {
    case 4:
    case 5:
      return chance(6) ? vanish(window) : window.close();
    case 6:
      return window.minimise();
    case 7:
      return window.restore();
    case 8:
    case 9: {
      const AxRect before = window.frame();
      const bool wasFullScreen = window.isFullScreen();
      what == 8 ? window.enterFullScreen() : window.leaveFullScreen();
      // Without a change of the frame nothing is told.
      if (window.isFullScreen() != wasFullScreen && window.frame() == before)
        judge_.leftInDoubt(window.pid());
      return;
    }
    case 10:
      return window.retitle(chance(5) ? std::string(300, 'x') : newTitle());
    case 11:
      return window.setFrame(frame());
    default:
      if (window.exists()) owner.focus(window);
  }
}

// Its application does not know yet that it is gone.
void RandomDesktop::vanish(SimWindow& window) {
  judge_.leftInDoubt(window.pid());
  window.vanishUnannounced();
}

void RandomDesktop::changeDesktop(std::size_t what, SimWindow& window, SimApplication& application) {
  switch (what) {
    case 13:
      return mac_.activate(application);
    case 14: {
      // One that can be seen is clicked.
      const auto clicked = std::ranges::find(applications_, window.pid(), &SimApplication::pid);
      if (clicked == applications_.end() || !window.isNamed() || window.isMinimised()) return;
      clicked->focus(window);
      return mac_.activate(*clicked);
    }
    case 15:
      mac_.terminate(application);
      return launch(static_cast<std::size_t>(&application - applications_.data()));
    case 16:
      return chance(2) ? mac_.leaveNobodyInFront() : mac_.activatePellar();
    case 17:
      return chance(2) ? application.hide() : application.show();
    case 18:
      return changeDisplays();
    case 19:
      return mac_.showSpace(anySpace());
    case 20:
      // By Mission Control, which is a space of its own while it is shown.
      mac_.showSpace(9);
      window.moveToSpace(anySpace());
      return mac_.showSpace(anySpace());
    case 21:
      return changeNativeTabs(application);
    default:
      return hang(application);
  }
}

// Mostly the one with the most windows.
int RandomDesktop::anySpace() {
  return chance(2) ? 0 : static_cast<int>(below(3));
}

void RandomDesktop::changeDisplays() {
  const auto first = SimScreens::screen({0, 0, 1440, 900}, 25, 0);
  const auto left = SimScreens::screen({-1200, -300, 1200, 1000}, 25, 70);
  switch (below(4)) {
    case 0:
      return mac_.screens().set({});
    case 1:
      return mac_.screens().set({left});
    case 2:
      return mac_.screens().set({first, left});
    default:
      return mac_.screens().set({first});
  }
}

void RandomDesktop::changeNativeTabs(SimApplication& application) {
  auto windows = application.windowsFrontToBack();
  std::erase_if(windows, [](const SimWindow& each) { return each.isMinimised() || each.isFullScreen(); });
  if (windows.size() < 2) return;
  for (const auto& each : windows) judge_.touched(each);
  if (chance(2)) return any(windows).selectNativeTab();
  application.joinAsTabs({windows[0], windows[1]});
}

void RandomDesktop::hang(SimApplication& application) {
  application.freeze();
  // It may have been amid the writes of a frame.
  judge_.frames().becomeUnsure();
  judge_.leftInDoubt(application.pid());
  judge_.log().mayRefuse(application.pid());
  if (chance(2)) actMeanwhile();
  if (!chance(4)) return application.resume();
  thaws_.push_back(mac_.mainLoop().after(std::chrono::seconds(below(200)),
                                         [application]() mutable { application.resume(); }));
}

}  // namespace pellar
