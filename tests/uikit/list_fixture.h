#pragma once

// A shown dialog with a list, driven by mouse and keys.

#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <string>
#include <string_view>
#include <vector>

#include "tests/uikit/widgets.h"
#include "uikit/list_header.h"
#include "uikit/new_list_ctrl.h"

inline void PrintTo(const QColor& colour, std::ostream* out) {
    *out << colour.name().toStdString();
}

namespace ostrova::uikit {

inline void PrintTo(const CellNotice& notice, std::ostream* out) {
    *out << notice.row << '/' << notice.column << ' ' << notice.text.value_or("(none)");
}

using Strings = std::vector<std::string>;

inline void Click(NewListCtrl& list, int row, int column, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers,
                      list.CellRect(row, column).center());
}

inline void ClickHeader(NewListCtrl& list, int column) {
    QHeaderView* header = list.header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                       header->height() / 2});
}

/// Moves the line at the right of `column` by `pixels`, as a hand does.
inline void DragDivider(NewListCtrl& list, int column, int pixels) {
    QWidget* header = list.header()->viewport();
    const QPoint from(list.header()->sectionViewportPosition(column) + list.columnWidth(column) - 1,
                      list.header()->height() / 2);
    QTest::mouseMove(header, from);
    QTest::mousePress(header, Qt::LeftButton, {}, from);
    QTest::mouseMove(header, from + QPoint(pixels, 0));
    QTest::mouseRelease(header, Qt::LeftButton, {}, from + QPoint(pixels, 0));
}

inline Strings Column(const NewListCtrl& list, int column) {
    Strings texts;
    for (int row = 0; row < list.GetRowCount(); ++row) {
        texts.emplace_back(list.CellText(row, column));
    }
    return texts;
}

inline std::vector<int> Widths(const NewListCtrl& list) {
    std::vector<int> widths;
    for (int column = 0; column < list.GetColumnCount(); ++column) {
        widths.push_back(list.columnWidth(column));
    }
    return widths;
}

inline void AddColumns(NewListCtrl& list, const std::vector<int>& widths) {
    for (std::size_t i = 0; i < widths.size(); ++i) {
        list.InsertColumn(static_cast<int>(i), "Column " + std::to_string(i), Qt::AlignLeft,
                          widths[i]);
    }
}

/// What a list told its owner.
struct Told {
    std::vector<CellNotice> ends;
    std::vector<std::pair<int, bool>> selections;

    void ListenTo(NewListCtrl& list) {
        QObject::connect(&list, &NewListCtrl::endLabelEdit, &list,
                         [this](const CellNotice& notice) { ends.push_back(notice); });
        list.SetSelectionCallback(
            [this](int row, bool isSelected) { selections.emplace_back(row, isSelected); });
    }
};

class ListTest : public ::testing::Test {
public:
    ListTest() : list_(new NewListCtrl(&dialog_)), box_(new QLineEdit(&dialog_)) {
        button_ = new QPushButton(QStringLiteral("OK"), &dialog_);
        button_->setDefault(true);
        QObject::connect(button_, &QPushButton::clicked, &dialog_, [this] { ++defaultPresses_; });
        dialog_.resize(420, 320);
        list_->setGeometry(0, 0, 402, 200);
        list_->setFrameStyle(QFrame::NoFrame);
        list_->SetDrawMode(2);
        box_->setGeometry(0, 220, 100, 30);
        button_->setGeometry(0, 260, 100, 30);
        told_.ListenTo(*list_);
    }

    void Show() {
        dialog_.show();
        dialog_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog_));
        list_->setFocus();
    }

    /// The open editor of a cell, or null.
    template <typename Editor = QLineEdit>
    [[nodiscard]] Editor* OpenEditor() const {
        for (Editor* editor : list_->viewport()->findChildren<Editor*>()) {
            if (editor->isVisible()) return editor;
        }
        return nullptr;
    }

    Told told_;  // outlives the dialog, which ends an open edit when it goes
    QDialog dialog_;
    NewListCtrl* list_;
    QLineEdit* box_;
    QPushButton* button_ = nullptr;
    int defaultPresses_ = 0;
};

}  // namespace ostrova::uikit
