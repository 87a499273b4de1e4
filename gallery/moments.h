#pragma once

// States that last only as long as a hand, a key or the focus holds them.

#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

namespace ostrova::gallery {

struct Moment {
    using TakePicture = std::function<void(QWidget& window)>;

    QString name;  // for a file name
    /// Leads there by mouse and keys, in a window of its own, and takes a picture.
    std::function<void(const TakePicture& takePicture)> play;
};

[[nodiscard]] const std::vector<Moment>& Moments();

}  // namespace ostrova::gallery
