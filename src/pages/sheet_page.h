#pragma once

// What every page of the tab sheet is.

#include <QWidget>

#include "uikit/dialog_layout.h"

namespace ostrova::pages {

/// A page of the tab sheet. It is empty until it is first shown: its controls are made then, and
/// live as long as the page. Whatever reads a page's controls asks `IsCreated` first.
class SheetPage : public QWidget {
    Q_OBJECT

public:
    explicit SheetPage(const QString& title, QWidget* parent = nullptr);

    /// The text of its tab.
    [[nodiscard]] const QString& Title() const { return title_; }

    [[nodiscard]] bool IsCreated() const { return isCreated_; }

    /// Makes the controls; does nothing the second time. The page keeps the size that it has.
    void Create();

    /// Takes `place` in the sheet, with all controls where they then belong, even while another
    /// page is in front: the sheet's pages always have one size.
    void FollowSize(const QRect& place);

    /// The page comes to the front, created. Called again when what it shows changed meanwhile.
    virtual void OnSetActive() {}

    /// The page is left for another one.
    virtual void OnKillActive() {}

signals:
    /// The user wants the window closed, by Exit.
    void exitRequested();

    /// Escape: the user wants the end of what is under way, and of the window when nothing is.
    void escapePressed();

protected:
    /// Builds the controls from the page's template, attaches the layout and fills what is to be
    /// shown.
    virtual void Initialise() = 0;

    [[nodiscard]] uikit::DialogLayout& Layout() { return layout_; }

    /// Called each time the controls have followed the page's size: mends what is too narrow for
    /// the template, KeepRowApart for instance. At ordinary sizes nothing may be left to do. It
    /// measures texts, which takes time: a page that does not show waits for it until it does.
    virtual void AfterRelayout() {}

    /// Connects the page's Exit button, the control with id 2.
    void ConnectExit();

    /// Lays the controls out anew, in a created page. The page does it itself when it is resized.
    void Relayout();

    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString title_;
    uikit::DialogLayout layout_;
    bool isCreated_ = false;
    bool isArranged_ = false;  // at its present size
};

}  // namespace ostrova::pages
