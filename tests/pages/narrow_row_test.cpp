#include "pages/narrow_row.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <vector>

#include "uikit/dialog_builder.h"

namespace ostrova::pages {
namespace {

class NarrowRowTest : public ::testing::Test {
public:
    NarrowRowTest() {
        for (int i = 0; i < 3; ++i) {
            buttons_.push_back(new QPushButton(QStringLiteral("Add artist to list"), &page_));
            uikit::SetControlId(*buttons_[i], i + 1);
        }
        buttons_[2]->setText(QStringLiteral("Exit"));
    }

    /// Two wide buttons at the left and one at the right of a page `width` wide.
    void LayOut(int width) {
        page_.resize(width, 100);
        buttons_[0]->setGeometry(10, 50, 200, 25);
        buttons_[1]->setGeometry(220, 50, 200, 25);
        buttons_[2]->setGeometry(width - 110, 50, 100, 25);
        KeepRowApart(page_, {1, 2, 77, 3});
    }

    QWidget page_;
    std::vector<QPushButton*> buttons_;
};

TEST_F(NarrowRowTest, SharesTheRoomAndCutsTextsOnlyWhereTheyMustBe) {
    LayOut(534);  // the narrowest that has room for all
    EXPECT_EQ(buttons_[1]->geometry(), QRect(220, 50, 200, 25));
    EXPECT_EQ(buttons_[2]->geometry(), QRect(424, 50, 100, 25));
    for (int width = 533; width >= 60; --width) {
        SCOPED_TRACE(width);
        LayOut(width);
        ASSERT_EQ(buttons_[1]->x(), 10 + buttons_[0]->width() + NarrowGap);
        ASSERT_GE(buttons_[2]->x(), buttons_[1]->x() + buttons_[1]->width() + NarrowGap);
        ASSERT_EQ(buttons_[2]->x() + buttons_[2]->width(), width - 10);
        ASSERT_EQ(buttons_[0]->width(), buttons_[1]->width());
        ASSERT_TRUE(width < 450 || buttons_[0]->toolTip().isEmpty());
    }
    LayOut(250);
    EXPECT_TRUE(buttons_[0]->text().endsWith(QChar(0x2026)));
    EXPECT_EQ(buttons_[2]->text(), QStringLiteral("Exit")) << "the widest are cut";
    EXPECT_TRUE(buttons_[0]->toolTip().contains(QStringLiteral("Add artist to list")));
    LayOut(600);
    EXPECT_EQ(buttons_[0]->text(), QStringLiteral("Add artist to list"));
    EXPECT_EQ(buttons_[0]->toolTip(), QString());
}

TEST_F(NarrowRowTest, HiddenControlsTakeNoRoom) {
    buttons_[1]->hide();
    LayOut(330);
    EXPECT_EQ(buttons_[0]->geometry(), QRect(10, 50, 200, 25));
    EXPECT_EQ(buttons_[2]->geometry(), QRect(220, 50, 100, 25));
}

}  // namespace
}  // namespace ostrova::pages
