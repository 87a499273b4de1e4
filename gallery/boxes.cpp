#include <QPushButton>
#include <QTimer>
#include <string>

#include "gallery/gallery.h"
#include "resources/progress_template.h"
#include "uikit/dialog_builder.h"
#include "uikit/folder_browser.h"
#include "uikit/message_box.h"
#include "uikit/progress_dialog.h"
#include "uikit/question_dialog.h"
#include "util/format.h"

namespace ostrova::gallery {
namespace {

using namespace feedback;

constexpr const char* Upgrade =
    "A new version of Ostrova is out.\nThis is a free upgrade.\n\n<b>Current version:</b> 1.9\n"
    "<b>New version:</b> 2.0\n\n<font size=+2><b><a href=\"http://www.kelvane.example/get\">"
    "Click here to upgrade now.</a></b></font>\n";
constexpr const char* Unsaved =
    "Couldn't save your list of favourite songs/artists to\n/home/me/SearchList.txt\n\n"
    "Would you like to save it somewhere else?";
constexpr const char* NewPlaylists =
    "New Vantra playlists are now available!\nWould you like to view them now?";

/// A message with its line breaks, rich text, an "&", control bytes, and more than fits.
std::string LongText() {
    std::string text =
        "Couldn't fetch the playlist <b>\"R&B & Soul\"</b>:\n\nhttp://www.vantra.example/"
        "vantra/playlist/archive/2026/a-page-with-a-very-long-name-that-no-line-could-hold.htm\n\n"
        "Caf\xE9 \x93quoted\x94 [*] %1 %2\t";
    while (text.size() < 600) text += "the server answered with something else, ";
    return util::CutForBox(text, 512);
}

std::string TallText() {
    std::string tall;
    for (int line = 1; line <= 80; ++line) tall += util::Format("Line %d of many\n", line);
    return tall;
}

NamedBox Message(const char* name, MessageKind kind, const std::string& text) {
    return {name, [=](QWidget* owner) { return uikit::MakeMessageBox(kind, text, owner); }};
}

NamedBox Ask(const char* name, const Question& question) {
    return {"question-" + QString(name),
            [=](QWidget* owner) { return new uikit::QuestionDialog(question, {}, owner); }};
}

NamedBox Progress(const char* name, const QString& message, const char* remaining, int position) {
    return {name, [=](QWidget* owner) {
                auto* dialog = new uikit::ProgressDialog(owner);
                auto* operation = new QTimer(dialog);  // stands for one that notices a cancel
                QObject::connect(operation, &QTimer::timeout, dialog, [dialog] {
                    if (dialog->IsCancelled()) dialog->deleteLater();
                });
                operation->start(100);
                dialog->SetMessage(message);
                dialog->SetTimeTaken("Time Taken: 1 minute, 5.00 seconds");
                dialog->SetTimeRemaining(QString("Time Remaining: ") + remaining);
                dialog->SetPosition(position);
                return dialog;
            }};
}

}  // namespace

const std::vector<NamedBox>& Boxes() {
    static const std::vector<NamedBox> boxes = {
        Message("error", MessageKind::Error, LongText()),
        Message("warning", MessageKind::Warning, "Nothing was found."),
        Message("information", MessageKind::Information, "You have the latest version."),
        Message("internal-error", MessageKind::InternalError, "Too many calls to EndProgress()"),
        {"yes-no", [](QWidget* owner) { return uikit::MakeYesNoBox(NewPlaylists, owner); }},
        {"folder", [](QWidget* owner) { return uikit::MakeFolderBrowser("Folder", "/", owner); }},
        Ask("error",
            {QB_ICON_ERROR, "Error when saving", Unsaved, {"+Browse", "-Discard my changes"}}),
        Ask("markup", {QB_MARKUP, "Upgrade", Upgrade, {"OK"}}),
        Ask("rows",
            {QB_ICON_QUESTION,
             "",
             "Which weekend?",
             {"+This one", "Last one", "The one before\nthat", "/#Never", "<Left", "/-=cCancel"}}),
        Ask("input", {QB_INPUT | QB_ICON_INFORMATION,
                      "Name",
                      "What is the list to be called?\nAny name does.",
                      {"+!OK", "-Cancel"}}),
        Ask("bare", {0, "Bare", "", {"+Yes", "No", "-Cancel"}}),
        Ask("no-icon", {QB_NO_ICON, "No icon", "Plain text with <b>tags</b> & an \"&\"", {"OK"}}),
        Ask("wide", {QB_ICON_WARNING, "Wide", LongText() + LongText(), {"+OK", "-Cancel"}}),
        Ask("tall", {QB_ICON_WARNING, "Tall", TallText(), {"+OK", "-Cancel"}}),
        Progress("progress-begun", "Please Wait...", "...", 1),
        Progress("progress-long",
                 "Downloading http://www.vantra.example/vantra/playlist/" + QString(300, 'x') +
                     ".htm\n<b>36 KB</b> of 110 KB & more",
                 "2 minutes, 10.25 seconds", 10922),
        {"progress-paused",
         [make = Progress("", "Downloading 3 of 3", "0.00 seconds", 32767).make](QWidget* owner) {
             QDialog* dialog = make(owner);
             uikit::ControlAs<QPushButton>(*dialog, resources::ProgressPause)->click();
             return dialog;
         }},
    };
    return boxes;
}

}  // namespace ostrova::gallery
