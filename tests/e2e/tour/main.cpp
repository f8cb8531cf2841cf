// e2e_tour PELLAR FOLDER: works the strip as a user would, on a private virtual desktop, and leaves pictures
// of it.
#include <filesystem>
#include <iostream>

#include "tests/e2e/Process.h"
#include "tests/e2e/tour/Interruption.h"
#include "tests/e2e/tour/Tour.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: e2e_tour PELLAR FOLDER\n";
    return 2;
  }
  pellar::e2e::adoptOrphans();
  pellar::e2e::noteInterruptions();
  // Programs are found by name, so a path must not look like one.
  bool good = pellar::e2e::runTour(std::filesystem::absolute(argv[1]).string(), argv[2]);
  for (const auto& command : pellar::e2e::childrenLeft()) {
    std::cerr << "tour: FAILED: left running: " << command << '\n';
    good = false;
  }
  pellar::e2e::killChildrenLeft();
  if (good) std::cout << "tour: all seen; the pictures are in " << argv[2] << '\n';
  return good ? 0 : 1;
}
