#include "cli/stoppable_http.h"

#include <utility>

namespace ostrova::cli {
namespace {

class StoppableClient final : public platform::HttpClient {
public:
    StoppableClient(std::unique_ptr<platform::HttpClient> client,
                    const std::atomic<int>& stopSignal)
        : client_(std::move(client)), stopSignal_(stopSignal) {}

    platform::HttpResponse Perform(const platform::HttpRequest& request,
                                   const platform::HttpEvents& events) override {
        if (Stopped()) {
            platform::HttpResponse response;
            response.error = platform::HttpError::Cancelled;
            return response;
        }
        platform::HttpEvents guarded = events;
        guarded.onIdle = [this, &events] {
            return !Stopped() && (!events.onIdle || events.onIdle());
        };
        return client_->Perform(request, guarded);
    }

private:
    [[nodiscard]] bool Stopped() const { return stopSignal_.load() != 0; }

    std::unique_ptr<platform::HttpClient> client_;
    const std::atomic<int>& stopSignal_;
};

}  // namespace

std::unique_ptr<platform::HttpClient> MakeStoppable(std::unique_ptr<platform::HttpClient> client,
                                                    const std::atomic<int>& stopSignal) {
    return std::make_unique<StoppableClient>(std::move(client), stopSignal);
}

}  // namespace ostrova::cli
