#pragma once

// The page that tells about the program and holds the user's choices. It only shows and collects:
// the main window takes the choices over when it closes.

#include <QScrollArea>
#include <cstdint>

#include "app/settings.h"
#include "pages/sheet_page.h"
#include "platform/clock.h"

namespace ostrova::pages {

/// The controls stand on a widget of their own, "optionsControls", which scrolls where a small page
/// can't hold all of them.
class OptionsPage final : public SheetPage {
    Q_OBJECT

public:
    /// Both are borrowed; the page changes neither.
    OptionsPage(const app::Settings& settings, platform::Clock& clock, QWidget* parent = nullptr);
    ~OptionsPage() override;

    /// The page is left: takes the controls' values.
    void OnKillActive() override { TakeValues(); }

    /// Takes the controls' values into the page. Created pages only.
    void TakeValues();

    /// The check box, as last taken or set.
    [[nodiscard]] bool CheckForUpgrades() const { return checkForUpgrades_; }

    /// The index of the ticked radio button, as last taken; -1 when none is ticked. They never show
    /// the setting: who ticks none leaves -1 behind, which opens always. On purpose.
    [[nodiscard]] std::int32_t WhenToOpen() const { return whenToOpen_; }

signals:
    /// "Check for updates now".
    void upgradeCheckRequested();

protected:
    void Initialise() override;
    void AfterRelayout() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void WriteTexts();
    void ConnectControls();
    void AnchorControls();
    void ShowFocused(QWidget* focused);

    const app::Settings* settings_;
    platform::Clock* clock_;
    bool checkForUpgrades_ = false;
    std::int32_t whenToOpen_ = -1;
    QScrollArea* area_ = nullptr;  // fills the page, which owns it
    QWidget* controls_ = nullptr;
};

}  // namespace ostrova::pages
