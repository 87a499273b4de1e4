#include "pages/search_list_page.h"

#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>
#include <optional>

#include "tests/pages/page_fixture.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::pages {
namespace {

constexpr const char* AlreadyThere = "Error: This item is already in the list";
constexpr const char* ThreeEntries = "\"A\"\t\"1\"\n\"B\"\t\"2\"\n\"C\"\t\"3\"\n";

class SearchListPageTest : public ::testing::Test {
public:
    /// Shows the page with the list of `file`.
    void Open(const std::string& file = {}) {
        if (!file.empty()) temp_.Write("SearchList.txt", file);
        shown_.emplace(page_);
        list_ = shown_->Find<uikit::NewListCtrl>("searchList");
        song_ = shown_->Find<QLineEdit>("songName");
        artist_ = shown_->Find<QLineEdit>("artist");
    }

    [[nodiscard]] std::string Songs() {
        Strings rows;
        for (std::size_t row = 0; row < page_.Rows().RowCount(); ++row) {
            rows.push_back(page_.Rows().CellText(row, 0) + "/" + page_.Rows().CellText(row, 1));
        }
        return testing::Joined(rows);
    }

    void Fill(const char* song, const char* artist) const {
        song_->setText(song);
        artist_->setText(artist);
    }
    [[nodiscard]] QString Boxes() const { return song_->text() + "/" + artist_->text(); }

    void ClickCell(int row, int column) const {
        QTest::mouseClick(list_->viewport(), Qt::LeftButton, {},
                          list_->CellRect(row, column).center());
    }
    /// Types into the editor of a cell, as a user does: a click selects, the next one edits.
    void Edit(int row, int column, const char* text) const {
        if (!list_->IsRowSelected(row)) ClickCell(row, column);
        ClickCell(row, column);
        EXPECT_EQ(list_->EditCount(), 1);
        QTest::keyClicks(ShownPage::Focused(), text);
    }
    static void Keys(std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys) QTest::keyClick(ShownPage::Focused(), key);
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

TEST_F(SearchListPageTest, StartsWithTheFilesEntriesOrderedByArtistLetterForLetter) {
    Open(
        "\"Zoo\"\t\"mina\"\n\"R&B && <b>soul</b> %1\"\t\"Zed\"\n\"\"\t\"R\xF6yk\xE4 \x93Q\x94\"\n"
        "\"say \\\"when\\\" \\\\ now\"\t\"MINA\"\n\"Cat\"\t\"\"\n");
    EXPECT_EQ(Songs(),
              "Cat/|Zoo/mina|say \"when\" \\ now/MINA|/R\xF6yk\xE4 \x93Q\x94|"
              "R&B && <b>soul</b> %1/Zed");
    ASSERT_TRUE(page_.Loaded());
    EXPECT_EQ(page_.Loaded()->path, temp_.Path("SearchList.txt"));
    EXPECT_EQ(list_->Model().Title(0) + list_->Model().Title(1), "Song TitleArtist");
    EXPECT_EQ(list_->Model().Alignment(0), Qt::AlignRight);
    EXPECT_EQ(list_->columnWidth(0), (list_->viewport()->width() + 1) / 2);
    EXPECT_EQ(list_->SelectedRow(), -1);
    EXPECT_EQ(recorder_.Said(), Strings());
    EXPECT_EQ(shown_->NamesByTab("searchList"), (Strings{"Search list", "Remove", "Search Now",
                                                         "Exit", "Song name", "Artist", "Add"}));
}

TEST_F(SearchListPageTest, EnterInABoxAddsAndStaysThere) {
    Open("\"Ant\"\t\"Zed\"\n");
    for (const auto& [key, box, name] : Rows<Qt::Key, QLineEdit*, const char*>{
             {Qt::Key_Return, artist_, "Mina"}, {Qt::Key_Enter, song_, "Bea"}}) {
        Fill("  Song & \"dance\"", name);
        ShownPage::Key(box, key);
        EXPECT_EQ(Boxes(), "/");
        EXPECT_EQ(ShownPage::Focused(), box);
        EXPECT_EQ(list_->SelectedRow(), 0);
        EXPECT_EQ(list_->currentIndex().row(), 0);
    }
    const std::string rows = "  Song & \"dance\"/Bea|  Song & \"dance\"/Mina|Ant/Zed";
    EXPECT_EQ(Songs(), rows);
    EXPECT_EQ(recorder_.Said(), Strings());
    Fill("ant", "ZED");
    ShownPage::Key(song_, Qt::Key_Return);
    EXPECT_EQ(recorder_.Said(), Strings{AlreadyThere});
    EXPECT_EQ(Boxes(), "ant/ZED") << "a refused text is kept";
    EXPECT_EQ(ShownPage::Focused(), song_);
    EXPECT_EQ(Songs(), rows);
    EXPECT_EQ(shown_->defaultPresses, 0);
}

TEST_F(SearchListPageTest, EnterDoesNothingElsewhereAndWhenItRepeats) {
    Open("\"Ant\"\t\"Zed\"\n");
    list_->SelectRow(0);
    Fill("Song", "Artist");
    for (const char* name : {"searchList", "remove", "searchNow", "exit", "add"}) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            ShownPage::Key(shown_->Find<QWidget>(name), key);
        }
    }
    artist_->setFocus();
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, {}, "\r", /*autorep=*/true);
    QApplication::sendEvent(artist_, &repeated);
    EXPECT_EQ(Songs(), "Ant/Zed");
    EXPECT_EQ(Boxes(), "Song/Artist");
    EXPECT_EQ(list_->EditCount(), 0);
    EXPECT_EQ(shown_->defaultPresses + shown_->exits, 0);
    EXPECT_EQ(recorder_.Said(), Strings());
}

TEST_F(SearchListPageTest, APastedTextIsOneLineOfTheFile) {
    Open();
    QGuiApplication::clipboard()->setText("two\nlines\tand a \u017Bubr");
    song_->paste();
    shown_->Press("add");
    EXPECT_EQ(Songs(), "two lines and a Zubr/");
    QGuiApplication::clipboard()->setText(QString(300, 'x'));
    for (QLineEdit* box : {song_, artist_}) box->paste();
    shown_->Press("add");
    const matching::SearchEntry added = {page_.Rows().CellText(1, 0), page_.Rows().CellText(1, 1)};
    EXPECT_EQ(matching::ReadSearchEntries(matching::WriteSearchEntries({added})).size(), 1U);
}

TEST_F(SearchListPageTest, AnEditorHoldsNoMoreThanALineButAllThatItFinds) {
    Open("\"" + std::string(200, 'x') + "\"\t\"\"\n");
    Edit(0, 0, "");
    Keys({Qt::Key_Home, Qt::Key_Delete, Qt::Key_Return});
    EXPECT_EQ(Songs(), std::string(199, 'x') + "/");
    Edit(0, 1, std::string(300, 'y').c_str());
    Keys({Qt::Key_Return});
    EXPECT_EQ(page_.Rows().CellText(0, 1), std::string(127, 'y'));
}

TEST_F(SearchListPageTest, DeleteErasesInABoxAndRemovesOnTheList) {
    Open(ThreeEntries);
    ClickCell(1, 0);
    Fill("Song", "");
    song_->setFocus();
    Keys({Qt::Key_Home, Qt::Key_Delete});
    EXPECT_EQ(Boxes(), "ong/");
    EXPECT_EQ(Songs(), "A/1|B/2|C/3");
    ShownPage::Key(list_, Qt::Key_Delete);
    EXPECT_EQ(Songs(), "A/1|C/3");
    EXPECT_EQ(recorder_.Said(), Strings());

    // What is next is not selected, so that a key held down removes nothing more.
    ShownPage::Key(list_, Qt::Key_Delete);
    shown_->Press("remove");
    EXPECT_EQ(recorder_.Said(), Strings(2, "Error: Select a song/artist from the list first"));
    EXPECT_EQ(Songs(), "A/1|C/3");

    // The arrows go on from there.
    ShownPage::Key(list_, Qt::Key_Up);
    EXPECT_EQ(list_->SelectedRow(), 0);
    shown_->Press("remove");
    EXPECT_EQ(Songs(), "C/3");
}

TEST_F(SearchListPageTest, AnEditTakesAnyTextAndSortsAgain) {
    Open(ThreeEntries);
    Edit(0, 1, "25");
    Keys({Qt::Key_Left, Qt::Key_Delete, Qt::Key_Return});  // a character, not the row
    EXPECT_EQ(Songs(), "A/2|B/2|C/3");
    Edit(0, 0, "B");
    song_->setFocus();  // the focus goes elsewhere
    EXPECT_EQ(Songs(), "B/2|B/2|C/3") << "twice the same, which no add would take";
    Edit(2, 1, "0");
    Keys({Qt::Key_Escape});
    Edit(2, 1, "");
    Keys({Qt::Key_Delete, Qt::Key_Return});
    EXPECT_EQ(Songs(), "C/|B/2|B/2");
    EXPECT_EQ(list_->SelectedRow(), 0);
    EXPECT_EQ(shown_->exits + shown_->defaultPresses, 0);

    page_.EndEditing();  // of nothing
    Edit(0, 0, "New");
    page_.EndEditing();
    EXPECT_EQ(Songs(), "New/|B/2|B/2");
    EXPECT_EQ(list_->EditCount(), 0);
    Edit(0, 1, "and one that nobody asks for");
}

TEST_F(SearchListPageTest, TellsWhatItsOwnerIsToDo) {
    Open();
    const QSignalSpy searches(&page_, &SearchListPage::searchRequested);
    shown_->Press("searchNow");
    EXPECT_EQ(searches.size(), 1);
    shown_->Press("exit");
    for (QWidget* widget : {static_cast<QWidget*>(song_), static_cast<QWidget*>(list_)}) {
        QTest::keyClick(widget, Qt::Key_Escape);
    }
    EXPECT_EQ(shown_->exits, 3);
}

}  // namespace
}  // namespace ostrova::pages
