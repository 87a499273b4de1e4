#include "uikit/markup_view.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QToolTip>

#include "tests/gallery/gallery.h"
#include "tests/uikit/widgets.h"
#include "uikit/text.h"

namespace ostrova::uikit {
namespace {

using Strings = std::vector<std::string>;

/// A shown view, large enough for its text, with an edit before and after it in the tab order.
class MarkupViewTest : public ::testing::Test {
protected:
    MarkupViewTest() {
        view.setGeometry(0, 0, 400, 200);
        view.UseDialogFace();
        window.resize(400, 260);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    /// A point on the character at `position`.
    [[nodiscard]] QPoint PointOn(int position) {
        QTextCursor cursor(view.document());
        cursor.setPosition(position);
        return view.cursorRect(cursor).center() + QPoint(3, 0);
    }
    [[nodiscard]] std::string LinkAt(QPoint point) {
        return view.LinkAt(point).value_or(QString()).toStdString();
    }

    testing::RecordedLinks links;
    QWidget window;
    MarkupView view{&window, links};
};

TEST_F(MarkupViewTest, ALineEndBelongsToTheLastCharacterAtEveryPixel) {
    view.SetMarkup("ab <a href=\"u\">link</a>\n\nplain\n<a href=\"v\">x</a> y");
    const int end = view.cursorRect().left() + PointOn(7).x();
    for (int x = end; x < view.viewport()->width(); ++x) {
        ASSERT_EQ(LinkAt({x, PointOn(5).y()}), "u") << x;
        ASSERT_EQ(LinkAt({x, PointOn(8).y()}), "") << "the empty line, " << x;
        ASSERT_EQ(LinkAt({x, PointOn(10).y()}), "") << x;
        ASSERT_EQ(LinkAt({x, PointOn(17).y()}), "") << x;
    }
    EXPECT_EQ(LinkAt(PointOn(15)), "v");
    EXPECT_EQ(view.CharIndexAt({300, 190}), 17);  // below the text
    EXPECT_EQ(view.CharIndexAt({0, -1}), -1);
}

TEST_F(MarkupViewTest, ATrailingLineBreakKeepsTheLinkAboveToItself) {
    view.SetMarkup("<a href=\"u\">link</a>\n");
    EXPECT_EQ(LinkAt(PointOn(2)), "u");
    EXPECT_EQ(LinkAt({2, PointOn(5).y()}), "");
    EXPECT_EQ(LinkAt({2, 190}), "");
}

TEST_F(MarkupViewTest, LinksOfEarlierContentStayBehindTheNewer) {
    view.SetMarkup("<a href=\"old\">0123456789</a>");
    view.SetMarkup("01<a href=\"new\">234</a>56789<a href=\"open\">");
    EXPECT_EQ(LinkAt(PointOn(1)), "old");
    EXPECT_EQ(LinkAt(PointOn(3)), "new");
    EXPECT_EQ(LinkAt(PointOn(7)), "old");
    view.AppendMarkup("\r\n<a href=\"added\">x</a>");
    EXPECT_EQ(view.Links().back(), (LinkRange{12, 13, "added"}));
    EXPECT_EQ(LinkAt(PointOn(12)), "added");
}

TEST_F(MarkupViewTest, APressOpensTheLinkUnderItAndNothingElse) {
    view.SetMarkup("abc <a href=\"http://host/\">link</a> <a href=\"file:///etc/passwd\">bad</a>");
    QTest::mouseMove(view.viewport(), PointOn(1));
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::IBeamCursor);
    QTest::mouseMove(view.viewport(), PointOn(5));
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::BitmapCursor);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, PointOn(5));
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, PointOn(5));
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, PointOn(5));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, PointOn(10));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, PointOn(2));
    EXPECT_EQ(links.opened, Strings{"http://host/"});
    EXPECT_FALSE(view.textCursor().hasSelection());
}

TEST_F(MarkupViewTest, LinksAreReachedByTabAndOpenedByEnterAndSpace) {
    QLineEdit after(&window);
    after.move(0, 220);
    after.show();
    view.SetMarkup("<a href=\"http://a/\">one</a> <a href=\"mailto:b@c\">two</a>");
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([] {
        return QToolTip::text() == QStringLiteral("<p style=\"white-space:pre\">http://a/</p>");
    }));
    QTest::keyClick(&view, Qt::Key_Tab);
    QTest::keyClick(&view, Qt::Key_Space);
    QApplication::setActiveWindow(nullptr);  // the browser that it opened
    QApplication::setActiveWindow(&window);
    view.setPalette(gallery::DarkPalette());
    EXPECT_EQ(view.extraSelections().value(0).cursor.selectedText(), QStringLiteral("two"));
    QTest::keyClick(&view, Qt::Key_Return);
    QTest::keyClick(&view, Qt::Key_Tab);
    EXPECT_TRUE(after.hasFocus());
    QTest::keyClick(&after, Qt::Key_Backtab);
    QTest::keyClick(&view, Qt::Key_Enter);
    EXPECT_EQ(links.opened, (Strings{"http://a/", "mailto:b@c", "mailto:b@c", "mailto:b@c"}));
    view.SetMarkup("no link: passed over, but for old ranges beyond its text");
    MarkupView plain(&window);
    plain.SetMarkup("no link");
    EXPECT_EQ(plain.focusPolicy(), Qt::ClickFocus);
}

TEST_F(MarkupViewTest, ForeignTextIsShownAndCopiedLetterForLetter) {
    const std::string foreign =
        "<b>x</b> &amp; <img src=\"file:///x\"> \x90\x1B[31m %1 [*] caf\xE9";
    view.SetPlainContent(foreign);
    view.setFocus();
    QTest::keySequence(&view, QKeySequence::SelectAll);
    QTest::keySequence(&view, QKeySequence::Copy);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), ToQString(foreign));
    EXPECT_EQ(copied->formats(), QStringList{QStringLiteral("text/plain")});
}

TEST_F(MarkupViewTest, FollowsFontAndPaletteWithoutLosingLinks) {
    view.SetMarkup("a<font size=+1>b</font><a href=\"u\">c</a>");
    QFont larger = view.font();
    larger.setPointSize(20);
    view.setFont(larger);
    view.setPalette(gallery::DarkPalette());
    const auto formatAt = [this](int position) {
        QTextCursor cursor(view.document());
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    };
    EXPECT_EQ(formatAt(1).fontPointSize(), 22);
    EXPECT_FALSE(formatAt(0).hasProperty(QTextFormat::ForegroundBrush));
    EXPECT_GT(formatAt(2).foreground().color().lightness(), 128);
    EXPECT_EQ(view.Links(), (std::vector<LinkRange>{{2, 3, "u"}}));
    EXPECT_EQ(view.toPlainText(), QStringLiteral("abc"));
}

TEST_F(MarkupViewTest, StaysScrolledWhenThePaletteChanges) {
    std::string text;
    for (int line = 0; line < 5000; ++line) text += "a line\n";
    view.SetMarkup(text);
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    const int scrolled = view.verticalScrollBar()->value();
    view.setPalette(gallery::DarkPalette());
    EXPECT_EQ(view.verticalScrollBar()->value(), scrolled);
}

}  // namespace
}  // namespace ostrova::uikit
