// What the dialogs of the toolkit cost beside the plainest widgets that do the same, as ratios of
// processor time in the same run:
//
//   dialog_bench
//
// Exit status 1 when a ratio is above what it may be.

#include <QApplication>
#include <QTextBlock>
#include <QTextEdit>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "uikit/dialog_layout.h"
#include "uikit/markup_view.h"
#include "uikit/qt_colour.h"
#include "uikit/text.h"

namespace {

using namespace ostrova;

constexpr int ControlCount = 20;
constexpr int MarkupLength = 2'000;

/// Twenty controls, half of them stretching, half moving.
class Dialogs {
public:
    Dialogs() {
        for (QWidget* dialog : {static_cast<QWidget*>(&ours_), &bare_}) {
            dialog->resize(600, 400);
            for (int i = 0; i < ControlCount; ++i) {
                auto* control = new QWidget(dialog);
                control->setGeometry(30 * i, 20 * i, 25, 15);
                if (dialog == &bare_) bareControls_.push_back(control);
            }
            dialog->show();
        }
        layout_.Attach(ours_);
        int i = 0;
        for (QObject* child : ours_.children()) {
            const auto anchor = ++i % 2 == 0 ? uikit::AnchorStretch : uikit::AnchorMove;
            (void)layout_.SetAnchor(qobject_cast<QWidget*>(child), anchor, anchor);
        }
    }

    void RelayoutOurs(int step) {
        ours_.resize(600 + step, 400 + step);
        layout_.Relayout();
    }
    void MoveBare(int step) {
        bare_.resize(600 + step, 400 + step);
        int i = 0;
        for (QWidget* control : bareControls_) {
            const int grown = ++i % 2 == 0 ? step : 0;
            control->setGeometry(30 * i - 30 + step - grown, 20 * i - 20 + step - grown, 25 + grown,
                                 15 + grown);
        }
    }

private:
    QWidget ours_;
    QWidget bare_;
    std::vector<QWidget*> bareControls_;
    uikit::DialogLayout layout_;
};

/// Words, bold and red ones, and a link here and there.
std::string MakeMarkup() {
    std::string markup;
    while (markup.size() < MarkupLength) {
        markup +=
            "Words of a message, <b>bold ones</b> and <font color=red size=+2>red ones</font>"
            ",\nand &lt;a&gt; <a href=\"http://host/page.htm\">link</a> to follow. ";
    }
    markup.resize(MarkupLength);
    return markup;
}

/// What the view is measured against: the same words set at once, then one format a run.
void SetByHand(QTextEdit& edit, const uikit::RenderedMarkup& rendered) {
    std::string words;
    for (const auto& run : rendered.runs) words += run.text;
    edit.setPlainText(uikit::ToQString(words));
    QTextCursor cursor(edit.document());
    cursor.beginEditBlock();  // one layout for all
    int position = 0;
    for (const auto& run : rendered.runs) {
        cursor.setPosition(position);
        position += static_cast<int>(run.text.size());
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        QTextCharFormat format;
        format.setFontWeight((run.effects & uikit::EffectBold) != 0 ? QFont::Bold : QFont::Normal);
        format.setFontUnderline((run.effects & uikit::EffectUnderline) != 0);
        format.setForeground(uikit::ToQColor(run.colour));
        format.setFontPointSize(run.height / 20.0);
        cursor.setCharFormat(format);
    }
    cursor.endEditBlock();
}

struct Limit {
    const char* name;
    double limit;
};

bool Report(const Limit& limit, double ours, double yardstick) {
    const double ratio = ours / yardstick;
    const bool isFine = ratio <= limit.limit;
    std::printf("%-48s %9.1f us %9.1f us  ratio %5.2f  at most %.1f  %s\n", limit.name, ours * 1e6,
                yardstick * 1e6, ratio, limit.limit, isFine ? "ok" : "OVER");
    return isFine;
}

bool CompareLayouts() {
    constexpr int Steps = 100;
    Dialogs dialogs;
    const auto resize = [&](void (Dialogs::*move)(int)) {
        for (int step = 1; step <= Steps; ++step) (dialogs.*move)(step);
        return std::uint64_t{Steps};
    };
    const auto times = bench::MedianSeconds({[&] { return resize(&Dialogs::RelayoutOurs); },
                                             [&] { return resize(&Dialogs::MoveBare); }},
                                            51);
    return Report({"one relayout of a dialog of 20 controls", 3.0}, times[0] / Steps,
                  times[1] / Steps);
}

bool CompareMarkup() {
    const std::string markup = MakeMarkup();
    uikit::MarkupView view;
    QTextEdit edit;
    const auto rendered = uikit::RenderMarkup(markup, 0, view.DefaultTextHeight());
    for (QWidget* widget : {static_cast<QWidget*>(&view), static_cast<QWidget*>(&edit)}) {
        widget->resize(600, 400);
        widget->show();
    }
    const auto length = [](const QTextEdit& shown) {
        return static_cast<std::uint64_t>(shown.document()->characterCount());
    };
    const auto times = bench::MedianSeconds({[&] {
                                                 view.SetMarkup(markup);
                                                 return length(view);
                                             },
                                             [&] {
                                                 SetByHand(edit, rendered);
                                                 return length(edit);
                                             }},
                                            51);
    return Report({"markup of 2,000 characters set into a view", 2.0}, times[0], times[1]);
}

}  // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    const bool layoutsAreFine = CompareLayouts();
    const bool markupIsFine = CompareMarkup();
    return layoutsAreFine && markupIsFine ? 0 : 1;
}
