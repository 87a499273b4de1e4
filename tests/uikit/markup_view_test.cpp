#include "uikit/markup_view.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>

#include "gallery/gallery.h"
#include "tests/uikit/widgets.h"
#include "uikit/text.h"

namespace ostrova::uikit {
namespace {

using testing::Strings;

/// A shown view, large enough for its text.
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
    [[nodiscard]] std::string LinkOn(int position) { return LinkAt(PointOn(position)); }
    void Click(int position, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(view.viewport(), button, {}, PointOn(position));
    }
    [[nodiscard]] Qt::CursorShape CursorOn(int position) {
        QTest::mouseMove(view.viewport(), PointOn(position));
        return view.viewport()->cursor().shape();
    }

    testing::RecordedLinks links;
    QWidget window;
    MarkupView view{&window, links};
};

TEST_F(MarkupViewTest, ALineEndBelongsToTheLastCharacterAtEveryPixel) {
    view.SetMarkup("ab <a href=\"u\">link</a>\n\nplain\n<a href=\"v\">x</a> <a href=\"w\">y</a>\n");
    for (int x = PointOn(7).x(); x < view.viewport()->width(); ++x) {
        std::string found;
        for (const int position : {5, 8, 10, 17, 19}) {
            found += LinkAt({x, PointOn(position).y()}) + ",";
        }
        ASSERT_EQ(found, "u,,,w,,") << "there are empty lines; " << x;
    }
    EXPECT_EQ(LinkOn(15), "v");
    EXPECT_EQ(view.CharIndexAt({300, 190}), 18);  // below the text
    EXPECT_EQ(view.CharIndexAt({0, -1}), -1);
}

TEST_F(MarkupViewTest, LinksOfEarlierContentStayBehindTheNewer) {
    view.SetMarkup("<a href=\"old\">0123456789</a>");
    view.SetMarkup("01<a href=\"new\">234</a>56789<a href=\"open\">");
    EXPECT_EQ(LinkOn(1) + LinkOn(3) + LinkOn(7), "oldnewold");
    view.AppendMarkup("\r\n<a href=\"added\">x</a>");
    EXPECT_EQ(view.Links().back(), (LinkRange{12, 13, "added"}));
    EXPECT_EQ(LinkOn(12), "added");
}

TEST_F(MarkupViewTest, APressOpensTheLinkUnderItAndNothingElse) {
    view.SetMarkup("abc <a href=\"http://host/\">link</a> <a href=\"file:///etc/passwd\">bad</a>");
    EXPECT_EQ(CursorOn(1), Qt::IBeamCursor);
    EXPECT_EQ(CursorOn(5), Qt::BitmapCursor);
    EXPECT_EQ(testing::TipOver(*view.viewport(), PointOn(10)), "file:///etc/passwd");
    Click(5);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, PointOn(5));
    Click(5, Qt::RightButton);
    for (const int position : {10, 2}) Click(position);
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
    EXPECT_TRUE(QTest::qWaitFor([] { return testing::Tip() == "http://a/"; }));
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Space}) QTest::keyClick(&view, key);
    QApplication::setActiveWindow(nullptr);  // the browser that it opened
    QApplication::setActiveWindow(&window);
    view.setPalette(gallery::DarkPalette());
    EXPECT_EQ(view.extraSelections().value(0).cursor.selectedText(), "two");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab}) QTest::keyClick(&view, key);
    EXPECT_TRUE(after.hasFocus());
    QTest::keyClick(&after, Qt::Key_Backtab);
    QTest::keyClick(&view, Qt::Key_Enter);
    EXPECT_EQ(links.opened, (Strings{"http://a/", "mailto:b@c", "mailto:b@c", "mailto:b@c"}));
    MarkupView plain(&window);
    plain.SetMarkup("no link: passed over");
    EXPECT_EQ(plain.focusPolicy(), Qt::ClickFocus);
}

TEST_F(MarkupViewTest, ForeignTextIsShownAndCopiedLetterForLetter) {
    const std::string foreign =
        "<b>x</b> &amp; <img src=\"file:///x\"> \x90\x1B[31m %1 [*] caf\xE9";
    view.SetPlainContent(foreign);
    view.setFocus();
    for (const auto keys : {QKeySequence::SelectAll, QKeySequence::Copy}) {
        QTest::keySequence(&view, keys);
    }
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), ToQString(foreign));
    EXPECT_EQ(copied->formats(), QStringList{"text/plain"});
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
    EXPECT_EQ(LinkOn(1) + LinkOn(2), "u");
    EXPECT_EQ(view.toPlainText(), "abc");
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
