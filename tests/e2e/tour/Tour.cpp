#include "tests/e2e/tour/Tour.h"

#include <cstdio>
#include <exception>
#include <iostream>
#include <stdexcept>

#include "tests/e2e/tour/Interruption.h"
#include "tests/e2e/tour/MenuSteps.h"
#include "tests/e2e/tour/PanelSteps.h"
#include "tests/e2e/tour/Photographer.h"
#include "tests/e2e/tour/ShellSteps.h"
#include "tests/e2e/tour/Stage.h"
#include "tests/e2e/tour/StripSteps.h"

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
    const auto file = photographer.take(step.picture);
    say(step.deed + "; seen: " + stage.seen() + " -> " + file.string());
    return true;
  } catch (const std::exception& problem) {
    report(step.deed, problem);
    if (!stage.complaints().empty())
      std::cerr << "tour: Pellar complained: " << stage.complaints() << std::endl;
  }
  try {
    say("what it looked like -> " + photographer.take("failed").string());
  } catch (const std::exception& problem) {
    report("a picture of it", problem);
  }
  return false;
}

}  // namespace

bool runTour(const std::string& pellarProgram, const std::filesystem::path& folder) {
  try {
    Stage stage(pellarProgram);
    Photographer photographer(stage.observer(), folder);
    for (const auto& steps : {firstStartSteps(stage), stripSteps(stage), menuSteps(stage), panelSteps(stage),
                              shellSteps(stage)}) {
      for (const auto& step : steps) {
        if (interrupted()) throw std::runtime_error("interrupted");
        if (!perform(step, stage, photographer)) return false;
      }
    }
    stage.endPellar();
    say("ended Pellar; it went in order");
    return true;
  } catch (const std::exception& problem) {
    report("the tour", problem);
  }
  return false;
}

}  // namespace pellar::e2e
