#include "pages/options_arrangement.h"

#include <QAbstractButton>
#include <algorithm>
#include <array>

#include "pages/fitted_text.h"
#include "resources/options_template.h"
#include "uikit/dialog_builder.h"
#include "uikit/markup_view.h"

namespace ostrova::pages {
namespace {

using namespace resources;
using uikit::ControlAs;

constexpr int Gap = 5;  // dialog units, as in the template

int BottomOf(const QWidget& control) {
    return control.y() + control.height();
}

/// One arrangement of the controls: the top, the bottom, and the notes in between.
class Arrangement {
public:
    explicit Arrangement(QWidget& controls)
        : controls_(controls),
          about_(*ControlAs<uikit::MarkupView>(controls, OptionsAbout)),
          notes_(*ControlAs<uikit::MarkupView>(controls, OptionsNotes)),
          exit_(*uikit::ControlById(controls, OptionsExit)),
          across_(uikit::DialogUnits(controls.font()).PixelsAcross(Gap)),
          down_(uikit::DialogUnits(controls.font()).PixelsDown(Gap)) {}

    /// Returns the height that is needed.
    int Run() {
        const int top = ArrangeTop();
        const int room = ArrangeBottom() - top;
        notes_.setGeometry(notes_.x(), top, notes_.width(), std::max(room, 0));
        return controls_.height() - room + TextSize(notes_, notes_.width()).height();
    }

private:
    /// The top that is left for the notes.
    int ArrangeTop() {
        GrowCheckBox();
        if (about_.width() < TextSize(about_, -1).width()) return StackTop();
        const int needed = TextSize(about_, about_.width()).height();
        about_.resize(about_.width(), std::max(about_.height(), needed));
        return std::max(notes_.y(), BottomOf(about_) + down_);
    }

    /// Two lines of text are a pixel or two higher than the template's place for them.
    void GrowCheckBox() {
        QWidget& check = *uikit::ControlById(controls_, OptionsCheckForUpgrades);
        const int missing = std::max(check.sizeHint().height() - check.height(), 0);
        check.setGeometry(check.x(), check.y() - missing / 2, check.width(),
                          check.height() + missing);
    }

    int StackTop() {
        const int left = about_.x();
        const int width = controls_.width() - left - across_;
        about_.resize(width, TextSize(about_, width).height());
        int top = BottomOf(about_) + down_;
        QWidget& check = *uikit::ControlById(controls_, OptionsCheckForUpgrades);
        check.setGeometry(left, top, width, check.height());
        top = BottomOf(check) + down_;
        QWidget& checkNow = *uikit::ControlById(controls_, OptionsCheckNow);
        checkNow.setGeometry(left, top, std::min(checkNow.width(), width), checkNow.height());
        return BottomOf(checkNow) + down_;
    }

    /// The bottom that is left for the notes.
    int ArrangeBottom() {
        const std::array buttons = {ControlAs<QAbstractButton>(controls_, OptionsOpenAlways),
                                    ControlAs<QAbstractButton>(controls_, OptionsOpenOnMatch),
                                    ControlAs<QAbstractButton>(controls_, OptionsOpenNever)};
        int widest = 0;
        for (QAbstractButton* button : buttons) {
            widest = std::max(widest, WrapText(*button, QWIDGETSIZE_MAX).width());
        }
        const int left = buttons.front()->x();
        const int besideExit = exit_.x() - across_ - left;
        if (widest <= besideExit) {
            const int width = std::clamp(buttons.front()->width(), widest, besideExit);
            for (QAbstractButton* button : buttons) button->resize(width, button->height());
            return buttons.front()->y() - down_;
        }
        const int width = controls_.width() - 2 * left;
        int top = exit_.y() - down_;
        for (auto button = buttons.rbegin(); button != buttons.rend(); ++button) {
            const int height = std::max(WrapText(**button, width).height(), (*button)->height());
            top -= height;
            (*button)->setGeometry(left, top, width, height);
        }
        return top - down_;
    }

    QWidget& controls_;
    uikit::MarkupView& about_;
    uikit::MarkupView& notes_;
    QWidget& exit_;
    int across_;
    int down_;
};

}  // namespace

int ArrangeOptions(QWidget& controls) {
    return Arrangement(controls).Run();
}

}  // namespace ostrova::pages
