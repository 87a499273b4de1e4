#include "gallery/pages.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTextDocument>
#include <QVBoxLayout>
#include <initializer_list>
#include <memory>
#include <utility>

#include "gallery/gallery.h"
#include "uikit/dialog_builder.h"
#include "uikit/dialog_layout.h"
#include "uikit/hand_cursor.h"
#include "uikit/link_label.h"
#include "uikit/markup_view.h"
#include "uikit/text_measure.h"

namespace ostrova::gallery {
namespace {

using namespace resources;
using uikit::LinkLabel;
using uikit::MarkupView;

constexpr std::pair<const char*, const char*> MarkupSamples[] = {
    {"Note", "<b>Note:</b> <i>Leave song name\nblank to match any song\nby a given artist.</i>"},
    {"About",
     "<font size=+4 color=red><b>Ostrova</b></font>\nVersion 1.9  (<b>not the latest!</b>)\n"
     "21st December 2014\n<a href=\"http://www.kelvane.example/\">http://www.kelvane.example/</a>"},
    {"Contact",
     "Enquiries: <a href=\"mailto:ostrova@kelvane.example\">ostrova@kelvane.example</a>\n"
     "Web site: <a href=\"http://www.kelvane.example/ostrova\">www.kelvane.example/ostrova</a>"},
    {"Lists",
     "<ol><li>first\n<li>second\nand its second line<ul>\n<li>inner<ul>\n<li>innermost</ul></ul>\n"
     "<li>third</ol>"},
    {"Colours",
     "<font color=red>red</font> <font color=green>green</font> <font color=blue>blue</font> "
     "<font color=yellow>yellow</font> <font color=orange>orange</font> "
     "<font color=white>white</font> <font color=#7F007F>#7F007F</font>"},
    {"Sizes", "normal <font size=+2>+2 <font size=+4>+4</font></font> <font size=-1>-1</font>"},
    {"Literal",
     "&lt;b&gt; R&amp;B &copy; fran&ccedil;ais caf\xE9 <u>unknown tag</u>, 1 < 2 & more"},
};

QGridLayout* MakeGrid(QWidget* page) {
    auto* grid = new QGridLayout(page);
    grid->setColumnStretch(1, 1);
    return grid;
}

void AddRow(QGridLayout* grid, const QString& name, QWidget* control) {
    const int row = grid->rowCount();
    auto* label = new QLabel(name, grid->parentWidget());
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    control->setAccessibleName(name);
    control->setObjectName(name);
    grid->addWidget(label, row, 0);
    grid->addWidget(control, row, 1);
}

constexpr const char* Check = "Automatically check\nfor software updates";
constexpr ControlTemplate EveryControl[] = {
    {1, ControlKind::StaticText, "heading", "Every control of a template", "", {5, 5, 130, 10}},
    {2, ControlKind::StaticText, "nameLabel", "Song name:", "", {5, 18, 100, 10}},
    {3, ControlKind::Edit, "name", "", "Song name", {5, 28, 100, 15}},
    {4, ControlKind::PushButton, "add", "&Add", "", {110, 28, 30, 15}},
    {5, ControlKind::ComboBox, "year", "", "Year", {145, 28, 40, 15}},
    {6, ControlKind::CheckBox, "check", Check, "", {110, 48, 100, 22}},
    {7, ControlKind::MarkupView, "note", "", "Note", {5, 48, 100, 30}, WrapsWords},
    {8, ControlKind::RadioButton, "always", "Always open", "", {5, 85, 180, 11}, BeginsGroup},
    {9, ControlKind::RadioButton, "never", "Never, I'll run it", "", {5, 96, 180, 11}},
    {10, ControlKind::LinkLabel, "link", "<Playlist link>", "", {110, 72, 100, 10}},
    {11, ControlKind::ProgressBar, "bar", "", "Progress", {5, 112, 205, 10}},
    {12, ControlKind::PushButton, "exit", "E&xit", "", {160, 128, 50, 15}},
    {13, ControlKind::PushButton, "disabled", "Disabled", "", {5, 128, 50, 15}},
};
constexpr DialogTemplate EveryControlTemplate = {"everyControl", "Template", 215, 148,
                                                 EveryControl};

/// A page that lays itself out as the program's own pages do.
class TemplatePage final : public QWidget {
public:
    explicit TemplatePage(QWidget* parent) : QWidget(parent) {
        uikit::BuildDialog(*this, EveryControlTemplate);
        uikit::ControlAs<MarkupView>(*this, 7)->SetMarkup(MarkupSamples[0].second);
        uikit::ControlAs<QComboBox>(*this, 5)->addItem("2026");
        uikit::ControlAs<QRadioButton>(*this, 8)->setChecked(true);
        uikit::ControlAs<QProgressBar>(*this, 11)->setValue(40);
        uikit::ControlById(*this, 13)->setEnabled(false);
        (void)uikit::AttachLink(*this, 10, "Click for online playlist",
                                "http://www.vantra.example/");
        layout_.Attach(*this);
        setMinimumSize(layout_.MinTrackSize());
        const auto anchor = [this](std::initializer_list<int> ids, auto across, auto down) {
            for (const int id : ids) layout_.SetAnchorById(id, across, down);
        };
        anchor({1}, uikit::AnchorFixed, uikit::AnchorFixed);
        anchor({2, 3, 7}, uikit::AnchorNear, uikit::AnchorFixed);
        anchor({4, 5, 6, 10}, uikit::AnchorMove, uikit::AnchorFixed);
        anchor({8, 9, 13}, uikit::AnchorFixed, uikit::AnchorMove);
        anchor({11}, uikit::AnchorStretch, uikit::AnchorMove);
        anchor({12}, uikit::AnchorMove, uikit::AnchorMove);
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        layout_.Relayout();
    }

private:
    uikit::DialogLayout layout_;
};

}  // namespace

QWidget* MakeMarkupPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    QGridLayout* grid = MakeGrid(page);
    for (const auto& [name, markup] : MarkupSamples) {
        auto* view = new MarkupView(page);
        view->UseDialogFace();
        view->SetMarkup(markup);
        const std::unique_ptr<QTextDocument> whole(view->document()->clone());
        whole->setTextWidth(-1);  // the view's own breaks no lines before it is shown
        view->setMinimumHeight(uikit::MeasureRichText(*whole, 3).height());
        AddRow(grid, name, view);
    }
    auto* plain = new MarkupView(page);
    plain->SetPlainContent(
        "Plain, on its own white: <b>tags</b> & entities &amp; \x90 \x9D\n[*] %1");
    AddRow(grid, "Plain", plain);
    return page;
}

QWidget* MakeLinkPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    QGridLayout* grid = MakeGrid(page);
    const QString site = "http://www.vantra.example/playlist";
    const QString tooLong = "A guest line that is far too long for this place: ";
    const auto add = [&](const char* name) -> LinkLabel& {
        auto* label = new LinkLabel(page);
        AddRow(grid, name, label);
        return *label;
    };
    add("Plain").SetPlainText("Guests: AT&&T & <b>friends</b>");
    LinkLabel& bold = add("Bold");
    bold.SetText("This weekend's playlists are out now!");
    bold.SetBold(true);
    add("Link").SetLink("Click for online playlist", site);
    LinkLabel& quiet = add("Not underlined");
    quiet.SetLink("Guest programmer: Somebody", site);
    quiet.SetUnderline(false);
    LinkLabel& boldLink = add("Bold link");
    boldLink.SetLink(site);
    boldLink.SetBold(true);
    add("Long").SetLink(tooLong + QString(200, 'm'), site);
    LinkLabel& coloured = add("Coloured");
    coloured.SetPlainText("Two lines\nin red");
    coloured.SetTextColour(0x0000FF);
    LinkLabel& disabled = add("Disabled");
    disabled.SetPlainText("A disabled label");
    disabled.setEnabled(false);
    grid->setRowStretch(grid->rowCount(), 1);
    return page;
}

QWidget* MakeCursorPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    QGridLayout* grid = MakeGrid(page);
    for (const int percent : {100, 150, 200, 400}) {
        auto* picture = new QLabel(page);
        QPixmap hand = uikit::DrawHand(percent / 100.0);
        hand.setDevicePixelRatio(1);
        picture->setPixmap(hand);
        AddRow(grid, QString("Hand at %1 %").arg(percent), picture);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    return page;
}

QWidget* MakeTemplatePage(QWidget* parent) {
    return new TemplatePage(parent);
}

QWidget* MakeBoxPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* column = new QVBoxLayout(page);
    for (const NamedBox& box : Boxes()) {
        auto* button = new QPushButton(box.name, page);
        QObject::connect(button, &QPushButton::clicked, page, [page, make = box.make] {
            QDialog* dialog = make(page->window());
            dialog->setAttribute(Qt::WA_DeleteOnClose);
            dialog->open();
        });
        column->addWidget(button);
    }
    column->addStretch();
    return page;
}

}  // namespace ostrova::gallery
