#pragma once

// The template of the progress dialog.

#include "resources/dialog_template.h"

namespace ostrova::resources {

inline constexpr int ProgressMessage = 1010;
inline constexpr int ProgressBar = 1009;
inline constexpr int ProgressTimeTaken = 1023;
inline constexpr int ProgressTimeRemaining = 1024;
inline constexpr int ProgressPause = 1007;
inline constexpr int ProgressCancel = 2;

inline constexpr ControlTemplate ProgressControls[] = {
    {ProgressMessage,
     ControlKind::StaticText,
     "message",
     "Please Wait...",
     "",
     {5, 5, 235, 35},
     WrapsWords},
    {ProgressBar, ControlKind::ProgressBar, "progressBar", "", "Progress", {5, 45, 255, 10}},
    {ProgressTimeTaken,
     ControlKind::StaticText,
     "timeTaken",
     "Time Taken: ...",
     "",
     {5, 60, 255, 10}},
    {ProgressTimeRemaining,
     ControlKind::StaticText,
     "timeRemaining",
     "Time Remaining: ...",
     "",
     {5, 70, 255, 10}},
    {ProgressPause, ControlKind::PushButton, "pause", "Pause", "", {5, 85, 50, 15}},
    {ProgressCancel, ControlKind::PushButton, "cancel", "Cancel", "", {210, 85, 50, 14}},
};

inline constexpr DialogTemplate ProgressTemplate = {"progressDialog", "Processing...", 267, 106,
                                                    ProgressControls};

}  // namespace ostrova::resources
