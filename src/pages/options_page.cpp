#include "pages/options_page.h"

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "pages/about_text.h"
#include "pages/options_arrangement.h"
#include "resources/options_template.h"
#include "uikit/dialog_builder.h"
#include "uikit/icon_view.h"
#include "uikit/markup_view.h"
#include "uikit/text.h"

namespace ostrova::pages {
namespace {

using namespace resources;
using uikit::ControlAs;

constexpr int OpenButtons[] = {OptionsOpenAlways, OptionsOpenOnMatch, OptionsOpenNever};

}  // namespace

OptionsPage::OptionsPage(const app::Settings& settings, platform::Clock& clock, QWidget* parent)
    : SheetPage(uikit::ToQString(OptionsTemplate.caption), parent),
      settings_(&settings),
      clock_(&clock) {}

OptionsPage::~OptionsPage() {
    disconnect(qApp, nullptr, this, nullptr);  // the focus moves while the controls go
}

void OptionsPage::Initialise() {
    controls_ = new QWidget(this);
    uikit::BuildDialog(*controls_, OptionsTemplate);
    setObjectName(controls_->objectName());
    controls_->setObjectName(QStringLiteral("optionsControls"));
    // No radio button is ticked, whatever the setting: the choice is known, but not shown.
    whenToOpen_ = settings_->whenToOpen;
    checkForUpgrades_ = settings_->checkForUpgrades;
    ControlAs<QCheckBox>(*controls_, OptionsCheckForUpgrades)->setChecked(checkForUpgrades_);
    ControlAs<uikit::IconView>(*controls_, OptionsIcon)->SetIcon(QApplication::windowIcon());
    WriteTexts();
    delete uikit::ControlById(*controls_, OptionsDownloadAll);
    AnchorControls();
    ConnectControls();

    area_ = new QScrollArea(this);
    area_->setObjectName(QStringLiteral("optionsArea"));
    area_->setAccessibleName(Title());
    area_->setFrameShape(QFrame::NoFrame);
    area_->setFocusPolicy(Qt::NoFocus);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area_->setWidgetResizable(true);
    area_->setWidget(controls_);
    // A tab sheet has a background of its own.
    area_->viewport()->setAutoFillBackground(false);
    controls_->setAutoFillBackground(false);
    controls_->installEventFilter(this);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area_);
}

void OptionsPage::WriteTexts() {
    const auto write = [this](int id, const std::string& markup) {
        auto* view = ControlAs<uikit::MarkupView>(*controls_, id);
        view->SetMarkup(markup);
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // it is made as high as it needs
    };
    write(OptionsAbout, AboutText(settings_->latestKnownVersion, clock_->Now()));
    write(OptionsNotes, NotesText());
}

void OptionsPage::ConnectControls() {
    connect(ControlAs<QPushButton>(*controls_, OptionsCheckNow), &QPushButton::clicked, this,
            &OptionsPage::upgradeCheckRequested);
    connect(ControlAs<QPushButton>(*controls_, OptionsExit), &QPushButton::clicked, this,
            &OptionsPage::exitRequested);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { ShowFocused(now); });
}

void OptionsPage::AnchorControls() {
    using namespace uikit;
    DialogLayout& layout = Layout();
    layout.Attach(*controls_);
    layout.SetAnchorById(OptionsIcon, AnchorFixed, AnchorFixed);
    layout.SetAnchorById(OptionsAbout, AnchorStretch, AnchorFixed);
    layout.SetAnchorById(OptionsCheckForUpgrades, AnchorMove, AnchorFixed);
    layout.SetAnchorById(OptionsCheckNow, AnchorMove, AnchorFixed);
    layout.SetAnchorById(OptionsNotes, AnchorStretch, AnchorStretch);
    for (const int id : OpenButtons) layout.SetAnchorById(id, AnchorFixed, AnchorMove);
    layout.SetAnchorById(OptionsExit, AnchorMove, AnchorMove);
}

void OptionsPage::TakeValues() {
    checkForUpgrades_ = ControlAs<QCheckBox>(*controls_, OptionsCheckForUpgrades)->isChecked();
    const auto ticked = std::find_if(
        std::begin(OpenButtons), std::end(OpenButtons),
        [this](int id) { return ControlAs<QRadioButton>(*controls_, id)->isChecked(); });
    whenToOpen_ = ticked == std::end(OpenButtons)
                      ? -1
                      : static_cast<std::int32_t>(ticked - std::begin(OpenButtons));
}

void OptionsPage::AfterRelayout() {
    controls_->setMinimumHeight(ArrangeOptions(*controls_));
}

/// The controls follow the size of what they stand on, which is larger than a small page.
bool OptionsPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == controls_ && event->type() == QEvent::Resize && IsCreated()) Relayout();
    return SheetPage::eventFilter(watched, event);
}

/// Whatever has the focus is to be seen.
void OptionsPage::ShowFocused(QWidget* focused) {
    if (focused != nullptr && controls_->isAncestorOf(focused)) area_->ensureWidgetVisible(focused);
}

}  // namespace ostrova::pages
