#pragma once

#include <QApplication>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "app/application.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/memory_store.h"
#include "tests/support/moments.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"
#include "util/files.h"
#include "window/main_dialog.h"
#include "window/pumping_http.h"

namespace ostrova::testing {

/// A timer that rings when somebody says so.
class HandTimer final : public window::DueTimer {
public:
    void Arm(util::EpochSeconds moment) override { armed = moment; }
    void Disarm() override { armed.reset(); }

    std::optional<util::EpochSeconds> armed;
};

/// Somebody with a home and a clock of his own, who opens the main window and closes it again. It
/// is a Wednesday, and he has no upgrade checks made by themselves.
class WindowUser {
public:
    using MakeHttp = std::function<std::unique_ptr<platform::HttpClient>()>;

    explicit WindowUser(MakeHttp makeHttp) : makeHttp_(std::move(makeHttp)), messages_(recorder) {
        store.values[{"Settings", "CheckForUpgrades"}] = 0;
    }
    ~WindowUser() {
        Forget();
        static_cast<void>(util::ChangeFolder(startFolder_));
    }
    WindowUser(const WindowUser&) = delete;
    WindowUser& operator=(const WindowUser&) = delete;

    void WriteList(const std::string& lines) const { home.Write("Ostrova/SearchList.txt", lines); }

    /// Starts the program and shows its window, as `ostrova-window` does.
    window::MainDialog& Open() {
        Forget();
        application = std::make_unique<app::Application>(Parts());
        application->Start({});
        static_cast<void>(application->ClaimMainWindow());
        application->LoadFirstWeekend();
        dialog = std::make_unique<window::MainDialog>(
            window::MainWorld{.application = application.get(),
                              .messages = &messages_,
                              .clock = &clock,
                              .timer = &timer,
                              .stopFetching = [this] { cancel_ = true; },
                              .cancelShown = [] { return false; },
                              .closeBoxes = [this] { ++boxesClosed; },
                              .settingsFolder = home.Path("config"),
                              .errors = &errors});
        QObject::connect(dialog.get(), &window::MainDialog::closed, dialog.get(),
                         [this] { ++closed; });
        dialog->OnInitDialog();
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
        Settle();
        return *dialog;
    }

    /// The program is gone, without a word.
    void Forget() {
        dialog.reset();
        application.reset();
        cancel_ = false;
    }

    /// Lets the window handle all that waits.
    static void Settle() {
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    }

    TempFolder home;
    FakeClock clock{At("2026-11-25 09:00:00")};
    MessageRecorder recorder;
    MemoryStore store;
    std::ostringstream errors;
    HandTimer timer;
    std::unique_ptr<app::Application> application;
    std::unique_ptr<window::MainDialog> dialog;
    int closed = 0;       // how often a window was closed
    int boxesClosed = 0;  // how often all open boxes were to go

private:
    app::ApplicationParts Parts() {
        app::ApplicationParts parts;
        parts.clock = &clock;
        parts.messages = &messages_;
        parts.settingsStore = &store;
        parts.makeHttp = [this] { return window::MakePumpingHttp(makeHttp_); };
        parts.programPath = home.Path("program/ostrova");
        parts.runtimeFolder = home.Path();
        parts.hosts = {"http://site.test", "http://site.test"};
        parts.errors = &errors;
        parts.cancel = &cancel_;
        return parts;
    }

    const std::string startFolder_ = util::CurrentFolder();
    EnvironmentVariable data_{"XDG_DATA_HOME", home.Path()};
    EnvironmentVariable runtime_{"XDG_RUNTIME_DIR", home.Path()};
    EnvironmentVariable homeFolder_{"HOME", home.Path()};
    MakeHttp makeHttp_;
    feedback::Messages messages_;
    std::atomic<bool> cancel_ = false;
};

}  // namespace ostrova::testing
