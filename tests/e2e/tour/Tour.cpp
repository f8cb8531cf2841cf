#include "tests/e2e/tour/Tour.h"

#include <exception>
#include <iostream>
#include <stdexcept>

#include "tests/e2e/tour/Interruption.h"
#include "tests/e2e/tour/MenuSteps.h"
#include "tests/e2e/tour/PanelSteps.h"
#include "tests/e2e/tour/Photographer.h"
#include "tests/e2e/tour/ScreenSteps.h"
#include "tests/e2e/tour/ShellSteps.h"
#include "tests/e2e/tour/Stage.h"
#include "tests/e2e/tour/StripSteps.h"
#include "tests/e2e/tour/WindowSteps.h"

namespace pellar::e2e {

namespace {

void say(const std::string& line) {
  std::cout << "tour: " << line << std::endl;
}

void report(const std::string& what, const std::exception& problem) {
  std::cerr << "tour: FAILED: " << what << ": " << problem.what() << std::endl;
}

// False when the step did not do what it should.
bool perform(const Step& step, Stage& stage, Photographer& photographer) {
  try {
    step.act();
    const auto file = photographer.take(stage.observer(), step.picture);
    say(step.deed + "; seen: " + stage.seen() + " -> " + file.string());
    return true;
  } catch (const std::exception& problem) {
    report(step.deed, problem);
    if (!stage.complaints().empty())
      std::cerr << "tour: Pellar complained: " << stage.complaints() << std::endl;
  }
  try {
    say("what it looked like -> " + photographer.takeAtOnce(stage.observer(), "failed").string());
  } catch (const std::exception& problem) {
    report("a picture of it", problem);
  }
  return false;
}

// False when a step did not do what it should.
bool performAll(const std::vector<std::vector<Step>>& acts, Stage& stage, Photographer& photographer) {
  for (const auto& steps : acts) {
    for (const auto& step : steps) {
      if (interrupted()) throw std::runtime_error("interrupted");
      if (!perform(step, stage, photographer)) return false;
    }
  }
  stage.endPellar();
  say("ended Pellar; it went in order");
  return true;
}

bool tourAtOnePixelAPoint(const std::string& pellarProgram, Photographer& photographer) {
  Stage stage(pellarProgram);
  return performAll({firstStartSteps(stage), windowSteps(stage), stripSteps(stage), menuSteps(stage),
                     panelSteps(stage), shellSteps(stage), secondMonitorSteps(stage)},
                    stage, photographer);
}

bool tourAtTwoPixelsAPoint(const std::string& pellarProgram, Photographer& photographer) {
  say("now a desktop at 200 %");
  Stage stage(pellarProgram, 2);
  return performAll({firstStartSteps(stage), doubleDensitySteps(stage), shellSteps(stage)}, stage,
                    photographer);
}

}  // namespace

bool runTour(const std::string& pellarProgram, const std::filesystem::path& folder) {
  try {
    Photographer photographer(folder);
    return tourAtOnePixelAPoint(pellarProgram, photographer) &&
           tourAtTwoPixelsAPoint(pellarProgram, photographer);
  } catch (const std::exception& problem) {
    report("the tour", problem);
  }
  return false;
}

}  // namespace pellar::e2e
