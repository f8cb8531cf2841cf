#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "tests/e2e/AssistiveTest.h"

namespace pellar::e2e {
namespace {

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

}  // namespace

void Assistive::openTwo() {
  openWindows();
  startPellar();
  waitForStrip();
  startReader();
}

void Assistive::openWindows() {
  report = editor().open("Report", {60, 160, 1000, 400});
  plan = editor().open("Plan", {200, 260, 1000, 400});
}

void Assistive::waitForStrip() {
  strip.waitUntilOver(plan);
  strip.waitUntilTabs(2);
}

void Assistive::startReader() {
  reader = desktop.start({builtProgram("e2e_reader")}, "reader");
}

std::string Assistive::ask(const std::string& command) {
  reader->write(command);
  return reader->readLine(std::chrono::seconds(60));
}

void Assistive::switchOn() {
  tell("on");
  waitUntilRead();
}

void Assistive::waitUntilRead() {
  desktop.observer().waitUntil("Pellar can be read", [this] { return ask("read") != "-"; });
}

bool Assistive::isRegistered() {
  const auto names = split(ask("programs"), '|');
  return std::ranges::count(names, "Pellar") > 0;
}

pid_t Assistive::processOf(const std::string& part) {
  const pid_t process = std::stoi(ask("pid " + part));
  if (process == 0) throw std::runtime_error("the " + part + " does not run");
  return process;
}

std::vector<ToldElement> Assistive::read() {
  std::vector<ToldElement> told;
  for (const auto& line : split(ask("read"), '|')) {
    auto parts = split(line, ';');
    parts.resize(5);
    auto numbers = split(parts[4], ',');
    numbers.resize(4, "0");
    told.push_back(
        {parts[0],
         parts[1],
         parts[2],
         parts[3],
         {std::stoi(numbers[0]), std::stoi(numbers[1]), std::stoi(numbers[2]), std::stoi(numbers[3])}});
  }
  return told;
}

std::vector<std::string> Assistive::lines() {
  std::vector<std::string> all;
  for (const auto& each : read()) all.push_back(each.role + " " + each.name);
  return all;
}

ToldElement Assistive::element(const std::string& name) {
  for (const auto& each : read())
    if (each.name == name) return each;
  ADD_FAILURE() << "nothing is told of " << name;
  return {};
}

void Assistive::waitUntilSelected(const std::string& name) {
  desktop.observer().waitUntil(name + " is told to be selected",
                               [&] { return element(name).states == "selected"; });
}

}  // namespace pellar::e2e
