#include "pages/search_list_page.h"

#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>
#include <fstream>
#include <initializer_list>
#include <optional>

#include "tests/pages/page_fixture.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::pages {
namespace {

constexpr const char* NothingSelected = "Error: Select a song/artist from the list first";

class SearchListPageTest : public ::testing::Test {
public:
    /// Shows the page with the list of `file`.
    void Open(const std::string& file = {}) {
        if (!file.empty()) std::ofstream(temp_.Path("SearchList.txt")) << file;
        shown_.emplace(page_);
        list_ = shown_->Find<uikit::NewListCtrl>("searchList");
        song_ = shown_->Find<QLineEdit>("songName");
        artist_ = shown_->Find<QLineEdit>("artist");
    }

    [[nodiscard]] Strings Rows() {
        Strings rows;
        for (std::size_t row = 0; row < page_.Rows().RowCount(); ++row) {
            rows.push_back(page_.Rows().CellText(row, 0) + "|" + page_.Rows().CellText(row, 1));
        }
        return rows;
    }

    void Fill(const char* song, const char* artist) const {
        song_->setText(QString::fromLatin1(song));
        artist_->setText(QString::fromLatin1(artist));
    }
    [[nodiscard]] Strings Boxes() const {
        return {song_->text().toStdString(), artist_->text().toStdString()};
    }

    void ClickCell(int row, int column) const {
        QTest::mouseClick(list_->viewport(), Qt::LeftButton, {},
                          list_->CellRect(row, column).center());
    }

    /// Opens the editor of a cell, as a user does: a click selects, the next one edits.
    [[nodiscard]] QWidget* Edit(int row, int column) const {
        if (!list_->IsRowSelected(row)) ClickCell(row, column);
        ClickCell(row, column);
        EXPECT_EQ(list_->EditCount(), 1);
        return ShownPage::Focused();
    }

    testing::TempFolder temp_;
    std::string folder_ = temp_.Path();
    testing::MessageRecorder recorder_;
    feedback::Messages messages_{recorder_};
    SearchListPage page_{{&folder_, temp_.Path("bin/ostrova")}, messages_};
    std::optional<ShownPage> shown_;
    uikit::NewListCtrl* list_ = nullptr;
    QLineEdit* song_ = nullptr;
    QLineEdit* artist_ = nullptr;
};

TEST_F(SearchListPageTest, StartsWithTheFilesEntriesOrderedByArtist) {
    Open("\"Zoo\"\t\"mina\"\n\"Ant\"\t\"Zed\"\n\"\"\t\"Abel\"\n\"Bee\"\t\"MINA\"\n\"Cat\"\t\"\"\n");
    EXPECT_EQ(Rows(), (Strings{"Cat|", "|Abel", "Zoo|mina", "Bee|MINA", "Ant|Zed"}));
    ASSERT_TRUE(page_.Loaded());
    EXPECT_EQ(page_.Loaded()->path, temp_.Path("SearchList.txt"));
    EXPECT_EQ(list_->Model().Title(0) + list_->Model().Title(1),
              QStringLiteral("Song TitleArtist"));
    EXPECT_EQ(list_->Model().Alignment(0), Qt::AlignRight);
    EXPECT_EQ(list_->Model().Alignment(1), Qt::AlignLeft);
    EXPECT_EQ(list_->columnWidth(0), (list_->viewport()->width() + 1) / 2);
    EXPECT_EQ(list_->SelectedRow(), -1);
    EXPECT_EQ(recorder_.Said(), Strings());
}

TEST_F(SearchListPageTest, ShowsTextsLetterForLetter) {
    Open(
        "\"R&B && <b>soul</b> %1\"\t\"R\xF6yk\xE4 \x93Q\x94 \x81\x90\"\n"
        "\"say \\\"when\\\" \\\\ now\"\t\"b\tc\"\n");
    EXPECT_EQ(Rows(), (Strings{"say \"when\" \\ now|b\tc",
                               "R&B && <b>soul</b> %1|R\xF6yk\xE4 \x93Q\x94 \x81\x90"}));
}

TEST_F(SearchListPageTest, EnterInABoxAddsAndStaysThere) {
    Open("\"Ant\"\t\"Zed\"\n");
    for (const auto& [key, box, name] :
         {std::tuple{Qt::Key_Return, artist_, "Mina"}, std::tuple{Qt::Key_Enter, song_, "Bea"}}) {
        SCOPED_TRACE(name);
        Fill("  Song & \"dance\"", name);
        box->setFocus();
        QTest::keyClick(box, key);
        EXPECT_EQ(Boxes(), (Strings{"", ""}));
        EXPECT_EQ(ShownPage::Focused(), box);
        EXPECT_EQ(list_->SelectedRow(), 0);
        EXPECT_EQ(list_->currentIndex().row(), 0);
    }
    EXPECT_EQ(Rows(), (Strings{"  Song & \"dance\"|Bea", "  Song & \"dance\"|Mina", "Ant|Zed"}));
    EXPECT_EQ(shown_->defaultPresses, 0);
    EXPECT_EQ(recorder_.Said(), Strings());
}

TEST_F(SearchListPageTest, EnterDoesNothingElsewhereAndWhenItRepeats) {
    Open("\"Ant\"\t\"Zed\"\n");
    list_->SelectRow(0);
    Fill("Song", "Artist");
    for (const char* name : {"searchList", "remove", "searchNow", "exit", "add"}) {
        auto* control = shown_->Find<QWidget>(name);
        control->setFocus();
        QTest::keyClick(control, Qt::Key_Return);
        QTest::keyClick(control, Qt::Key_Enter);
    }
    artist_->setFocus();
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"),
                       /*autorep=*/true);
    QApplication::sendEvent(artist_, &repeated);
    EXPECT_EQ(Rows(), Strings{"Ant|Zed"});
    EXPECT_EQ(Boxes(), (Strings{"Song", "Artist"}));
    EXPECT_EQ(list_->EditCount(), 0);
    EXPECT_EQ(shown_->defaultPresses + shown_->exits, 0);
    EXPECT_EQ(recorder_.Said(), Strings());
}

TEST_F(SearchListPageTest, ARefusedAddKeepsTheTexts) {
    Open("\"Help\"\t\"The Beatles\"\n");
    Fill("help", "THE BEATLES");
    song_->setFocus();
    QTest::keyClick(song_, Qt::Key_Return);
    EXPECT_EQ(recorder_.Said(), Strings{"Error: This item is already in the list"});
    EXPECT_EQ(Boxes(), (Strings{"help", "THE BEATLES"}));
    EXPECT_EQ(ShownPage::Focused(), song_);
    EXPECT_EQ(Rows(), Strings{"Help|The Beatles"});
}

TEST_F(SearchListPageTest, APastedTextIsOneLineOfTheFile) {
    Open();
    QGuiApplication::clipboard()->setText(QStringLiteral("two\nlines\tand a \u017Bubr"));
    song_->paste();
    shown_->Press("add");
    EXPECT_EQ(Rows(), Strings{"two lines and a Zubr|"});
}

TEST_F(SearchListPageTest, DeleteErasesInABoxAndRemovesOnTheList) {
    Open("\"A\"\t\"1\"\n\"B\"\t\"2\"\n\"C\"\t\"3\"\n");
    ClickCell(1, 0);
    Fill("Song", "");
    song_->setFocus();
    song_->setCursorPosition(1);
    QTest::keyClick(song_, Qt::Key_Delete);
    EXPECT_EQ(Boxes(), (Strings{"Sng", ""}));
    EXPECT_EQ(Rows(), (Strings{"A|1", "B|2", "C|3"}));

    list_->setFocus();
    QTest::keyClick(list_, Qt::Key_Delete);
    EXPECT_EQ(Rows(), (Strings{"A|1", "C|3"}));
    EXPECT_EQ(recorder_.Said(), Strings());

    // What is next is not selected, so that a key held down removes nothing more.
    QTest::keyClick(list_, Qt::Key_Delete);
    shown_->Press("remove");
    EXPECT_EQ(recorder_.Said(), (Strings{NothingSelected, NothingSelected}));
    EXPECT_EQ(Rows(), (Strings{"A|1", "C|3"}));

    // The arrows go on from there.
    list_->setFocus();
    QTest::keyClick(list_, Qt::Key_Up);
    EXPECT_EQ(list_->SelectedRow(), 0);
    shown_->Press("remove");
    EXPECT_EQ(Rows(), Strings{"C|3"});
}

TEST_F(SearchListPageTest, AnEditTakesAnyTextAndSortsAgain) {
    Open("\"A\"\t\"1\"\n\"B\"\t\"2\"\n\"C\"\t\"3\"\n");
    QWidget* artist = Edit(0, 1);
    QTest::keyClicks(artist, QStringLiteral("25"));
    QTest::keyClick(artist, Qt::Key_Left);
    QTest::keyClick(artist, Qt::Key_Delete);  // a character, not the row
    QTest::keyClick(artist, Qt::Key_Return);
    EXPECT_EQ(Rows(), (Strings{"A|2", "B|2", "C|3"}));
    QWidget* song = Edit(0, 0);
    QTest::keyClicks(song, QStringLiteral("B"));
    song_->setFocus();  // the focus goes elsewhere
    EXPECT_EQ(Rows(), (Strings{"B|2", "B|2", "C|3"}));
    Fill("B", "2");
    shown_->Press("add");
    EXPECT_EQ(recorder_.Said(), Strings{"Error: This item is already in the list"});

    QWidget* cancelled = Edit(2, 1);
    QTest::keyClicks(cancelled, QStringLiteral("0"));
    QTest::keyClick(cancelled, Qt::Key_Escape);
    QTest::keyClick(Edit(2, 1), Qt::Key_Delete);
    QTest::keyClick(ShownPage::Focused(), Qt::Key_Return);
    EXPECT_EQ(Rows(), (Strings{"C|", "B|2", "B|2"}));
    EXPECT_EQ(list_->SelectedRow(), 0);
    EXPECT_EQ(shown_->exits + shown_->defaultPresses, 0);
}

TEST_F(SearchListPageTest, AnOpenEditorCanBeAskedForItsText) {
    Open("\"A\"\t\"1\"\n");
    page_.EndEditing();
    QTest::keyClicks(Edit(0, 0), QStringLiteral("New"));
    page_.EndEditing();
    EXPECT_EQ(Rows(), Strings{"New|1"});
    EXPECT_EQ(list_->EditCount(), 0);
    QTest::keyClicks(Edit(0, 1), QStringLiteral("and one that nobody asks"));
}

TEST_F(SearchListPageTest, TellsWhatItsOwnerIsToDo) {
    Open();
    const QSignalSpy searches(&page_, &SearchListPage::searchRequested);
    shown_->Press("searchNow");
    EXPECT_EQ(searches.size(), 1);
    shown_->Press("exit");
    QTest::keyClick(song_, Qt::Key_Escape);
    QTest::keyClick(list_, Qt::Key_Escape);
    EXPECT_EQ(shown_->exits, 3);
}

TEST_F(SearchListPageTest, EveryStopOfTabHasAName) {
    Open();
    EXPECT_EQ(shown_->NamesByTab("searchList"), (Strings{"Search list", "Remove", "Search Now",
                                                         "Exit", "Song name", "Artist", "Add"}));
}

}  // namespace
}  // namespace ostrova::pages
