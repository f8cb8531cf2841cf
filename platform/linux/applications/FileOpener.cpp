#include "platform/linux/applications/FileOpener.h"

#include <QDesktopServices>
#include <QUrl>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

#include "core/FileUrl.h"
#include "core/Log.h"
#include "platform/MainLoop.h"

namespace pellar {
namespace {

constexpr std::chrono::milliseconds betweenTwo{50};

}  // namespace

void FileOpener::open(std::string path) {
  waiting_.push_back(std::move(path));
  if (!busy_) next();
}

void FileOpener::next() {
  busy_ = !waiting_.empty();
  if (!busy_) return;
  std::string path = std::move(waiting_.front());
  waiting_.pop_front();
  thread_.post([path = std::move(path), loop = &loop_, this, alive = alive_.watch()] {
    std::error_code error;
    const bool exists = std::filesystem::exists(path, error);
    if (!alive) return;
    loop->post([path, exists, this, alive] {
      if (alive) launch(path, exists);
    });
  });
}

void FileOpener::launch(const std::string& path, bool exists) {
  if (!exists) {
    Log::write("cannot open " + path + ": there is no such file");
    next();
    return;
  }
  if (!QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(fileUrlOf(path)))))
    Log::write("cannot open " + path + ": nothing here opens files");
  pause_ = loop_.after(betweenTwo, [this] { next(); });
}

}  // namespace pellar
