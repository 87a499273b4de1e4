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

namespace ostrova::pages {
namespace {

TEST(AboutText, WarnsOfANewerVersionAndNamesTheYears) {
    for (const auto& [latest, now, warning, years] :
         Rows<const char*, const char*, std::string, std::string>{
             {"1.9", "2005-12-31 23:59:59", "\n", "team 2005"},
             {"1.9", "2006-01-01 00:00:00", "\n", "team 2005-2006"},
             {"1.10", "2014-12-21 12:00:00", "  (<b>not the latest!</b>)\n", "team 2005-2014"},
             {"1.8", "2105-05-01 12:00:00", "\n", "team 2005-2105"},
         }) {
        const std::string text = AboutText(latest, testing::At(now));
        EXPECT_NE(text.find("\nVersion 1.9" + warning), std::string::npos) << text;
        EXPECT_TRUE(text.ends_with(years)) << text;
    }
}

class OptionsPageTest : public ::testing::Test {
public:
    void Open() { shown_.emplace(page_); }

    /// Of the buttons that say when to open the window: the one that is ticked, or -1.
    [[nodiscard]] int Ticked() const {
        int ticked = -1;
        const char* const names[] = {"openAlways", "openOnMatch", "openNever"};
        for (int i = 0; i < 3; ++i) {
            if (shown_->Find<QRadioButton>(names[i])->isChecked()) ticked = i;
        }
        return ticked;
    }

    app::Settings settings_;
    testing::FakeClock clock_{testing::At("2026-07-10 12:00:00")};
    OptionsPage page_{settings_, clock_};
    std::optional<ShownPage> shown_;
};

TEST_F(OptionsPageTest, ShowsItsTextsWithLinks) {
    Open();
    QStringList texts;
    QStringList links;
    for (const char* name : {"about", "notes"}) {
        const auto* view = shown_->Find<uikit::MarkupView>(name);
        texts += view->toPlainText().split('\n', Qt::SkipEmptyParts);
        for (const auto& link : view->Links()) links += QString::fromStdString(link.url);
    }
    EXPECT_EQ(texts,
              (QStringList{"Ostrova", "Version 1.9", "21st December 2014",
                           "Written by the Ostrova team", "http://www.kelvane.example",
                           "\u00A9 Ostrova team 2005-2026", "Enquiries: ostrova@kelvane.example",
                           "Web site: http://www.kelvane.example/Ostrova/"}));
    EXPECT_EQ(links, (QStringList{"http://www.kelvane.example", "mailto:ostrova@kelvane.example",
                                  "http://www.kelvane.example/Ostrova/"}));
}

// The buttons are loaded before the setting is known, and never again. On purpose.
TEST_F(OptionsPageTest, NeverShowsTheStoredChoiceAndLosesIt) {
    EXPECT_EQ(page_.WhenToOpen(), -1);
    settings_.whenToOpen = app::OpenNever;
    Open();
    for (const int kept : {int{app::OpenNever}, -1}) {
        EXPECT_EQ(page_.WhenToOpen(), kept);
        page_.OnSetActive();
        EXPECT_EQ(Ticked(), -1);
        page_.OnKillActive();
    }
}

TEST_F(OptionsPageTest, TakesTheValuesWhenItIsLeftOrAsked) {
    settings_.checkForUpgrades = false;
    Open();
    EXPECT_FALSE(page_.CheckForUpgrades());
    ShownPage::Key(shown_->Find<QCheckBox>("checkForUpgrades"), Qt::Key_Space);
    shown_->Press("openNever");
    EXPECT_EQ(page_.WhenToOpen(), app::OpenAlways);  // not yet
    page_.OnKillActive();
    EXPECT_EQ(page_.WhenToOpen(), 2);
    EXPECT_TRUE(page_.CheckForUpgrades());
    EXPECT_FALSE(settings_.checkForUpgrades);  // that is for the window to change
    shown_->Press("openAlways");
    page_.TakeValues();
    EXPECT_EQ(page_.WhenToOpen(), 0);
    ShownPage::Key(shown_->Find<QRadioButton>("openAlways"), Qt::Key_Down);
    page_.TakeValues();
    EXPECT_EQ(page_.WhenToOpen(), 1);
    EXPECT_EQ(Ticked(), 1);
}

TEST_F(OptionsPageTest, CanBeMadeOnTheScreenAtAnySize) {
    for (const QSize size : {QSize(576, 456), QSize(350, 215)}) {
        OptionsPage page(settings_, clock_);
        page.resize(size);
        page.show();
        page.Create();
        QApplication::processEvents();
        const auto* exit = page.findChild<QWidget*>("exit");
        const int below = exit->parentWidget()->height() - exit->geometry().bottom();
        EXPECT_TRUE(0 < below && below < exit->height()) << below << " of " << size.width();
    }
}

TEST_F(OptionsPageTest, TellsWhatItsOwnerIsToDo) {
    Open();
    const QSignalSpy checks(&page_, &OptionsPage::upgradeCheckRequested);
    shown_->Press("checkNow");
    EXPECT_EQ(checks.size(), 1);
    shown_->Press("exit");
    ShownPage::Key(shown_->Find<QCheckBox>("checkForUpgrades"), Qt::Key_Escape);
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
