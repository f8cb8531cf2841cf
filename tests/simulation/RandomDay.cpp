#include "tests/simulation/RandomDay.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <fstream>
#include <utility>

#include "tests/simulation/Titles.h"

namespace pellar {

using namespace std::chrono_literals;

RandomDay::RandomDay(unsigned seed) : RandomUser(seed) {
  // Every other day.
  if (seed % 2 == 0) {
    interrupted_.happening = [this] {
      if (chance(6)) happen();
      if (chance(6)) mac().settle();
    };
  }
  // On every third.
  if (seed % 3 == 0) {
    interrupted_.lies = [this](ProcessId pid) {
      if (honest_ || !chance(150)) return false;
      judge().lied(pid);
      return true;
    };
  }
  mac().scripts().answer = [this](const std::string& source) { return answer(source); };
  pellar_->store().update([&](AppState& state) {
    state.settings.acceptedEulaVersion = "1";
    if (chance(2)) state.settings.autoSaveMinutes = 1;
    for (const char* name : {"Plan.txt", "Report.txt", "Budget.docx"}) {
      const std::string path = mac().home() / name;
      std::ofstream(path) << judge().documents().contentOfNext();
      judge().documents().put(path);
      state.touchRecent(path, "org.example.editor", 1);
    }
  });
  judge().state().adopt();
  begin();
  // Scripts may have been interrupted.
  judge().draggedSomewhere();
  start();
  honest_ = false;
}

std::optional<Finding> RandomDay::live(const std::vector<unsigned>& steps, bool toBeRead) {
  unsigned now = 0;
  const auto finding = [&](std::string what) {
    if (!toBeRead) told(judge().described());
    return Finding{now, std::move(what), trail()};
  };
  try {
    for (const unsigned number : steps) {
      now = number;
      beginStep(number);
      told("-- step " + std::to_string(number));
      step();
      if (toBeRead) told(judge().described());
      if (!judge().findings().empty()) return finding(judge().findings().front());
    }
    now = stepsPerDay;
    beginStep(now);
    told("-- evening");
    evening();
    if (!judge().findings().empty()) return finding(judge().findings().front());
  } catch (const std::exception& error) {
    return finding(error.what());
  }
  return std::nullopt;
}

void RandomDay::step() {
  answerMenusAndQuestions();
  if (chance(60)) {
    killedInTheMiddle();
  } else if (chance(60)) {
    changeWhileTheDiskRefuses();
  } else {
    chance(2) ? happen() : act();
  }
  if (chance(60)) restart();
  if (chance(200)) quit();
  mac().settle();
  judge().atRest();
  if (zoomBack()) judge().atRest();
  if (chance(4)) mac().advance(std::chrono::milliseconds(below(900)));
  if (chance(40)) mac().advance(31s);
  if (chance(400)) mac().advance(8h);
  if (chance(100)) setTheClock();
  if (chance(60)) answerForUpdates();
  if (chance(judge().isFrontInDoubt() ? 2 : 6)) {
    lookAgain();
  } else {
    mac().settle();
    judge().atRest();
  }
  if (chance(10))
    if (const auto wrong = judge().documents().compare()) judge().found(*wrong);
}

void RandomDay::lookAgain() {
  told("the screens are announced again");
  honest_ = true;
  mac().settle();
  // One that answers only while it is looked at is looked at too early.
  judge().looksAgain();
  mac().screens().set(mac().screens().screens());
  mac().settle();
  judge().atRest();
  honest_ = isEvening_;
}

void RandomDay::evening() {
  calmDown();
  honest_ = isEvening_ = true;
  mac().pointer().moveTo({-3000, -3000});
  mac().advance(30s);
  if (judge().panels().anyStays()) judge().found("a panel stays though the pointer left long ago");
  for (auto& each : applications()) goBackTo(each);
  mac().advance(30s);
  lookForColoursLeftBehind();
  if (mac().office().launches() > 0) judge().found("a script brought an application back");
  // The looks for updates, and auto-save where it is on.
  if (mac().mainLoop().activeTimers() > 2) judge().found("timers are left over");
  if (const auto wrong = judge().documents().compare()) judge().found(*wrong);
}

// By now each application that is followed and has a strip has been asked again.
void RandomDay::lookForColoursLeftBehind() {
  if (!judge().state().follows("com.microsoft.Word") || !mac().strip().visible()) return;
  const auto documents = mac().office().documents(applications().back());
  for (const auto& [window, from] : lateRenames()) {
    const auto named = judge().names().filesOf(window);
    const auto document = judge().names().documentOf(window);
    // Of two of one name it is not sure which one the window has, nor of one that bears another title.
    if (!TabPlaces::hasTab(window) || !document || document->path == from || named.size() != 2 ||
        titles::nameOfFile(document->path) != titles::plainName(window.title()))
      continue;
    const bool isOpen = std::ranges::any_of(documents, [&](const auto& each) { return each->path == from; });
    if (!isOpen && judge().state().expected().tags.contains(from))
      judge().found("the colour of " + from + " did not go along to " + document->path);
  }
}

void RandomDay::goBackTo(SimApplication& application) {
  mac().leaveNobodyInFront();
  mac().settle();
  mac().activate(application);
  mac().advance(30s);
  // Others may have been in front meanwhile, where activations take their time.
  judge().frames().becomeUnsure();
  lookAgain();
}

void RandomDay::start() {
  lateRenames().clear();
  judge().started();
  pellar_->applicationDidFinishLaunching();
  mac().settle();
  judge().atRest();
}

void RandomDay::restart() {
  told("restarts");
  end();
  if (chance(2)) happen();
  mac().settle();
  pellar_.emplace(mac().platformWith(interrupted_), disk_.operations());
  start();
}

void RandomDay::end() {
  pellar_.reset();
  if (!mac().panels().all().empty() || mac().eventMonitors().watched() || mac().eventTaps().count() > 0 ||
      mac().accessibility().liveObservers() > 0)
    judge().found("something is left of the program that ended");
}

// Nothing that it does after some step of its work on files reaches the disk, and then it is gone.
void RandomDay::killedInTheMiddle() {
  disk_.refuseFrom(below(20), std::errc::io_error);
  told("(is killed at some write)");
  judge().log().disk(/*refuses=*/true);
  act();
  mac().settle();
  if (!disk_.refused()) {
    disk_.recover();
    return judge().log().disk(/*refuses=*/false);
  }
  told("was killed");
  judge().state().wasKilled();
  end();
  disk_.recover();
  if (const auto wrong = judge().log().compare()) judge().found("a line in the log: " + *wrong);
  judge().log().disk(/*refuses=*/false);
  if (const auto wrong = judge().state().compare()) judge().found("after the end at a write: " + *wrong);
  mac().settle();
  pellar_.emplace(mac().platformWith(interrupted_), disk_.operations());
  start();
  // What was left half done goes with the next save.
  changeTheUpdateSetting();
}

// What the user chooses meanwhile stays in memory, and on the disk is the old or the new; the next save has
// it all.
void RandomDay::changeWhileTheDiskRefuses() {
  constexpr std::array reasons{std::errc::no_space_on_device, std::errc::read_only_file_system,
                               std::errc::io_error, std::errc::permission_denied};
  const auto why = reasons[below(reasons.size())];
  chance(2) ? disk_.refuseOne(below(12), why) : disk_.refuseFrom(below(12), why);
  told("the disk refuses");
  judge().log().disk(/*refuses=*/true);
  const auto saidBefore = judge().log().failedSaves();
  judge().happened();
  chance(2) ? tagTab() : changeSettings();
  mac().settle();
  if (!judge().state().isWhole()) judge().found("the state file cannot be read after a refused write");
  if (const auto wrong = judge().log().compare()) judge().found("a line in the log: " + *wrong);
  if (disk_.refusedAFile() && judge().log().failedSaves() == saidBefore)
    judge().found("a save that failed is not in the log");
  told("the disk is sound again");
  disk_.recover();
  judge().log().disk(/*refuses=*/false);
  changeTheUpdateSetting();
}

void RandomDay::setTheClock() {
  const auto by = std::chrono::hours(below(100)) - 50h;
  told("the clock is set by " + std::to_string(by.count()) + " hours");
  mac().mainLoop().setClock(by);
  judge().state().clockIsSet();
}

// Of every kind, good ones and bad ones.
void RandomDay::answerForUpdates() {
  constexpr std::array bodies{R"({"latest":"1.3.9"})",
                              R"({"latest":"1.4.0","eula":{"version":"1"}})",
                              R"({"latest":"1.4"})",
                              R"({"latest":"v.next"})",
                              R"({"latest":"1.5.0","url":7})",
                              R"({"latest":["1.5.0"]})",
                              R"({"eula":{"version":"9"}})",
                              R"({"latest":"1.5.0","eula":{}})",
                              R"({"latest":"1.5.0")",
                              R"([])",
                              R"("1.5.0")",
                              R"()",
                              R"(<html>Log in to the hotel</html>)"};
  constexpr std::array newer{"1.5.0", "2.0", "1.4.0.1"};
  if (chance(2))
    mac().notifications().granted = std::array<std::optional<bool>, 3>{true, false, {}}[below(3)];
  switch (below(5)) {
    case 0:
      told("the server is silent");
      return mac().web().staySilent();
    case 1:
      told("the server breaks off");
      return mac().web().breakOff();
    case 2: {
      const std::string latest = newer[below(newer.size())];
      told("the server offers " + latest);
      judge().updates().offered(latest);
      return mac().web().answer(R"({"latest":")" + latest + R"(","url":"https://pellar.example/get"})",
                                std::chrono::milliseconds(below(20'000)));
    }
    default: {
      const std::string body = chance(10) ? std::string(2 << 20, '[') : bodies[below(bodies.size())];
      told("the server answers " + body.substr(0, 40));
      return mac().web().answer(body, std::chrono::milliseconds(below(20'000)));
    }
  }
}

void RandomDay::quit() {
  if (!mac().statusBar().hasItem()) return;
  told("quits");
  const int before = mac().program().terminations();
  mac().statusBar().choose({"Quit Pellar"});
  if (mac().program().terminations() != before + 1) judge().found("the program did not quit");
  restart();
}

// Scripts fail, do it and say that they failed, and say that they saved what they did not, or not a word of
// it.
ScriptResult RandomDay::answer(const std::string& source) {
  if (scriptsUnderWay_ > 0) judge().found("scripts ran inside one another");
  const bool saves = source.find("save as d") != std::string::npos;
  const ScriptResult failure{std::nullopt, "{\n    NSAppleScriptErrorNumber = \"-1712\";\n}"};
  if (!honest_ && chance(40)) return failure;
  if (!honest_ && saves && chance(10)) {
    const auto from = source.rfind("file name \"");
    if (chance(2) && from != std::string::npos) {
      constexpr std::size_t commandLength = 11;
      const std::string rest = source.substr(from + commandLength);
      std::ofstream(rest.substr(0, rest.find('"')));  // an empty file
    }
    return {ScriptDescriptor{std::string("ok")}, std::nullopt};
  }
  ++scriptsUnderWay_;
  auto result = mac().scripts().interpret(source);
  --scriptsUnderWay_;
  return !honest_ && chance(40) ? failure : result;
}

}  // namespace pellar
