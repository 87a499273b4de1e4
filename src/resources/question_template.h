#pragma once

// The template of the question dialog. The dialog moves and sizes its controls by what it asks.

#include "resources/dialog_template.h"

namespace ostrova::resources {

inline constexpr int QuestionIcon = 1053;
inline constexpr int QuestionMessage = 1054;
inline constexpr int QuestionInput = 1011;
inline constexpr int QuestionTemplateButton = 1055;  // only its place, size and caption count

inline constexpr ControlTemplate QuestionControls[] = {
    {QuestionIcon, ControlKind::Icon, "icon", "", "Icon", {5, 5, 20, 20}},
    {QuestionMessage, ControlKind::MarkupView, "message", "", "Message", {35, 5, 35, 10}},
    {QuestionInput, ControlKind::Edit, "input", "", "Answer", {5, 30, 65, 12}},
    {QuestionTemplateButton, ControlKind::PushButton, "button", "Button", "", {5, 50, 35, 15}},
};

inline constexpr DialogTemplate QuestionTemplate = {"questionDialog", "Question", 77, 71,
                                                    QuestionControls};

}  // namespace ostrova::resources
