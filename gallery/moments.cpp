#include "gallery/moments.h"

#include <QHBoxLayout>
#include <QHelpEvent>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include "gallery/song_list.h"
#include "uikit/drop_down.h"
#include "uikit/link_label.h"
#include "uikit/list_header.h"
#include "uikit/markup_view.h"

namespace ostrova::gallery {
namespace {

using namespace uikit;

constexpr const char* Site = "http://www.vantra.example/playlist";

/// A window with what is looked at.
class Stage : public QWidget {
public:
    void Show(QSize size) {
        resize(size);
        show();
        activateWindow();
        (void)QTest::qWaitForWindowActive(this);
    }
};

/// Moves the mouse with its left button down, which keeps its events at `widget`.
void MoveHeld(QWidget& widget, QPoint to) {
    QMouseEvent event(QEvent::MouseMove, to, widget.mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

/// Two lists side by side.
class ListStage final : public Stage {
public:
    ListStage() : left_(new SongList(this)), right_(new SongList(this)) {
        auto* row = new QHBoxLayout(this);
        for (SongList* list : {left_, right_}) {
            list->setAccessibleName(list == left_ ? "Left" : "Right");
            list->SetAutoFitColumns(true);
            list->SetDrawMode(2);
            list->SetEditLabels(true);
            row->addWidget(list);
        }
        Show({92 * fontMetrics().horizontalAdvance("0"), 180});
    }

    [[nodiscard]] SongList& Left() const { return *left_; }
    [[nodiscard]] SongList& Right() const { return *right_; }

    [[nodiscard]] QPoint At(int row, int column) const {
        return left_->CellRect(row, column).center();
    }
    void Click(int row, int column) {
        QTest::mouseClick(left_->viewport(), Qt::LeftButton, {}, At(row, column));
    }
    /// The first click selects the row, the second edits the cell.
    void Edit(int row, int column) {
        for (int click = 0; click < 2; ++click) Click(row, column);
    }
    /// Takes hold of the second row and leads it over `first`, of the left list, to `last`.
    void Drag(QPoint first, QPoint last) {
        QTest::mousePress(left_->viewport(), Qt::LeftButton, {}, At(1, 0));
        for (const QPoint place : {first, last}) MoveHeld(*left_->viewport(), place);
    }
    [[nodiscard]] QPoint OnRight(QPoint point) const {
        return left_->viewport()->mapFromGlobal(right_->viewport()->mapToGlobal(point));
    }

private:
    SongList* left_;
    SongList* right_;
};

Moment WithLists(const char* name, const std::function<void(ListStage&)>& lead) {
    return {"list-" + QString(name), [lead](const Moment::TakePicture& takePicture) {
                ListStage stage;
                lead(stage);
                takePicture(stage);
            }};
}

void LeadToChosenCell(ListStage& stage) {
    stage.Click(1, 0);
    for (int i = 0; i < 2; ++i) QTest::keyClick(&stage.Left(), Qt::Key_Right);
}

QList<QIcon> Squares(int size) {
    QList<QIcon> squares;
    for (const Qt::GlobalColor colour : {Qt::darkGreen, Qt::darkYellow}) {
        QPixmap square(size, size);
        square.fill(colour);
        squares.push_back(square);
    }
    return squares;
}

void LeadToStateImages(ListStage& stage) {
    stage.Left().SetStateImages(Squares(16));
    for (const int row : {0, 2, 2, 1}) stage.Click(row, 1);
}

void LeadToGrownEditor(ListStage& stage) {
    stage.Edit(1, 2);
    QTest::keyClicks(QApplication::focusWidget(), "Somebody & the others who played");
}

void LeadToChoice(ListStage& stage) {
    stage.Left().SetColumnKinds({0, 0, 0, click_kind::Custom});
    stage.Edit(1, 3);
}

void LeadToToggle(ListStage& stage) {
    stage.Left().SetColumnKinds({0, click_kind::YesNo});
    for (int row = 0; row < 5; ++row) stage.Left().SetCellText(row, 1, "No");
    stage.Click(1, 1);
}

void LeadToHeaderDrag(ListStage& stage) {
    stage.Left().SetHeaderDragEnabled(true);
    stage.Left().SetSortEnabled(true);
    stage.Left().SortBy(1, true);
    QWidget& header = *stage.Left().header()->viewport();
    QTest::mousePress(&header, Qt::LeftButton, {}, {20, 5});
    MoveHeld(header, {stage.At(0, 2).x(), 5});
}

void AskForTip(QWidget& widget, QPoint place) {
    QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QCoreApplication::sendEvent(&widget, &event);
}

std::vector<Moment> ListMoments() {
    return {
        WithLists("row-focused", [](ListStage& stage) { stage.Click(1, 0); }),
        WithLists("cell-chosen", LeadToChosenCell),
        WithLists("state-images", LeadToStateImages),
        WithLists("label-edited", [](ListStage& stage) { stage.Edit(1, 0); }),
        WithLists("right-edited", [](ListStage& stage) { stage.Edit(2, 1); }),
        WithLists("centred-edited", [](ListStage& stage) { stage.Edit(4, 3); }),
        WithLists("editor-grown", LeadToGrownEditor),
        WithLists("choice-dropped", LeadToChoice),
        WithLists("yes-no-toggled", LeadToToggle),
        WithLists("drag-within",
                  [](ListStage& stage) { stage.Drag(stage.At(4, 1), stage.At(3, 1)); }),
        WithLists("drag-across",
                  [](ListStage& stage) {
                      stage.Drag(stage.At(2, 1), stage.OnRight({50, 45}));
                  }),
        WithLists("drag-behind-all",
                  [](ListStage& stage) {
                      stage.Drag({50, 110}, stage.OnRight({50, 110}));
                  }),
        WithLists("drag-to-empty",
                  [](ListStage& stage) {
                      stage.Right().DeleteAllRows();
                      stage.Left().SetNormalImages(Squares(32));
                      stage.Drag(stage.At(2, 1), stage.OnRight({50, 30}));
                  }),
        WithLists("header-dragged", LeadToHeaderDrag),
        WithLists("tip",
                  [](ListStage& stage) { AskForTip(*stage.Left().viewport(), stage.At(3, 1)); }),
    };
}

/// The menu runs in a loop of its own.
void PlayListMenu(const Moment::TakePicture& takePicture) {
    ListStage stage;
    stage.resize(stage.width(), 280);
    stage.Left().SetSortEnabled(true);
    stage.Left().SortBy(2, true);
    stage.Click(1, 0);
    QTimer::singleShot(0, &stage, [&] {
        takePicture(stage);
        for (auto* menu : stage.findChildren<QMenu*>()) menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, stage.At(1, 0),
                            stage.Left().viewport()->mapToGlobal(stage.At(1, 0)));
    QCoreApplication::sendEvent(stage.Left().viewport(), &event);
}

void PlayDropDown(const Moment::TakePicture& takePicture) {
    Stage stage;
    DropDown box(&stage);
    for (int i = 1; i <= 30; ++i) box.addItem(QString("Friday, %1 November 2026").arg(i));
    box.setAccessibleName("Date");
    box.setGeometry(10, 10, 120, box.sizeHint().height());
    box.setCurrentIndex(20);
    stage.Show({320, 250});
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Down, Qt::AltModifier);
    takePicture(stage);
}

/// Tab reaches each link, and a tooltip tells where it leads.
void PlayLinks(const Moment::TakePicture& takePicture) {
    Stage stage;
    auto* column = new QVBoxLayout(&stage);
    for (const char* text : {"The first link", "Click for online playlist"}) {
        auto* link = new LinkLabel(&stage);
        link->SetLink(text, Site);
        column->addWidget(link);
    }
    column->addStretch();
    stage.Show({360, 110});
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::qWait(0);
    takePicture(stage);
}

void PlayMarkupLink(const Moment::TakePicture& takePicture) {
    Stage stage;
    auto* column = new QVBoxLayout(&stage);
    auto* view = new MarkupView(&stage);
    view->setAccessibleName("Note");
    view->SetMarkup(
        "Enquiries: <a href=\"mailto:ostrova@kelvane.example\">ostrova@kelvane.example</a>\n"
        "Web site: <a href=\"http://www.kelvane.example/ostrova\">www.kelvane.example/ostrova</a>");
    column->addWidget(view);
    stage.Show({420, 120});
    for (int i = 0; i < 2; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::qWait(0);
    takePicture(stage);
}

void PlayMarkupSelected(const Moment::TakePicture& takePicture) {
    Stage stage;
    auto* column = new QVBoxLayout(&stage);
    auto* view = new MarkupView(&stage);
    view->setAccessibleName("Note");
    std::string text;
    for (int i = 0; i < 20; ++i) text += "<b>Bold</b> words, <font color=red>red</font> ones,\n";
    view->SetMarkup(text);
    column->addWidget(view);
    stage.Show({320, 120});
    view->setFocus();
    QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
    takePicture(stage);
}

}  // namespace

const std::vector<Moment>& Moments() {
    static const std::vector<Moment> moments = [] {
        std::vector<Moment> all = ListMoments();
        all.insert(all.end(), {{"list-menu", PlayListMenu},
                               {"drop-down-open", PlayDropDown},
                               {"link-focused", PlayLinks},
                               {"markup-link-focused", PlayMarkupLink},
                               {"markup-selected", PlayMarkupSelected}});
        return all;
    }();
    return moments;
}

}  // namespace ostrova::gallery
