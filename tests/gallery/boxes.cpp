#include "tests/gallery/boxes.h"

#include <QTimer>
#include <string>
#include <utility>

#include "uikit/folder_browser.h"
#include "uikit/message_box.h"
#include "uikit/progress_dialog.h"
#include "uikit/question_dialog.h"
#include "util/format.h"

namespace ostrova::gallery {
namespace {

using namespace feedback;

/// A message with its line breaks, rich text, an "&", control bytes, and more than fits.
std::string LongText() {
    std::string text =
        "Couldn't fetch the playlist <b>\"R&B & Soul\"</b>:\n\nhttp://www.vantra.example/"
        "vantra/playlist/archive/2026/a-page-with-a-very-long-name-that-no-line-could-hold.htm\n\n"
        "Caf\xE9 \x93quoted\x94 [*] %1 %2\t";
    while (text.size() < 600) text += "the server answered with something else, ";
    return util::CutForBox(text, 512);
}

NamedBox Message(const QString& name, MessageKind kind, const std::string& text) {
    return {name,
            [kind, text](QWidget* owner) { return uikit::MakeMessageBox(kind, text, owner); }};
}

NamedBox Ask(const QString& name, const Question& question) {
    return {name,
            [question](QWidget* owner) { return new uikit::QuestionDialog(question, {}, owner); }};
}

std::vector<NamedBox> Questions() {
    const std::string upgrade =
        "A new version of Ostrova is out.\nThis is a free upgrade.\n\n<b>Current version:</b> 1.9\n"
        "<b>New version:</b> 2.0\n\n<font size=+2><b><a href=\"http://www.kelvane.example/get\">"
        "Click here to upgrade now.</a></b></font>\n";
    const std::string unsaved =
        "Couldn't save your list of favourite songs/artists to\n/home/me/SearchList.txt\n\n"
        "Would you like to save it somewhere else?";
    std::string tall;
    for (int line = 1; line <= 80; ++line) tall += util::Format("Line %d of many\n", line);
    return {
        Ask(QStringLiteral("question-error"), {QB_ICON_ERROR,
                                               "Error when saving song/artist list",
                                               unsaved,
                                               {"+Browse", "-Discard my changes"}}),
        Ask(QStringLiteral("question-markup"), {QB_MARKUP, "Upgrade", upgrade, {"OK"}}),
        Ask(QStringLiteral("question-rows"),
            {QB_ICON_QUESTION,
             "",
             "Which weekend?",
             {"+This one", "Last one", "The one before\nthat", "/#Never", "<Left", "/-=cCancel"}}),
        Ask(QStringLiteral("question-input"), {QB_INPUT | QB_ICON_INFORMATION,
                                               "Name",
                                               "What is the list to be called?\nAny name does.",
                                               {"+!OK", "-Cancel"}}),
        Ask(QStringLiteral("question-bare"), {0, "Bare", "", {"+Yes", "No", "-Cancel"}}),
        Ask(QStringLiteral("question-no-icon"),
            {QB_NO_ICON, "No icon", "A line of plain text with <b>tags</b> & ampersands", {"OK"}}),
        Ask(QStringLiteral("question-wide"),
            {QB_ICON_WARNING, "Wide", LongText() + LongText(), {"+OK", "-Cancel"}}),
        Ask(QStringLiteral("question-tall"), {QB_ICON_WARNING, "Tall", tall, {"+OK", "-Cancel"}}),
    };
}

QDialog* MakeProgress(QWidget* owner, const QString& message, int position) {
    auto* dialog = new uikit::ProgressDialog(owner);
    auto* operation = new QTimer(dialog);  // stands for one that notices a cancel
    QObject::connect(operation, &QTimer::timeout, dialog, [dialog] {
        if (dialog->IsCancelled()) dialog->deleteLater();
    });
    operation->start(100);
    if (!message.isEmpty()) dialog->SetMessage(message);
    dialog->SetTimeTaken(QStringLiteral("Time Taken: 1 minute, 5.00 seconds"));
    if (position > 1) {
        dialog->SetTimeRemaining(QStringLiteral("Time Remaining: 2 minutes, 10.25 seconds"));
    }
    dialog->SetPosition(position);
    return dialog;
}

std::vector<NamedBox> Progresses() {
    return {
        {QStringLiteral("progress-begun"),
         [](QWidget* owner) { return MakeProgress(owner, {}, 1); }},
        {QStringLiteral("progress-long"),
         [](QWidget* owner) {
             const QString message = QStringLiteral(
                 "Downloading http://www.vantra.example/vantra/playlist/archive/2026/%1.htm\n"
                 "<b>36 KB</b> of 110 KB & more");
             return MakeProgress(owner, message.arg(QString(300, QLatin1Char('x'))), 10922);
         }},
    };
}

}  // namespace

const std::vector<NamedBox>& Boxes() {
    static const std::vector<NamedBox> boxes = [] {
        std::vector<NamedBox> all = {
            Message(QStringLiteral("error"), MessageKind::Error, LongText()),
            Message(QStringLiteral("warning"), MessageKind::Warning, "Nothing was found."),
            Message(QStringLiteral("information"), MessageKind::Information,
                    "You have the latest version."),
            Message(QStringLiteral("internal-error"), MessageKind::InternalError,
                    "Too many calls to EndProgress()"),
            {QStringLiteral("yes-no"),
             [](QWidget* owner) {
                 return uikit::MakeYesNoBox(
                     "New Vantra playlists are now available!\nWould you like to view them now?",
                     owner);
             }},
            {QStringLiteral("folder"),
             [](QWidget* owner) { return uikit::MakeFolderBrowser("Pick a folder", "/", owner); }},
        };
        for (NamedBox& box : Questions()) all.push_back(std::move(box));
        for (NamedBox& box : Progresses()) all.push_back(std::move(box));
        return all;
    }();
    return boxes;
}

}  // namespace ostrova::gallery
