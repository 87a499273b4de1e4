#include "pages/narrow_row.h"

#include <QPushButton>
#include <vector>

#include "tests/uikit/widgets.h"
#include "uikit/dialog_builder.h"

namespace ostrova::pages {
namespace {

class NarrowRowTest : public ::testing::Test {
public:
    NarrowRowTest() {
        for (int i = 0; i < 3; ++i) {
            buttons_.push_back(new QPushButton(i < 2 ? "Add artist to list" : "Exit", &page_));
            uikit::SetControlId(*buttons_[i], i + 1);
        }
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
        const QRect first = buttons_[0]->geometry();
        const QRect second = buttons_[1]->geometry();
        ASSERT_EQ(second.left(), 10 + first.width() + NarrowGap);
        ASSERT_GT(buttons_[2]->x(), second.right() + NarrowGap);
        ASSERT_EQ(buttons_[2]->geometry().right(), width - 11);
        ASSERT_EQ(first.width(), second.width());
        ASSERT_TRUE(width < 450 || buttons_[0]->toolTip().isEmpty());
    }
    LayOut(250);
    EXPECT_TRUE(buttons_[0]->text().endsWith(QChar(0x2026)));
    EXPECT_EQ(buttons_[2]->text(), "Exit") << "the widest are cut";
    EXPECT_TRUE(buttons_[0]->toolTip().contains("Add artist to list"));
    LayOut(600);
    EXPECT_EQ(buttons_[0]->text() + buttons_[0]->toolTip(), "Add artist to list");
}

TEST_F(NarrowRowTest, HiddenControlsTakeNoRoom) {
    buttons_[1]->hide();
    LayOut(330);
    EXPECT_EQ(buttons_[0]->geometry(), QRect(10, 50, 200, 25));
    EXPECT_EQ(buttons_[2]->geometry(), QRect(220, 50, 100, 25));
}

}  // namespace
}  // namespace ostrova::pages
