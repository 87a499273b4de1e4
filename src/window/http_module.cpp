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

/// The module, loaded once, for all threads.
class Module {
public:
    Module()
        : library_(QString::fromLocal8Bit((app::ProgramFolder() + OSTROVA_HTTP_MODULE).c_str())) {
        make_ = reinterpret_cast<MakeFunction>(library_.resolve("OstrovaMakeHttpClient"));
    }

    [[nodiscard]] std::unique_ptr<platform::HttpClient> MakeClient() const {
        if (make_ != nullptr) return std::unique_ptr<platform::HttpClient>(make_());
        return std::make_unique<NoClient>(library_.errorString().toLocal8Bit().toStdString());
    }

private:
    QLibrary library_;
    MakeFunction make_ = nullptr;
};

}  // namespace

std::unique_ptr<platform::HttpClient> LoadHttpClient() {
    // Never destroyed: a thread may still ask for a client while the program ends.
    static const Module* const module = new Module;
    return module->MakeClient();
}

}  // namespace ostrova::window
