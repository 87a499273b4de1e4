#include "window/window_icon.h"

#include <QPixmap>

#include "icon_pixels.h"

namespace ostrova::window {
namespace {

template <int Size>
void AddPixels(QIcon& icon, const std::uint32_t (&pixels)[Size][Size]) {
    const QImage image(reinterpret_cast<const uchar*>(pixels), Size, Size,
                       QImage::Format_ARGB32_Premultiplied);
    icon.addPixmap(QPixmap::fromImage(image));
}

}  // namespace

QIcon WindowIcon() {
    QIcon icon;
    AddPixels(icon, Pixels16);
    AddPixels(icon, Pixels32);
    AddPixels(icon, Pixels48);
    AddPixels(icon, Pixels64);
    return icon;
}

}  // namespace ostrova::window
