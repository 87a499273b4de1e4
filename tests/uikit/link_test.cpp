#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

#include "tests/uikit/widgets.h"
#include "uikit/link_label.h"

namespace ostrova::uikit {
namespace {

using Strings = std::vector<std::string>;

TEST(OpenLink, OpensWebAndMailAddressesOnly) {
    testing::RecordedLinks links;
    for (const char* target :
         {"file:///etc/passwd", "javascript:alert(1)", "data:text/html,x", "smb://host/x",
          "//host/x", " http://host", "http://ho\nst/", "http%3A//host", "http:///path",
          "https:", "www.host.example", "Click for online playlist", "", "ftp://host/x"}) {
        EXPECT_FALSE(OpenLink(QString::fromLatin1(target), links)) << target;
    }
    EXPECT_EQ(links.opened, Strings());
    for (const char* target : {"http://host/a?b=c&d", "HTTPS://Host/", "mailto:a@b.example"}) {
        EXPECT_TRUE(OpenLink(QString::fromLatin1(target), links)) << target;
    }
    EXPECT_EQ(links.opened,
              (Strings{"http://host/a?b=c&d", "https://host/", "mailto:a@b.example"}));
}

class LinkLabelTest : public ::testing::Test {
protected:
    LinkLabelTest() {
        label.setGeometry(0, 0, 200, 40);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void Click() { QTest::mouseClick(&label, Qt::LeftButton, {}, {5, 5}); }
    [[nodiscard]] QString ToolTip() {
        QHelpEvent event(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&label, &event);
        return QToolTip::text();
    }

    testing::RecordedLinks links;
    QWidget window;
    LinkLabel label{&window, links};
};

TEST_F(LinkLabelTest, OpensItsTargetOrItsOwnText) {
    label.SetLink(QStringLiteral("Click"), QStringLiteral("http://target/"));
    Click();
    QTest::keyClick(&label, Qt::Key_Return);
    QTest::keyClick(&label, Qt::Key_Space);
    label.SetLink(QStringLiteral("http://text/"));
    Click();
    EXPECT_EQ(links.opened,
              (Strings{"http://target/", "http://target/", "http://target/", "http://text/"}));
    QString called;
    label.SetLink(QStringLiteral("Click"), QStringLiteral("anything"),
                  [&called](const QString& target) { called = target; });
    Click();
    EXPECT_EQ(called, QStringLiteral("anything"));
    EXPECT_EQ(links.opened.size(), 4u);
}

TEST_F(LinkLabelTest, PlainTextTakesNoClicksNorTheFocusButKeepsTheTarget) {
    label.SetLink(QStringLiteral("Click"), QStringLiteral("http://target/"));
    EXPECT_EQ(label.focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(label.cursor().shape(), Qt::BitmapCursor);
    EXPECT_TRUE(label.font().underline());
    label.SetPlainText(QStringLiteral("Words"));
    Click();
    QTest::keyClick(&label, Qt::Key_Return);
    EXPECT_EQ(links.opened, Strings());
    EXPECT_EQ(label.focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
    EXPECT_FALSE(label.font().underline());
    EXPECT_EQ(label.Target(), QStringLiteral("http://target/"));
}

TEST_F(LinkLabelTest, BoldAndUnderlineCombine) {
    label.SetLink(QStringLiteral("Click"));
    label.SetBold(true);
    EXPECT_TRUE(label.font().bold() && label.font().underline());
    label.SetUnderline(false);
    EXPECT_TRUE(label.font().bold() && !label.font().underline() && label.IsLink());
}

TEST_F(LinkLabelTest, ShowsForeignTextAndItsRealTarget) {
    label.SetLink(QStringLiteral("AT&&T & <b>"), QStringLiteral("http://evil/<i>"));
    EXPECT_EQ(label.text(), QStringLiteral("AT&T & <b>"));
    EXPECT_EQ(ToolTip(), QStringLiteral("<p style=\"white-space:pre\">http://evil/&lt;i&gt;</p>"));
    label.SetPlainText(QString(200, QLatin1Char('w')));
    EXPECT_TRUE(ToolTip().contains(QStringLiteral("wwww"))) << "a cut text shows whole";
    label.SetLink(QStringLiteral("Click"), QStringLiteral("http://target/"));
    label.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(QTest::qWaitFor(
        [] { return QToolTip::text().contains(QStringLiteral("http://target/")); }));
}

TEST_F(LinkLabelTest, BlinksItsTextWhenAsked) {
    label.SetBlinkMode(LinkLabel::BlinkMode::Text, 1, QStringLiteral("News"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return label.text() == QStringLiteral("News"); }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return label.text().isEmpty(); }));
}

}  // namespace
}  // namespace ostrova::uikit
