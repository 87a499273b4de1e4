#include "uikit/qt_colour.h"

#include <cmath>

namespace ostrova::uikit {
namespace {

double LinearPart(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

/// Relative luminance of WCAG 2, 0 for black to 1 for white.
double Luminance(const QColor& colour) {
    return 0.2126 * LinearPart(colour.redF()) + 0.7152 * LinearPart(colour.greenF()) +
           0.0722 * LinearPart(colour.blueF());
}

}  // namespace

QColor ToQColor(Colour colour) {
    return {static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
            static_cast<int>(colour >> 16 & 0xFF)};
}

QColor ReadableOn(const QColor& background, const QColor& colour) {
    constexpr double DarkBelow = 0.18;
    constexpr double EnoughContrast = 4.5;
    const double behind = Luminance(background);
    if (behind >= DarkBelow) return colour;
    const double needed = EnoughContrast * (behind + 0.05) - 0.05;
    QColor readable = colour;
    for (int step = 1; step <= 20 && Luminance(readable) < needed; ++step) {
        const double white = step / 20.0;
        const auto mix = [white](double part) {
            return static_cast<float>(part + (1.0 - part) * white);
        };
        readable = QColor::fromRgbF(mix(colour.redF()), mix(colour.greenF()), mix(colour.blueF()));
    }
    return readable;
}

QColor BlackOrWhiteOn(const QColor& background) {
    constexpr double EvenContrast = 0.179;  // black and white are equally far from it
    return Luminance(background) > EvenContrast ? Qt::black : Qt::white;
}

}  // namespace ostrova::uikit
