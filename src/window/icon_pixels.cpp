// Runs while the program is built: writes PNG files as tables of pixels, so that the program shows
// its icon without the reader of images and the plug-ins that one loads.
//
// Usage: ostrova-icon-pixels HEADER PNG...

#include <QFile>
#include <QImage>
#include <QTextStream>
#include <cstdio>

namespace {

bool WriteTable(QTextStream& out, const QString& path) {
    const QImage image = QImage(path).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull() || image.width() != image.height()) return false;
    const int size = image.width();
    out << "inline constexpr std::uint32_t Pixels" << size << '[' << size << "][" << size
        << "] = {\n";
    for (int y = 0; y < size; ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        out << '{';
        for (int x = 0; x < size; ++x) out << line[x] << "u,";
        out << "},\n";
    }
    out << "};\n";
    return true;
}

}  // namespace

int main(int count, char** words) {
    QFile header(count > 1 ? QString::fromLocal8Bit(words[1]) : QString());
    if (!header.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::fputs("The header can't be written\n", stderr);
        return 1;
    }
    QTextStream out(&header);
    out << "#pragma once\n\n#include <cstdint>\n\nnamespace ostrova::window {\n\n"
           "// Premultiplied ARGB.\n";
    for (int i = 2; i < count; ++i) {
        if (WriteTable(out, QString::fromLocal8Bit(words[i]))) continue;
        std::fprintf(stderr, "%s is no square picture\n", words[i]);
        return 1;
    }
    out << "\n}  // namespace ostrova::window\n";
    return 0;
}
