#include "pages/options_page.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QSignalSpy>
#include <optional>

#include "pages/about_text.h"
#include "tests/pages/page_fixture.h"
#include "tests/support/fake_clock.h"
#include "tests/support/moments.h"
#include "uikit/markup_view.h"
#include "util/format.h"

namespace ostrova::pages {
namespace {

TEST(AboutText, NamesTheVersionAndTheYears) {
    struct Case {
        std::string latest;
        std::string now;
        std::string warning;
        std::string years;
    };
    const std::string warning = "  (<b>not the latest!</b>)";
    for (const Case& c : {
             Case{"1.9", "2005-12-31 23:59:59", "", "2005"},
             Case{"1.9", "2006-01-01 00:00:00", "", "2005-2006"},
             Case{"1.10", "2014-12-21 12:00:00", warning, "2005-2014"},
             Case{"1.8", "2105-05-01 12:00:00", "", "2005-2105"},
         }) {
        EXPECT_EQ(AboutText(c.latest, testing::At(c.now)),
                  util::Format("<font size=+4 color=red><b>Ostrova</b></font>\nVersion 1.9%s\n"
                               "21st December 2014\nWritten by the Ostrova team\n"
                               "<a href=\"http://www.kelvane.example\">"
                               "http://www.kelvane.example</a>\n&copy; Ostrova team %s",
                               c.warning, c.years));
    }
}

class OptionsPageTest : public ::testing::Test {
public:
    void Open() { shown_.emplace(page_); }

    [[nodiscard]] std::vector<bool> Ticked() const {
        std::vector<bool> ticked;
        for (const char* name : {"openAlways", "openOnMatch", "openNever"}) {
            ticked.push_back(shown_->Find<QRadioButton>(name)->isChecked());
        }
        return ticked;
    }

    app::Settings settings_;
    testing::FakeClock clock_{testing::At("2026-07-10 12:00:00")};
    OptionsPage page_{settings_, clock_};
    std::optional<ShownPage> shown_;
};

TEST_F(OptionsPageTest, ShowsItsTextsWithLinks) {
    settings_.latestKnownVersion = "1.10";
    Open();
    const QString about = shown_->Find<uikit::MarkupView>("about")->toPlainText();
    EXPECT_TRUE(about.contains(QStringLiteral("(not the latest!)\n")));
    EXPECT_TRUE(about.endsWith(QStringLiteral("\u00A9 Ostrova team 2005-2026")));
    const auto* notes = shown_->Find<uikit::MarkupView>("notes");
    EXPECT_EQ(notes->toPlainText(),
              QStringLiteral("\n\nEnquiries: ostrova@kelvane.example\n"
                             "Web site: http://www.kelvane.example/Ostrova/"));
    ASSERT_EQ(notes->Links().size(), 2);
    EXPECT_EQ(notes->Links()[0].url, "mailto:ostrova@kelvane.example");
    EXPECT_EQ(notes->Links()[1].url, "http://www.kelvane.example/Ostrova/");
}

// The buttons are loaded before the setting is known, and never again. On purpose.
TEST_F(OptionsPageTest, NeverShowsTheStoredChoiceAndLosesIt) {
    EXPECT_EQ(page_.WhenToOpen(), -1);
    settings_.whenToOpen = app::OpenNever;
    Open();
    EXPECT_EQ(page_.WhenToOpen(), app::OpenNever);
    page_.OnSetActive();
    EXPECT_EQ(Ticked(), (std::vector<bool>{false, false, false}));
    page_.OnKillActive();
    EXPECT_EQ(page_.WhenToOpen(), -1);
    page_.OnSetActive();
    EXPECT_EQ(Ticked(), (std::vector<bool>{false, false, false}));
}

TEST_F(OptionsPageTest, TakesTheTickedChoiceWhenItIsLeftOrAsked) {
    Open();
    shown_->Press("openNever");
    EXPECT_EQ(page_.WhenToOpen(), app::OpenAlways);  // not yet
    page_.OnKillActive();
    EXPECT_EQ(page_.WhenToOpen(), 2);
    shown_->Press("openAlways");
    page_.TakeValues();
    EXPECT_EQ(page_.WhenToOpen(), 0);
    QTest::keyClick(shown_->Find<QRadioButton>("openAlways"), Qt::Key_Down);
    page_.TakeValues();
    EXPECT_EQ(page_.WhenToOpen(), 1);
    EXPECT_EQ(Ticked(), (std::vector<bool>{false, true, false}));
}

TEST_F(OptionsPageTest, ShowsAndTakesTheCheckBox) {
    settings_.checkForUpgrades = false;
    Open();
    auto* box = shown_->Find<QCheckBox>("checkForUpgrades");
    EXPECT_FALSE(box->isChecked());
    EXPECT_FALSE(page_.CheckForUpgrades());
    QTest::keyClick(box, Qt::Key_Space);
    page_.TakeValues();
    EXPECT_TRUE(page_.CheckForUpgrades());
    EXPECT_FALSE(settings_.checkForUpgrades);  // that is for the window to change
}

TEST_F(OptionsPageTest, CanBeMadeOnTheScreenAtAnySize) {
    for (const QSize size : {QSize(576, 456), QSize(350, 215)}) {
        OptionsPage page(settings_, clock_);
        page.resize(size);
        page.show();
        page.Create();
        QApplication::processEvents();
        auto* exit = page.findChild<QWidget*>(QStringLiteral("exit"));
        const int below = exit->parentWidget()->height() - exit->geometry().bottom();
        EXPECT_LT(below, exit->height()) << size.width();
        EXPECT_GT(below, 0) << size.width();
    }
}

TEST_F(OptionsPageTest, TellsWhatItsOwnerIsToDo) {
    Open();
    const QSignalSpy checks(&page_, &OptionsPage::upgradeCheckRequested);
    shown_->Press("checkNow");
    EXPECT_EQ(checks.size(), 1);
    shown_->Press("exit");
    QTest::keyClick(shown_->Find<QCheckBox>("checkForUpgrades"), Qt::Key_Escape);
    EXPECT_EQ(shown_->exits, 2);
    EXPECT_EQ(shown_->Find<QWidget>("downloadAll"), nullptr);
}

TEST_F(OptionsPageTest, EveryStopOfTabHasANameAndIsSeen) {
    page_.setFixedSize(350, 215);
    Open();
    // Each link is a stop, all radio buttons together are one.
    EXPECT_EQ(shown_->NamesByTab("about"),
              (Strings{"About the program", "About the program",
                       "Automatically check for software updates", "Check for updates now",
                       "Enquiries and web site", "Enquiries and web site",
                       "Open Ostrova whenever new playlists come out", "Exit"}));
    for (const char* name : {"openNever", "checkNow", "exit"}) {
        auto* control = shown_->Find<QWidget>(name);
        control->setFocus();
        EXPECT_EQ(control->visibleRegion().boundingRect(), control->rect()) << name;
    }
}

}  // namespace
}  // namespace ostrova::pages
