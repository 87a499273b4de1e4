// ostrova-screenshots DIR: pictures of the main window, every tab in four sizes, light and dark,
// made without a display. The scale is that of QT_SCALE_FACTOR; a scale of 2 makes the largest size
// only.

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QStyleFactory>
#include <cstdio>

#include "demo/site.h"
#include "tests/gallery/gallery.h"
#include "tests/window/window_user.h"

namespace ostrova {
namespace {

constexpr const char* Host = "http://site.test";

/// The demonstration site without a network.
class SiteClient final : public platform::HttpClient {
public:
    explicit SiteClient(platform::Clock& clock) : clock_(clock) {}

    platform::HttpResponse Perform(const platform::HttpRequest& request,
                                   const platform::HttpEvents& events) override {
        const std::string target = request.url.substr(std::string_view(Host).size());
        const auto page = demo::SitePage(target, Host, clock_.Now(), {});
        platform::HttpResponse response;
        response.status = page ? 200 : 404;
        response.reachedNetwork = response.endKnown = true;
        response.finalUrl = request.url;
        const std::string body = page.value_or("not here");
        if (events.onAnswer(response.status, static_cast<std::int64_t>(body.size()))) {
            events.onBody(body);
        }
        return response;
    }

private:
    platform::Clock& clock_;
};

struct Size {
    const char* name;
    QSize size;
    int scale;
};

const Size Sizes[] = {
    {"376x273", {376, 273}, 1},
    {"600x500", {600, 500}, 1},
    {"1920x1080", {1920, 1080}, 1},
    {"3840x2160", {1920, 1080}, 2},
};

bool TakePictures(window::MainDialog& dialog, const QDir& folder, const QString& look) {
    bool isSaved = true;
    for (const Size& size : Sizes) {
        if (size.scale != qRound(dialog.devicePixelRatio())) continue;
        dialog.resize(size.size);
        for (int page = 0; page < dialog.Sheet().count(); ++page) {
            dialog.Sheet().setCurrentIndex(page);
            testing::WindowUser::Settle();
            QString tab = dialog.Sheet().tabText(page).toLower();
            tab.replace(QLatin1Char(' '), QLatin1Char('-'))
                .replace(QLatin1Char('/'), QLatin1Char('-'));
            const QString name =
                QStringLiteral("%1-%2-%3.png").arg(tab, QString::fromLatin1(size.name), look);
            isSaved = dialog.grab().save(folder.filePath(name)) && isSaved;
        }
    }
    return isSaved;
}

}  // namespace
}  // namespace ostrova

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/ostrova-256.png")));
    // Absolute, since the program makes its data folder the current one.
    const QDir folder(QDir(QString::fromLocal8Bit(count > 1 ? arguments[1] : "")).absolutePath());
    if (count != 2 || !folder.mkpath(QStringLiteral("."))) {
        std::fputs("Usage: ostrova-screenshots DIR\n", stderr);
        return 2;
    }
    using namespace ostrova;
    const QPalette light = QApplication::palette();
    testing::WindowUser user([&user] { return std::make_unique<SiteClient>(user.clock); });
    user.WriteList(testing::FileBytes(OSTROVA_SAMPLE_LIST));
    window::MainDialog& dialog = user.Open();
    bool isSaved = true;
    for (const bool isDark : {false, true}) {
        QApplication::setPalette(isDark ? gallery::DarkPalette() : light);
        isSaved = TakePictures(dialog, folder,
                               isDark ? QStringLiteral("dark") : QStringLiteral("light")) &&
                  isSaved;
    }
    return isSaved ? 0 : 1;
}
