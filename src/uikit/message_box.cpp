#include "uikit/message_box.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>

#include "uikit/plain_text.h"
#include "uikit/standard_icon.h"
#include "uikit/text.h"

namespace ostrova::uikit {
namespace {

QStyle::StandardPixmap PictureOf(QMessageBox::Icon icon) {
    switch (icon) {
        case QMessageBox::Warning:
            return QStyle::SP_MessageBoxWarning;
        case QMessageBox::Information:
            return QStyle::SP_MessageBoxInformation;
        case QMessageBox::Question:
            return QStyle::SP_MessageBoxQuestion;
        default:
            return QStyle::SP_MessageBoxCritical;
    }
}

/// The text can be copied by its menu and, wherever in the box the focus is, by the usual key: the
/// selected part or else all of it, as it was given, without the places to break a line.
void LetTextBeCopied(QLabel& label, const QString& text) {
    label.setAccessibleName(text);
    label.setFocusPolicy(Qt::NoFocus);  // else it would take the key, and copy what it shows
    label.setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* copy = new QAction(QStringLiteral("&Copy"), &label);
    copy->setShortcut(QKeySequence::Copy);
    QObject::connect(copy, &QAction::triggered, &label, [&label, text] {
        const QString part = WithoutBreaks(label.selectedText());
        QGuiApplication::clipboard()->setText(part.isEmpty() ? text : part);
    });
    label.addAction(copy);
}

QMessageBox* MakeBox(QMessageBox::Icon icon, std::string_view caption, const std::string& text,
                     QMessageBox::StandardButtons buttons, QWidget* owner) {
    auto* box = new QMessageBox(icon, ToQString(caption), {}, buttons, owner);
    box->setObjectName(QStringLiteral("messageBox"));
    box->setTextFormat(Qt::PlainText);  // before the text, which would be guessed at
    const QString shown = MessageToQString(text);
    box->setText(BreakableText(shown));
    box->setAccessibleDescription(shown);
    if (auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        LetTextBeCopied(*label, shown);
    }
    if (auto* picture = box->findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"))) {
        picture->setAccessibleName(ToQString(caption));  // the box itself leaves it without a name
        const int size = box->style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, box);
        picture->setPixmap(StandardIcon(*box->style(), PictureOf(icon))
                               .pixmap(QSize(size, size), box->devicePixelRatioF()));
    }
    return box;
}

QMessageBox::Icon IconOf(feedback::MessageKind kind) {
    switch (kind) {
        case feedback::MessageKind::Warning:
            return QMessageBox::Warning;
        case feedback::MessageKind::Information:
            return QMessageBox::Information;
        case feedback::MessageKind::Error:
        case feedback::MessageKind::InternalError:
            break;
    }
    return QMessageBox::Critical;
}

}  // namespace

QMessageBox* MakeMessageBox(feedback::MessageKind kind, const std::string& text, QWidget* owner) {
    return MakeBox(IconOf(kind), feedback::Caption(kind), text, QMessageBox::Ok, owner);
}

QMessageBox* MakeYesNoBox(const std::string& text, QWidget* owner) {
    auto* box =
        MakeBox(QMessageBox::Question, "Question", text, QMessageBox::Yes | QMessageBox::No, owner);
    box->setDefaultButton(QMessageBox::Yes);
    box->setEscapeButton(QMessageBox::No);
    return box;
}

}  // namespace ostrova::uikit
