#include "window/http_module.h"

#include <QLibrary>
#include <string>
#include <utility>

#include "app/program_files.h"

namespace ostrova::window {
namespace {

using MakeFunction = platform::HttpClient* (*)();

/// Stands for the network where the program is not whole.
class NoClient final : public platform::HttpClient {
public:
    explicit NoClient(std::string reason) : reason_(std::move(reason)) {}

    platform::HttpResponse Perform(const platform::HttpRequest& /*request*/,
                                   const platform::HttpEvents& /*events*/) override {
        platform::HttpResponse response;
        response.error = platform::HttpError::NoConnection;
        response.detail = reason_;
        return response;
    }

private:
    std::string reason_;
};

}  // namespace

std::unique_ptr<platform::HttpClient> LoadHttpClient() {
    const std::string path = app::ProgramFolder() + OSTROVA_HTTP_MODULE;
    QLibrary module(QString::fromLocal8Bit(path.c_str()));
    const auto make = reinterpret_cast<MakeFunction>(module.resolve("OstrovaMakeHttpClient"));
    if (make == nullptr) {
        return std::make_unique<NoClient>(module.errorString().toLocal8Bit().toStdString());
    }
    return std::unique_ptr<platform::HttpClient>(make());
}

}  // namespace ostrova::window
