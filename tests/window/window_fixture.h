#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <memory>
#include <optional>
#include <sstream>

#include "app/application.h"
#include "tests/support/canned_site.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/memory_store.h"
#include "tests/support/moments.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"
#include "uikit/new_list_ctrl.h"
#include "util/files.h"
#include "window/main_dialog.h"
#include "window/pumping_http.h"

namespace ostrova::testing {

/// A timer that rings when a test says so.
class HandTimer final : public window::DueTimer {
public:
    void Arm(util::EpochSeconds moment) override { armed = moment; }
    void Disarm() override { armed.reset(); }

    std::optional<util::EpochSeconds> armed;
};

/// A main window in a home, a time and a web of its own. It is a Wednesday; the weekend of the
/// Friday before is on the site.
class WindowTest : public ::testing::Test {
protected:
    static constexpr const char* Favourite = "A Song";

    WindowTest() : messages_(recorder_) {
        Publish("20261120", "20261121", Favourite);
        store_.values[{"Settings", "CheckForUpgrades"}] = 0;
    }
    ~WindowTest() override {
        Close();
        static_cast<void>(util::ChangeFolder(startFolder_));
    }

    /// Puts a weekend on the site: a song on Friday night and one on Saturday night.
    void Publish(const std::string& friday, const std::string& saturday, const std::string& title) {
        const std::string page = "<td>11:05pm</td><td>" + title + " - An Artist\n";
        for (const std::string& date : {friday, saturday}) {
            site_.Put("/vantra/playlist/archive/" + date.substr(0, 4) + "/" + date + ".htm", page);
        }
        site_.Put("/vantra/playlist/?year=" + friday.substr(0, 4), "<html>no links</html>");
    }

    void WriteList(const std::string& lines) { home_.Write("Ostrova/SearchList.txt", lines); }

    /// The window as the program opens it, shown.
    window::MainDialog& Open() {
        app::ApplicationParts parts;
        parts.clock = &clock_;
        parts.messages = &messages_;
        parts.settingsStore = &store_;
        parts.makeHttp = [this] {
            return window::MakePumpingHttp([this] { return site_.Client(); });
        };
        parts.programPath = home_.Path("program/ostrova");
        parts.runtimeFolder = home_.Path();
        parts.hosts = {CannedSite::Host, CannedSite::Host};
        parts.errors = &errors_;
        parts.cancel = &cancel_;
        application_ = std::make_unique<app::Application>(std::move(parts));
        application_->Start({});
        EXPECT_TRUE(application_->ClaimMainWindow());
        application_->LoadFirstWeekend();
        dialog_ = std::make_unique<window::MainDialog>(
            window::MainWorld{.application = application_.get(),
                              .messages = &messages_,
                              .clock = &clock_,
                              .timer = &timer_,
                              .cancel = &cancel_,
                              .closeBoxes = [this] { ++closedBoxes_; },
                              .settingsFolder = home_.Path("config"),
                              .errors = &errors_});
        QObject::connect(dialog_.get(), &window::MainDialog::closed, dialog_.get(),
                         [this] { ++closed_; });
        dialog_->OnInitDialog();
        dialog_->show();
        Settle();
        return *dialog_;
    }

    void Close() {
        dialog_.reset();
        application_.reset();
        cancel_ = false;
    }

    static void Settle() {
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    }

    /// The clock has come to the armed moment.
    void RingTimer() {
        ASSERT_TRUE(timer_.armed);
        clock_.SetWallClock(*timer_.armed);
        emit timer_.due();
        Settle();
    }

    [[nodiscard]] window::TabSheet& Sheet() { return dialog_->Sheet(); }
    template <typename Control>
    [[nodiscard]] Control* On(int page, const char* name) {
        return Sheet().PageAt(page)->findChild<Control*>(QString::fromLatin1(name));
    }
    [[nodiscard]] uikit::NewListCtrl* ListOn(int page) {
        return Sheet().PageAt(page)->findChild<uikit::NewListCtrl*>();
    }
    /// The titles that a song page lists.
    [[nodiscard]] std::vector<std::string> Titles(int page) {
        std::vector<std::string> titles;
        const uikit::NewListCtrl* list = ListOn(page);
        for (int row = 0; list != nullptr && row < list->GetRowCount(); ++row) {
            titles.emplace_back(list->CellText(row, 1));
        }
        return titles;
    }
    [[nodiscard]] std::string Displayed() {
        return DateOf(application_->State().displayedWeekend.anchor);
    }

    const std::string startFolder_ = util::CurrentFolder();
    TempFolder home_;
    EnvironmentVariable data_{"XDG_DATA_HOME", home_.Path()};
    EnvironmentVariable runtime_{"XDG_RUNTIME_DIR", home_.Path()};
    EnvironmentVariable homeFolder_{"HOME", home_.Path()};
    TimeZone zone_{"Europe/Berlin"};
    FakeClock clock_{At("2026-11-25 09:00:00")};
    MessageRecorder recorder_;
    MemoryStore store_;
    CannedSite site_;
    feedback::Messages messages_;
    std::ostringstream errors_;
    std::atomic<bool> cancel_ = false;
    HandTimer timer_;
    std::unique_ptr<app::Application> application_;
    std::unique_ptr<window::MainDialog> dialog_;
    int closed_ = 0;
    int closedBoxes_ = 0;
};

}  // namespace ostrova::testing
