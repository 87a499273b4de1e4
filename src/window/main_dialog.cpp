#include "window/main_dialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QTabBar>
#include <QTimer>

#include "matching/matching.h"
#include "playlists/mark_matches.h"
#include "resources/main_template.h"
#include "resources/search_list_template.h"
#include "uikit/dialog_builder.h"
#include "uikit/new_list_ctrl.h"
#include "window/placement.h"

namespace ostrova::window {
namespace {

constexpr QSize SmallestWindow(376, 273);

enum PageIndex { SearchPage = 0, ResultsPage = 1, SaturdayNightPage = 4 };

// The command brings this page to the front, not the one with the about text: users know it so.
constexpr int AboutCommandPage = SaturdayNightPage;

constexpr const char* SongPageTitles[] = {"Results", "Friday", "Saturday AM", "Saturday PM"};

// What waits for the disk may take as long as all the rest of the start: the first picture comes
// before it. Until the record is written the lock alone keeps a second window out.
constexpr std::chrono::milliseconds DiskDelay{100};

// How often a running upgrade check is looked at. There is no timer while none runs.
constexpr std::chrono::milliseconds UpgradePoll{100};

}  // namespace

MainDialog::MainDialog(MainWorld world) : world_(std::move(world)), upgradePoll_(new QTimer(this)) {
    setWindowFlags(Qt::Window);
    uikit::BuildDialog(*this, resources::MainTemplate);
    upgradePoll_->setInterval(UpgradePoll);
    connect(upgradePoll_, &QTimer::timeout, this, &MainDialog::Serve);
    connect(world_.timer, &DueTimer::due, this, &MainDialog::ServeSoon);
    connect(world_.timer, &DueTimer::clockChanged, this, [this] {
        world_.application->Schedule().ClockChanged();
        ArmDueTimer();
    });
}

MainDialog::~MainDialog() = default;

void MainDialog::OnInitDialog() {
    QTimer::singleShot(DiskDelay, this, [this] {
        world_.application->RecordMainWindow();
        world_.application->SweepFolders();
    });
    MakePages();
    ReplacePlaceholder();
    ConnectPages();
    searchPage_->Load();
    const bool hasList = searchPage_->Rows().RowCount() > 0;
    if (!hasList) sheet_->ActivatePage(SearchPage);
    Layout().SetMinTrackSize(SmallestWindow.width(), SmallestWindow.height());
    Layout().Attach(*this);
    Layout().SetAnchor(sheet_, uikit::AnchorStretch, uikit::AnchorStretch);
    Layout().FillMinMaxInfo();
    RestorePlacement(*this, world_.application->GetSettings());
    if (hasList) {
        sheet_->ActivatePage(ResultsPage);
        OnPageLeft(searchPage_);
    }
    FocusFirstControl(hasList);
    world_.application->ArmTimer();
    ArmDueTimer();
    ServeSoon();
}

/// What a user does first, on the page that is in front: looks at the matches, or types a song.
void MainDialog::FocusFirstControl(bool hasList) {
    QWidget* const first = hasList ? songPages_[0]->List()
                                   : uikit::ControlById(*searchPage_, resources::SearchListSong);
    first->setFocus();
}

void MainDialog::MakePages() {
    app::Application& application = *world_.application;
    sheet_ = new TabSheet(this);
    searchPage_ = new pages::SearchListPage(application.ListPlaces(), *world_.messages, sheet_);
    sheet_->AddPage(searchPage_);
    for (std::size_t i = 0; i < songPages_.size(); ++i) {
        pages::SongPageWorld world;
        world.state = &application.State();
        world.messages = world_.messages;
        world.pageAddress = [this](playlists::EpochSeconds showTime) {
            return links_.AddressOf(world_.application->Source(), showTime);
        };
        songPages_[i] = new pages::SongListPage(
            static_cast<pages::SongView>(i), QString::fromLatin1(SongPageTitles[i]), world, sheet_);
        sheet_->AddPage(songPages_[i]);
    }
    optionsPage_ = new pages::OptionsPage(application.GetSettings(), *world_.clock, sheet_);
    sheet_->AddPage(optionsPage_);
}

void MainDialog::ReplacePlaceholder() {
    QWidget* const placeholder = uikit::ControlById(*this, resources::MainSheet);
    sheet_->setGeometry(placeholder->geometry());
    delete placeholder;
    uikit::SetControlId(*sheet_, resources::MainSheet);
    sheet_->show();
}

void MainDialog::ConnectPages() {
    connect(sheet_, &TabSheet::pageChanged, this, &MainDialog::OnPageLeft);
    connect(searchPage_, &pages::SearchListPage::searchRequested, this, &MainDialog::OnSearchNow);
    for (pages::SongListPage* page : songPages_) {
        connect(page, &pages::SongListPage::addRequested, this, &MainDialog::OnAddRequested);
        connect(page, &pages::SongListPage::weekendChosen, this, &MainDialog::ServeSoon);
    }
    connect(optionsPage_, &pages::OptionsPage::upgradeCheckRequested, this, [this] {
        world_.application->Upgrades().Start(app::CheckKind::Manual);
        ServeSoon();
    });
    for (int i = 0; i < sheet_->count(); ++i) {
        connect(sheet_->PageAt(i), &pages::SheetPage::exitRequested, this,
                &MainDialog::RequestClose);
        connect(sheet_->PageAt(i), &pages::SheetPage::escapePressed, this, &MainDialog::reject);
    }
    sheet_->tabBar()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(sheet_->tabBar(), &QWidget::customContextMenuRequested, this,
            [this](const QPoint& place) { ShowFrameMenu(sheet_->tabBar()->mapToGlobal(place)); });
}

pages::SongListPage* MainDialog::AsSongPage(pages::SheetPage* page) const {
    return qobject_cast<pages::SongListPage*>(page);
}

void MainDialog::OnPageLeft(pages::SheetPage* left) {
    if (left == searchPage_) {
        searchPage_->EndEditing();  // in a window that isn't active no editor ends by itself
        RematchAll();
    } else if (const pages::SongListPage* songPage = AsSongPage(left)) {
        songPageLeft_ = songPage;
    }
    // After every change, since the page in front may have been made just now.
    if (songPageLeft_ != nullptr) CopyColumnWidths(*songPageLeft_);
    // What is in front now may have been made of pages that are still on their way.
    if (busy_ > 0) rematchRequested_ = true;
    if (links_.WantsIndex()) ServeSoon();  // for the links of a page that is seen first
}

/// The song pages always show the same column widths.
void MainDialog::CopyColumnWidths(const pages::SongListPage& from) {
    if (from.List() == nullptr) return;
    for (const pages::SongListPage* page : songPages_) {
        if (page != &from && page->List() != nullptr) page->List()->CopyColumnWidths(*from.List());
    }
}

void MainDialog::OnSearchNow() {
    sheet_->ActivatePage(ResultsPage);
    OnPageLeft(searchPage_);
}

void MainDialog::OnAddRequested(const matching::SearchEntry& entry) {
    // Whatever the answer, which the user has been told.
    (void)matching::AddSearchEntry(searchPage_->Rows(), entry, *world_.messages);
    RematchAll();
}

void MainDialog::RematchAll() {
    if (busy_ > 0) {
        rematchRequested_ = true;  // the songs are on their way
    } else {
        MatchAndShow();
    }
}

void MainDialog::MatchAndShow() {
    rematchRequested_ = false;
    const auto items = matching::SearchItemsFromPage(searchPage_->Rows());
    playlists::MarkMatches(world_.application->State().playlists, matching::SearchIndex(items));
    for (pages::SongListPage* page : songPages_) page->RefreshSongPage();
    if (links_.WantsIndex()) ServeSoon();
}

/// What the frame's own menu holds on other systems; here it is that of the tabs.
void MainDialog::ShowFrameMenu(const QPoint& globalPlace) {
    QMenu menu(this);
    const bool isMaximised = isMaximized();
    menu.addAction(QStringLiteral("&Restore"), this, &QWidget::showNormal)->setEnabled(isMaximised);
    menu.addAction(QStringLiteral("Mi&nimise"), this, &QWidget::showMinimized);
    menu.addAction(QStringLiteral("Ma&ximise"), this, &QWidget::showMaximized)
        ->setEnabled(!isMaximised);
    menu.addSeparator();
    menu.addAction(QStringLiteral("&Close"), this, &MainDialog::RequestClose);
    menu.addSeparator();
    menu.addAction(QString::fromLatin1(resources::AboutMenuText.data()), this,
                   &MainDialog::OnAboutCommand);
    menu.exec(globalPlace);
}

void MainDialog::OnAboutCommand() {
    ShowOnTop();
    pages::SheetPage* const left = sheet_->ActivePage();
    sheet_->ActivatePage(AboutCommandPage);
    OnPageLeft(left);
}

void MainDialog::ShowOnTop() {
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

/// Pages come one after the other, and a transfer shows only after a while: a second Escape that
/// was meant for it must not end the program because it comes in between.
void MainDialog::reject() {
    const bool mustWait = QApplication::overrideCursor() != nullptr;
    if (!world_.cancelShown() && !mustWait) RequestClose();
}

void MainDialog::closeEvent(QCloseEvent* event) {
    if (isClosed_) return;
    event->ignore();
    RequestClose();
}

/// Enter is for the control that has the focus: it never ends the window.
void MainDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        ResizableDialog::keyPressEvent(event);
    }
}

}  // namespace ostrova::window
