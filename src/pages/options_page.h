#pragma once

// The page that tells about the program and holds the user's choices. It only shows and collects:
// the main window takes the choices over when it closes.

#include "app/settings.h"
#include "pages/sheet_page.h"
#include "platform/clock.h"

namespace ostrova::pages {

class OptionsPage final : public SheetPage {
    Q_OBJECT

public:
    /// Both are borrowed; the page changes neither.
    OptionsPage(const app::Settings& settings, platform::Clock& clock, QWidget* parent = nullptr);

    /// Takes the controls' values into the page. Created pages only.
    void TakeValues();

    /// The check box, as last taken or set.
    [[nodiscard]] bool CheckForUpgrades() const;

    /// The index of the ticked radio button, as last taken; -1 when none is ticked.
    [[nodiscard]] std::int32_t WhenToOpen() const;

signals:
    /// "Check for updates now".
    void upgradeCheckRequested();

protected:
    void Initialise() override;
};

}  // namespace ostrova::pages
