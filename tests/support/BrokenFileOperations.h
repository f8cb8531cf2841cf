#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/FileOperations.h"

namespace pellar::test {

// The machine's own file system, except that each step may be made to fail or be watched. Records the steps
// by name, in their order.
class BrokenFileOperations final : public FileOperations {
 public:
  // Asked before a step with its name; an error makes the step fail without doing anything.
  std::function<std::error_code(std::string_view step)> before = [](std::string_view) {
    return std::error_code{};
  };
  // Whether the place that a rename takes a file from is on another device than where it goes.
  std::function<bool(const std::filesystem::path& from)> crossesDevices = [](const auto&) { return false; };
  // The most bytes that one write takes.
  std::size_t longestWrite = std::string::npos;
  std::vector<std::string> steps;
  // What flushFile and flushFolder were asked to make last.
  std::vector<std::filesystem::path> flushed;

  std::error_code createFolders(const std::filesystem::path& folder) override {
    const auto error = begin("createFolders");
    return error ? error : system_.createFolders(folder);
  }
  std::error_code createFile(const std::filesystem::path& file, int& descriptor) override {
    const auto error = begin("createFile");
    return error ? error : system_.createFile(file, descriptor);
  }
  std::error_code write(int descriptor, std::string_view bytes, std::size_t& written) override {
    const auto error = begin("write");
    return error ? error : system_.write(descriptor, bytes.substr(0, longestWrite), written);
  }
  std::error_code flush(int descriptor) override {
    const auto error = begin("flush");
    return error ? error : system_.flush(descriptor);
  }
  std::error_code close(int descriptor) override {
    const auto error = begin("close");
    const auto closeError = system_.close(descriptor);
    return error ? error : closeError;
  }
  std::error_code restrictToOwner(const std::filesystem::path& file) override {
    const auto error = begin("restrictToOwner");
    return error ? error : system_.restrictToOwner(file);
  }
  std::error_code rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    if (const auto error = begin("rename")) return error;
    return crossesDevices(from) ? std::make_error_code(std::errc::cross_device_link)
                                : system_.rename(from, to);
  }
  std::error_code flushFile(const std::filesystem::path& file) override {
    flushed.push_back(file);
    const auto error = begin("flushFile");
    return error ? error : system_.flushFile(file);
  }
  std::error_code flushFolder(const std::filesystem::path& folder) override {
    flushed.push_back(folder);
    const auto error = begin("flushFolder");
    return error ? error : system_.flushFolder(folder);
  }
  std::error_code remove(const std::filesystem::path& file) override {
    const auto error = begin("remove");
    return error ? error : system_.remove(file);
  }
  std::vector<std::string> names(const std::filesystem::path& folder) override {
    return begin("names") ? std::vector<std::string>{} : system_.names(folder);
  }
  std::error_code read(const std::filesystem::path& file, std::size_t limit, std::string& content) override {
    const auto error = begin("read");
    return error ? error : system_.read(file, limit, content);
  }

 private:
  std::error_code begin(std::string_view step) {
    steps.emplace_back(step);
    return before(step);
  }

  FileOperations& system_ = systemFileOperations();
};

}  // namespace pellar::test
