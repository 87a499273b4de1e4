#include <QAccessible>

#include "tests/uikit/widgets.h"
#include "uikit/accessibility.h"
#include "uikit/link_label.h"

namespace ostrova::uikit {
namespace {

using testing::Strings;

TEST(OpenLink, OpensWebAndMailAddressesOnly) {
    testing::RecordedLinks links;
    for (const char* target :
         {"file:///etc/passwd", "javascript:alert(1)", "data:text/html,x", "smb://host/x",
          "//host/x", " http://host", "http://ho\nst/", "http%3A//host", "http:///path",
          "https:", "www.host.example", "Click for online playlist", "", "ftp://host/x"}) {
        EXPECT_FALSE(OpenLink(target, links)) << target;
    }
    EXPECT_EQ(links.opened, Strings());
    for (const char* target : {"http://host/a?b=c&d", "HTTPS://Host/", "mailto:a@b.example"}) {
        EXPECT_TRUE(OpenLink(target, links)) << target;
    }
    EXPECT_EQ(links.opened,
              (Strings{"http://host/a?b=c&d", "https://host/", "mailto:a@b.example"}));
}

class LinkLabelTest : public ::testing::Test {
protected:
    LinkLabelTest() {
        InstallAccessibility();
        label.setGeometry(0, 0, 200, 40);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    /// By mouse, by keys and by a screen reader.
    void PressAllWays() {
        QTest::mouseClick(&label, Qt::LeftButton, {}, {5, 5});
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) QTest::keyClick(&label, key);
        QAccessible::queryAccessibleInterface(&label)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    }
    [[nodiscard]] QAccessible::Role Role() {
        return QAccessible::queryAccessibleInterface(&label)->role();
    }

    testing::RecordedLinks links;
    QWidget window;
    LinkLabel label{&window, links};
};

TEST_F(LinkLabelTest, OpensItsTargetOrItsOwnText) {
    label.SetLink("Click", "http://target/");
    EXPECT_EQ(Role(), QAccessible::Link);
    PressAllWays();
    EXPECT_EQ(links.opened, Strings(4, "http://target/"));
    label.SetLink("http://text/");
    PressAllWays();
    EXPECT_EQ(links.opened.back(), "http://text/");
    QStringList called;
    label.SetLink("Click", "anything", [&called](const QString& target) { called += target; });
    PressAllWays();
    EXPECT_EQ(called, QStringList(4, "anything"));
    EXPECT_EQ(links.opened.size(), 8u);
}

TEST_F(LinkLabelTest, PlainTextTakesNoClicksNorTheFocusButKeepsTheTarget) {
    label.SetLink("Click", "http://target/");
    EXPECT_EQ(label.focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(label.cursor().shape(), Qt::BitmapCursor);
    label.SetBold(true);
    EXPECT_TRUE(label.font().bold() && label.font().underline());
    label.SetPlainText("Words");
    EXPECT_TRUE(label.font().bold() && !label.font().underline());
    QTest::mouseClick(&label, Qt::LeftButton, {}, {5, 5});
    QTest::keyClick(&label, Qt::Key_Return);
    EXPECT_EQ(links.opened, Strings());
    EXPECT_EQ(Role(), QAccessible::StaticText);
    EXPECT_EQ(label.focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(label.Target(), "http://target/");
}

TEST_F(LinkLabelTest, ShowsForeignTextAndItsRealTarget) {
    label.SetLink("AT&&T & <b>", "http://evil/<i>");
    EXPECT_EQ(label.text(), "AT&T & <b>");
    EXPECT_EQ(testing::TipOver(label, {5, 5}), "http://evil/<i>");
    label.SetPlainText(QString(200, 'w'));
    EXPECT_EQ(testing::TipOver(label, {5, 5}), label.text()) << "a cut text shows whole";
    label.SetLink("Click", "http://target/");
    label.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(QTest::qWaitFor([] { return testing::Tip() == "http://target/"; }));
}

TEST_F(LinkLabelTest, BlinksItsTextWhenAsked) {
    label.SetBlinkMode(LinkLabel::BlinkMode::Text, 1, "News");
    for (const char* text : {"News", "", "News"}) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return label.text() == text; }));
    }
}

}  // namespace
}  // namespace ostrova::uikit
