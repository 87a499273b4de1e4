#pragma once

// A page in a dialog with a default button, driven by mouse and keys.

#include <QAbstractButton>
#include <QAccessible>
#include <QDialog>
#include <QPushButton>

#include "pages/sheet_page.h"
#include "tests/support/rows.h"
#include "tests/uikit/widgets.h"

namespace ostrova::pages {

using testing::Rows;
using testing::Strings;

class ShownPage {
public:
    explicit ShownPage(SheetPage& page) : page_(page) {
        page.setParent(&dialog_);
        default_.setDefault(true);
        QObject::connect(&default_, &QPushButton::clicked, &dialog_, [this] { ++defaultPresses; });
        for (const auto wish : {&SheetPage::exitRequested, &SheetPage::escapePressed}) {
            QObject::connect(&page, wish, &dialog_, [this] { ++exits; });
        }
        dialog_.resize(620, 500);
        page.resize(600, 450);
        page.Create();
        page.show();
        dialog_.show();
        dialog_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog_));
    }
    ~ShownPage() { page_.setParent(nullptr); }
    Q_DISABLE_COPY(ShownPage)

    template <typename Control>
    [[nodiscard]] Control* Find(const char* name) const {
        return page_.findChild<Control*>(name);
    }

    void Press(const char* button) const {
        QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton);
    }
    static void Key(QWidget* control, Qt::Key key) {
        control->setFocus();
        QTest::keyClick(control, key);
    }

    /// What a screen reader says at each stop of Tab, from `first` on to the end of the page.
    [[nodiscard]] Strings NamesByTab(const char* first) const {
        Strings names;
        Find<QWidget>(first)->setFocus();
        do {
            QAccessibleInterface* node = QAccessible::queryAccessibleInterface(Focused());
            names.push_back(node->text(QAccessible::Name).toStdString());
            QTest::keyClick(Focused(), Qt::Key_Tab);
        } while (page_.isAncestorOf(Focused()) && names.size() < 50);
        return names;
    }

    [[nodiscard]] static QWidget* Focused() { return QApplication::focusWidget(); }

    int defaultPresses = 0;
    int exits = 0;

private:
    SheetPage& page_;
    QDialog dialog_;
    QPushButton default_{&dialog_};
};

}  // namespace ostrova::pages
