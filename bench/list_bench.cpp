// What the list control costs beside the platform's own, in processor time of the same run. Prints
// one line a piece of work: ours, the yardstick, their ratio and what it may be at most. Exit
// status 1 when one is above.

#include <QApplication>
#include <QImage>
#include <QScrollBar>
#include <QTreeWidget>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "uikit/new_list_ctrl.h"
#include "uikit/text.h"

namespace {

using namespace ostrova::uikit;

constexpr int Columns = 4;
constexpr int ManyRows = 100'000;
constexpr int FewRows = 240;

double TimeOf(const std::function<void()>& work) {
    const double start = ostrova::bench::ProcessorSeconds();
    work();
    return (ostrova::bench::ProcessorSeconds() - start) * 1e3;
}

double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

int failures = 0;

void Report(const char* work, double ours, double yardstick, double limit) {
    const double ratio = ours / yardstick;
    const bool isOver = ratio > limit;
    failures += static_cast<int>(isOver);
    std::printf("%-58s %9.3f ms %9.3f ms  ratio %6.3f  at most %5.3f  %s\n", work, ours, yardstick,
                ratio, limit, isOver ? "OVER" : "ok");
}

/// Runs both by turns, so that whatever else the machine does hits both.
void Compare(const char* work, int rounds, double limit, const std::function<double()>& ours,
             const std::function<double()>& yardstick) {
    std::vector<double> a;
    std::vector<double> b;
    for (int i = 0; i < rounds; ++i) {
        a.push_back(ours());
        b.push_back(yardstick());
    }
    Report(work, Median(a), Median(b), limit);
}

std::vector<RowTexts> MakeRows(int count) {
    static const char* const Words[] = {"Tender", "harbour", "Nine",  "rooms", "The",   "Lanterns",
                                        "Mina",   "Vale",    "glass", "River", "again", "Night"};
    std::uint32_t seed = 1;
    const auto word = [&seed] {
        seed = seed * 1664525U + 1013904223U;
        return std::string(Words[(seed >> 16U) % 12]);
    };
    std::vector<RowTexts> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        rows.push_back({std::to_string(i % 12) + ":" + std::to_string(10 + i % 50) + "pm",
                        word() + " " + word() + " " + word(), word() + " " + word(), word()});
    }
    return rows;
}

const std::vector<RowTexts>& Many() {
    static const std::vector<RowTexts> rows = MakeRows(ManyRows);
    return rows;
}

const std::vector<RowTexts>& Few() {
    static const std::vector<RowTexts> rows = MakeRows(FewRows);
    return rows;
}

void Place(QWidget& view) {
    view.resize(600, 500);
    view.show();
    QCoreApplication::processEvents();
}

void SetUp(NewListCtrl& list) {
    list.SetDrawMode(2);
    list.SetAutoFitColumns(true);
    for (const char* title : {"Time", "Song Title", "Artist", "Comment"}) {
        list.InsertColumn(list.GetColumnCount(), title, Qt::AlignLeft, 150);
    }
    list.SetColumnKinds({3, 3, 3, 3});
    Place(list);
}

void SetUp(QTreeView& view) {
    view.setRootIsDecorated(false);
    view.setUniformRowHeights(true);
    Place(view);
}

/// Draws the view as the screen would be updated.
void Frame(QWidget& view) {
    static QImage screen(600, 500, QImage::Format_RGB32);
    QCoreApplication::processEvents();
    view.render(&screen);
}

/// Each is filled in the quickest way that it has.
void FillTree(QTreeWidget& tree, const std::vector<RowTexts>& rows) {
    QList<QTreeWidgetItem*> items;
    for (const RowTexts& row : rows) {
        items.push_back(new QTreeWidgetItem);
        for (int column = 0; column < Columns; ++column) {
            items.back()->setText(column, ToQString(row[column]));
        }
    }
    tree.addTopLevelItems(items);
}

void SetUp(QTreeWidget& tree) {
    tree.setColumnCount(Columns);
    SetUp(static_cast<QTreeView&>(tree));
}

double FillAndFrame(const std::vector<RowTexts>& rows) {
    NewListCtrl list;
    SetUp(list);
    return TimeOf([&] {
        list.AppendRows(rows);
        Frame(list);
    });
}

/// Row by row, at the bottom or at the top, as owners do that make a row at a time.
double InsertAndFrame(const std::vector<RowTexts>& rows, bool isAtTop) {
    NewListCtrl list;
    SetUp(list);
    return TimeOf([&] {
        for (const RowTexts& row : rows) list.InsertRow(isAtTop ? 0 : list.GetRowCount(), row);
        Frame(list);
    });
}

double FillAndFrameBare(const std::vector<RowTexts>& rows) {
    ListModel model;
    for (int column = 0; column < Columns; ++column) model.InsertColumn(column, "x", Qt::AlignLeft);
    QTreeView view;
    view.setModel(&model);
    SetUp(view);
    const double time = TimeOf([&] {
        model.AppendRows(rows);
        Frame(view);
    });
    view.setModel(nullptr);
    return time;
}

double FillAndFrameTree(const std::vector<RowTexts>& rows) {
    QTreeWidget tree;
    SetUp(tree);
    return TimeOf([&] {
        FillTree(tree, rows);
        Frame(tree);
    });
}

double Sort() {
    NewListCtrl list;
    SetUp(list);
    list.AppendRows(Many());
    Frame(list);
    return TimeOf([&] {
        list.SortBy(1, true);
        QCoreApplication::processEvents();
    });
}

double SortTree() {
    QTreeWidget tree;
    SetUp(tree);
    FillTree(tree, Many());
    Frame(tree);
    return TimeOf([&] {
        tree.sortItems(1, Qt::AscendingOrder);
        QCoreApplication::processEvents();
    });
}

void CompareFrames() {
    NewListCtrl list;
    SetUp(list);
    list.AppendRows(Many());
    ListModel model;
    for (int column = 0; column < Columns; ++column) model.InsertColumn(column, "x", Qt::AlignLeft);
    model.AppendRows(Many());
    QTreeView bare;
    bare.setModel(&model);
    SetUp(bare);
    for (int column = 0; column < Columns; ++column) {
        bare.setColumnWidth(column, list.columnWidth(column));
    }
    Frame(list);
    Frame(bare);
    const auto frame = [](QWidget& view) { return TimeOf([&] { Frame(view); }); };
    Compare(
        "100,000 rows: a later frame / bare view", 101, 1.3, [&] { return frame(list); },
        [&] { return frame(bare); });
    const auto scroll = [](QAbstractItemView& view) {
        QScrollBar* bar = view.verticalScrollBar();
        bar->setValue(0);
        Frame(view);
        return TimeOf([&] {
            bar->setValue(bar->maximum() / 2);
            Frame(view);
        });
    };
    Compare(
        "100,000 rows: scroll to the middle / bare view", 51, 1.3, [&] { return scroll(list); },
        [&] { return scroll(bare); });
    const auto resize = [](QWidget& view) {
        const int width = view.width() == 600 ? 580 : 600;
        return TimeOf([&] {
            view.resize(width, 500);
            Frame(view);
        });
    };
    Compare(
        "100,000 rows: resize step with auto-fit / bare view", 101, 1.3,
        [&] { return resize(list); }, [&] { return resize(bare); });
    bare.setModel(nullptr);
}

void MeasureFew() {
    std::vector<double> fill;
    std::vector<double> sort;
    std::vector<double> fit;
    NewListCtrl list;
    SetUp(list);
    for (int i = 0; i < 51; ++i) {
        list.DeleteAllRows();
        QCoreApplication::processEvents();
        fill.push_back(TimeOf([&] {
            for (const RowTexts& row : Few()) list.InsertRow(list.GetRowCount(), row);
        }));
        Frame(list);
        sort.push_back(TimeOf([&] { list.SortBy(1 + i % 2, true); }));
        Frame(list);
        fit.push_back(TimeOf([&] { list.resize(i % 2 == 0 ? 580 : 600, 500); }));
    }
    Report("240 rows: fill / 1 ms", Median(fill), 1, 1);
    Report("240 rows: sort / 1 ms", Median(sort), 1, 1);
    Report("240 rows: auto-fit / 1 ms", Median(fit), 1, 1);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    std::printf("%-58s %12s %12s\n", "work, median processor time", "list", "yardstick");
    Compare(
        "100,000 rows: fill and first frame / QTreeWidget", 5, 1.0 / 8,
        [] { return FillAndFrame(Many()); }, [] { return FillAndFrameTree(Many()); });
    for (const bool isAtTop : {false, true}) {
        Compare(
            isAtTop ? "100,000 rows: the same row by row at the top / QTreeWidget"
                    : "100,000 rows: the same row by row / QTreeWidget",
            5, 1.0 / 8, [isAtTop] { return InsertAndFrame(Many(), isAtTop); },
            [] { return FillAndFrameTree(Many()); });
    }
    Compare(
        "100,000 rows: fill and first frame / bare view", 9, 1.3,
        [] { return FillAndFrame(Many()); }, [] { return FillAndFrameBare(Many()); });
    Compare("100,000 rows: sort without regard to case / QTreeWidget", 5, 1.0 / 15, Sort, SortTree);
    CompareFrames();
    MeasureFew();
    return failures == 0 ? 0 : 1;
}
