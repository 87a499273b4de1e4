#include "window/pumping_http.h"

#include <QCoreApplication>
#include <QThread>
#include <utility>

namespace ostrova::window {
namespace {

class PumpingClient final : public platform::HttpClient {
public:
    explicit PumpingClient(std::function<std::unique_ptr<platform::HttpClient>()> make)
        : make_(std::move(make)) {}

    platform::HttpResponse Perform(const platform::HttpRequest& request,
                                   const platform::HttpEvents& events) override {
        if (!client_) client_ = make_();
        // A worker's requests hold nothing up.
        if (QThread::currentThread() != QCoreApplication::instance()->thread()) {
            return client_->Perform(request, events);
        }
        platform::HttpEvents pumping = events;
        pumping.onIdle = [&events] {
            QCoreApplication::processEvents();
            return !events.onIdle || events.onIdle();
        };
        return client_->Perform(request, pumping);
    }

private:
    std::function<std::unique_ptr<platform::HttpClient>()> make_;
    std::unique_ptr<platform::HttpClient> client_;
};

}  // namespace

std::unique_ptr<platform::HttpClient> MakePumpingHttp(
    std::function<std::unique_ptr<platform::HttpClient>()> make) {
    return std::make_unique<PumpingClient>(std::move(make));
}

}  // namespace ostrova::window
