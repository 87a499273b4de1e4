#pragma once

// The tab sheet that fills the main window and hosts its pages.

#include <QTabWidget>

#include "pages/sheet_page.h"

namespace ostrova::window {

/// Pages are created when they first come to the front.
class TabSheet final : public QTabWidget {
    Q_OBJECT

public:
    explicit TabSheet(QWidget* parent = nullptr);

    /// Adds a page behind the others; the sheet owns it. The first one comes to the front, but is
    /// created only by the first `ActivatePage`.
    void AddPage(pages::SheetPage* page);

    /// Brings the page with that index to the front. Not reported by `pageChanged`.
    void ActivatePage(int index);

    /// The page at `index`; null when there is none.
    [[nodiscard]] pages::SheetPage* PageAt(int index) const;
    [[nodiscard]] pages::SheetPage* ActivePage() const { return PageAt(active_); }

signals:
    /// The user has gone from `left` to another page, which is in front now.
    void pageChanged(ostrova::pages::SheetPage* left);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Gives the pages their place before the sheet shows. Qt gives it only then, and they would be
    /// arranged twice.
    void PlacePagesEarly();
    /// Gives all pages the size of the one in front.
    void SizePages();
    /// Lets the page in front know, and the one that was; the latter, or null.
    pages::SheetPage* Switch(int index);
    void OnCurrentChanged(int index);

    int active_ = -1;  // of the page that was told that it is in front
    bool isActivating_ = false;
};

}  // namespace ostrova::window
