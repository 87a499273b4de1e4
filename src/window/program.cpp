#include "window/program.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "app/application.h"
#include "app/program_files.h"
#include "app/user_stores.h"
#include "app/version.h"
#include "platform/process.h"
#include "platform/user_folders.h"
#include "uikit/progress_dialog.h"
#include "uikit/widget_presenter.h"
#include "window/end_signals.h"
#include "window/http_module.h"
#include "window/main_dialog.h"
#include "window/placement.h"
#include "window/pumping_http.h"
#include "window/window_icon.h"

namespace ostrova::window {
namespace {

constexpr int Trouble = 2;

bool IsSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// The toolkit gives up with an abort when it finds no display: that is no crash, and gets words.
void OnToolkitMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    std::fprintf(stderr, "ostrova: %s\n", text.toLocal8Bit().constData());
    if (type == QtFatalMsg) std::_Exit(Trouble);
}

void Introduce() {
    QApplication::setApplicationName(QStringLiteral("Ostrova"));
    QApplication::setApplicationVersion(QString::fromLatin1(app::ProgramVersion));
    QApplication::setDesktopFileName(QStringLiteral("ostrova"));
    QApplication::setWindowIcon(WindowIcon());
    // Boxes and progress come and go before the main window is there.
    QApplication::setQuitOnLastWindowClosed(false);
}

/// The parts of a run with a window, in the order in which they need each other.
class Run {
public:
    explicit Run(const app::Hosts& hosts)
        : messages_(presenter_),
          progress_(clock_, progressDialogs_, messages_),
          settingsStore_(app::OpenSettingsStore()),
          internetStore_(app::OpenInternetStore()),
          application_(Parts(hosts)) {}

    int Execute() {
        QObject::connect(&endSignals_, &EndSignals::endRequested, &endSignals_, [this] { End(); });
        application_.Start({});
        if (!application_.ClaimMainWindow()) return 0;
        application_.LoadFirstWeekend();
        if (isEnding_) return 0;
        const std::unique_ptr<DueTimer> timer = MakeDueTimer();
        MainDialog dialog(World(*timer));
        presenter_.SetMainWindow(&dialog);
        progressDialogs_.SetMainWindow(&dialog);
        QObject::connect(&dialog, &MainDialog::closed, qApp, &QCoreApplication::quit);
        dialog.OnInitDialog();
        if (isEnding_) {  // it came while a box told of a list that can't be read
            application_.CloseMainWindow(/*nobodyCanBeTold=*/true);
            return 0;
        }
        // From here on the list is known, and may be saved.
        dialog_ = &dialog;
        dialog.show();
        const int status = QApplication::exec();
        dialog_ = nullptr;
        presenter_.Close();
        return status;
    }

private:
    app::ApplicationParts Parts(const app::Hosts& hosts) {
        app::ApplicationParts parts;
        parts.clock = &clock_;
        parts.messages = &messages_;
        parts.progress = &progress_;
        parts.settingsStore = settingsStore_.get();
        parts.internetStore = internetStore_.get();
        parts.makeHttp = [] { return MakePumpingHttp(LoadHttpClient); };
        parts.programPath = app::FrontDoorPath();
        parts.relaunch = [path = parts.programPath] { platform::StartDetached(path); };
        parts.runtimeFolder = platform::RuntimeFolder().value_or("");
        parts.settingsFolder = app::SettingsFolder();
        parts.hosts = hosts;
        parts.desktop = DesktopRect();
        parts.errors = &std::cerr;
        parts.cancel = &cancel_;
        return parts;
    }

    MainWorld World(DueTimer& timer) {
        MainWorld world;
        world.application = &application_;
        world.messages = &messages_;
        world.clock = &clock_;
        world.timer = &timer;
        world.stopFetching = [this] { StopFetching(); };
        world.cancelShown = [this] { return progressDialogs_.Cancel(); };
        world.closeBoxes = [this] { presenter_.Close(); };
        world.settingsFolder = app::SettingsFolder();
        world.errors = &std::cerr;
        return world;
    }

    void StopFetching() {
        cancel_ = true;
        progressDialogs_.Cancel();
    }

    void End() {
        isEnding_ = true;
        StopFetching();
        if (dialog_ != nullptr) {
            dialog_->EndQuietly();
        } else {
            presenter_.Close();
        }
    }

    std::atomic<bool> cancel_ = false;
    bool isEnding_ = false;
    MainDialog* dialog_ = nullptr;
    platform::SystemClock clock_;
    uikit::WidgetPresenter presenter_;
    uikit::ProgressDialogs progressDialogs_;
    feedback::Messages messages_;
    feedback::Progress progress_;
    std::unique_ptr<platform::SettingsStore> settingsStore_;
    std::unique_ptr<platform::SettingsStore> internetStore_;
    EndSignals endSignals_;
    app::Application application_;
};

}  // namespace

int RunProgram(char* programName) {
    platform::HoldStandardStreams();
    platform::IgnoreFatalWriteSignals();
    const app::HostsResult hosts = app::ReadHosts();
    if (!hosts.hosts) {
        std::cerr << "ostrova: " << hosts.complaint << std::endl;
        return Trouble;
    }
    if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY") && !IsSet("QT_QPA_PLATFORM")) {
        std::cerr << "ostrova: There is no display for a window.\n"
                     "Use ostrova-cli in the terminal, or ostrova -A for the background process.\n";
        return Trouble;
    }
    qInstallMessageHandler(OnToolkitMessage);
    // The words of the command line are the program's own: the toolkit sees none of them.
    int count = 1;
    char* words[] = {programName, nullptr};
    const QApplication toolkit(count, words);
    Introduce();
    return Run(*hosts.hosts).Execute();
}

}  // namespace ostrova::window
