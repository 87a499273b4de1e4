#pragma once

// A shown dialog with a list, driven by mouse and keys.

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <initializer_list>

#include "tests/support/rows.h"
#include "tests/uikit/widgets.h"
#include "uikit/list_header.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::uikit {

using testing::Rows;
using testing::Strings;

inline void AddColumns(NewListCtrl& list, std::initializer_list<int> widths) {
    for (const int width : widths) {
        const int column = list.GetColumnCount();
        list.InsertColumn(column, "Column " + std::to_string(column), Qt::AlignLeft, width);
    }
}

class ListTest : public ::testing::Test {
public:
    explicit ListTest(NewListCtrl* list = new NewListCtrl)
        : list_(list), box_(new QLineEdit(&dialog_)), button_(new QPushButton(&dialog_)) {
        list_->setParent(&dialog_);
        button_->setDefault(true);
        QObject::connect(button_, &QPushButton::clicked, &dialog_, [this] { ++defaultPresses_; });
        dialog_.resize(420, 320);
        list_->setGeometry(0, 0, 402, 200);
        list_->setFrameStyle(QFrame::NoFrame);
        list_->SetDrawMode(2);
        box_->setGeometry(0, 220, 100, 30);
        button_->setGeometry(0, 260, 100, 30);
        QObject::connect(list_, &NewListCtrl::endLabelEdit, list_, [this](const CellNotice& end) {
            ends_.push_back(std::to_string(end.row) + "," + std::to_string(end.column) + " " +
                            end.text.value_or("(cancelled)"));
        });
        list_->SetSelectionCallback([this](int row, bool isSelected) {
            selections_ += (isSelected ? " +" : " -") + std::to_string(row);
        });
    }

    void Show() {
        dialog_.show();
        dialog_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog_));
        list_->setFocus();
    }

    void Click(int row, int column, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(list_->viewport(), Qt::LeftButton, modifiers,
                          list_->CellRect(row, column).center());
    }
    void ClickHeader(int column) {
        QTest::mouseClick(Header(), Qt::LeftButton, {}, OnHeader(column, Width(column) / 2));
    }
    /// Moves the line at the right of `column` by `pixels`, as a hand does.
    void DragDivider(int column, int pixels) {
        DragHeader(OnHeader(column, Width(column) - 1), pixels);
    }
    void DragHeader(QPoint from, int pixels) {
        QTest::mouseMove(Header(), from);
        QTest::mousePress(Header(), Qt::LeftButton, {}, from);
        QTest::mouseMove(Header(), from + QPoint(1, 0));
        QTest::mouseMove(Header(), from + QPoint(pixels, 0));
        QTest::mouseRelease(Header(), Qt::LeftButton, {}, from + QPoint(pixels, 0));
    }

    [[nodiscard]] QWidget* Header() const { return list_->header()->viewport(); }
    [[nodiscard]] QPoint OnHeader(int column, int x) const {
        return {list_->header()->sectionViewportPosition(column) + x, 5};
    }
    [[nodiscard]] int Width(int column) const { return list_->columnWidth(column); }
    [[nodiscard]] std::string Widths() const {
        Strings widths;
        for (int i = 0; i < list_->GetColumnCount(); ++i)
            widths.push_back(std::to_string(Width(i)));
        return testing::Joined(widths);
    }
    /// The texts of a column, from the top.
    [[nodiscard]] std::string Column(int column) const {
        Strings texts;
        for (int row = 0; row < list_->GetRowCount(); ++row) {
            texts.emplace_back(list_->CellText(row, column));
        }
        return testing::Joined(texts);
    }
    [[nodiscard]] int WidthOf(const QString& text) const {
        return list_->fontMetrics().horizontalAdvance(text);
    }

    /// The open editor of a cell, or null.
    template <typename Editor = QLineEdit>
    [[nodiscard]] Editor* OpenEditor() const {
        for (Editor* editor : list_->viewport()->findChildren<Editor*>()) {
            if (editor->isVisible()) return editor;
        }
        return nullptr;
    }

    // What the list told its owner. They outlive the dialog, which ends an open edit when it goes.
    Strings ends_;
    std::string selections_;

    QDialog dialog_;
    NewListCtrl* list_;
    QLineEdit* box_;
    QPushButton* button_;
    int defaultPresses_ = 0;
};

}  // namespace ostrova::uikit
