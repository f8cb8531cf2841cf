#include "platform/linux/desktop/QtHttpClient.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>
#include <utility>

namespace pellar {
namespace {

constexpr int mostRedirects = 5;
// Longer than a resolver tries.
constexpr qint64 longestLookUp = 60'000;

// An answer with an unhappy status is an answer; what breaks before or inside one is none.
bool isWhole(const QNetworkReply& reply) {
  if (!reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid()) return false;
  const auto error = reply.error();
  return error == QNetworkReply::NoError || error == QNetworkReply::ProtocolInvalidOperationError ||
         (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
         (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

// The library takes a connection closed too early for the end of the body. Of a body sent in chunks it does
// not say whether the last one came; half a text then still is no text that its reader knows.
bool hasPromisedLength(const QNetworkReply& reply, qsizetype length) {
  const auto promised = reply.header(QNetworkRequest::ContentLengthHeader);
  return !promised.isValid() || promised.toLongLong() == length;
}

void takeAway(QNetworkAccessManager* network) {
  // Exchanges end inside one of its signals.
  network->deleteLater();
}

}  // namespace

// One request. Ends itself, and tells, when it is answered, out of time or too long.
class QtHttpClient::Exchange : public QObject {
 public:
  Exchange(std::shared_ptr<QNetworkAccessManager> network, const HttpRequest& request, Reply reply)
      : network_(std::move(network)), largestBody_(request.largestBody), reply_(std::move(reply)) {
    QNetworkRequest native(QUrl(QString::fromStdString(request.url), QUrl::StrictMode));
    native.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    native.setMaximumRedirectsAllowed(mostRedirects);
    // A compressed answer could be longer than it looks.
    native.setRawHeader("Accept-Encoding", "identity");
    native.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Pellar"));
    native_ = network_->get(native);
    connect(native_, &QNetworkReply::readyRead, this, [this] { take(); });
    connect(native_, &QNetworkReply::finished, this, [this] { conclude(); });
    connect(&limit_, &QTimer::timeout, this, [this] { end(std::nullopt); });
    limit_.setSingleShot(true);
    limit_.setTimerType(Qt::PreciseTimer);
    limit_.start(request.timeout);
  }
  ~Exchange() override {
    native_->disconnect(this);
    native_->abort();
    native_->deleteLater();
  }
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  // Never tells anybody any more, and goes as soon as it can.
  void drop() {
    reply_ = nullptr;
    limit_.stop();
    native_->disconnect(this);
    deleteLater();
  }

 private:
  void take() {
    body_ += native_->readAll();
    if (static_cast<std::size_t>(body_.size()) > largestBody_) end(std::nullopt);
  }

  void conclude() {
    take();
    if (!reply_) return;
    if (isWhole(*native_) && hasPromisedLength(*native_, body_.size())) {
      end(body_.toStdString());
    } else {
      end(std::nullopt);
    }
  }

  void end(std::optional<std::string> body) {
    limit_.stop();
    native_->disconnect(this);
    // The receiver may drop this exchange.
    if (const auto reply = std::exchange(reply_, nullptr)) reply(std::move(body));
  }

  std::shared_ptr<QNetworkAccessManager> network_;
  std::size_t largestBody_;
  Reply reply_;
  QNetworkReply* native_;
  QByteArray body_;
  QTimer limit_;
};

QtHttpClient::QtHttpClient() = default;

QtHttpClient::~QtHttpClient() = default;

std::shared_ptr<QNetworkAccessManager> QtHttpClient::network() {
  auto network = network_.lock();
  if (!network) {
    network = std::shared_ptr<QNetworkAccessManager>(new QNetworkAccessManager, &takeAway);
    network_ = network;
  }
  return network;
}

Subscription QtHttpClient::get(const HttpRequest& request, Reply reply) {
  sinceRequest_.start();
  auto* const exchange = new Exchange(network(), request, std::move(reply));
  return Subscription([exchange] { exchange->drop(); });
}

bool QtHttpClient::mayBeLookingUpNames() const {
  return sinceRequest_.isValid() && !sinceRequest_.hasExpired(longestLookUp);
}

}  // namespace pellar
