// ostrova-screenshots DIR: pictures of the main window, every tab in four sizes, light and dark,
// made without a display. The scale is that of QT_SCALE_FACTOR; a scale of 2 makes the largest size
// only.

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QPixmap>
#include <QStyleFactory>
#include <cstdio>
#include <exception>

#include "demo/site.h"
#include "gallery/gallery.h"
#include "tests/support/window_user.h"

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

bool TakePictures(window::MainDialog& dialog, const QDir& folder, const QString& look) {
    const int scale = qRound(dialog.devicePixelRatio());
    const QList<QSize> small = {{376, 273}, {600, 500}, {1920, 1080}};
    const QList<QSize> large = {{3840, 2160}};
    bool allSaved = true;
    for (const QSize size : scale == 1 ? small : large) {
        dialog.resize(size / scale);
        for (int page = 0; page < dialog.Sheet().count(); ++page) {
            dialog.Sheet().setCurrentIndex(page);
            testing::WindowUser::Settle();
            const QString tab = dialog.Sheet().tabText(page).toLower();
            const QString file = QString("%1-%2x%3-%4.png")
                                     .arg(QString(tab).replace(' ', '-').replace('/', '-'))
                                     .arg(size.width())
                                     .arg(size.height())
                                     .arg(look);
            allSaved = dialog.grab().save(folder.filePath(file)) && allSaved;
        }
    }
    return allSaved;
}

/// Opens the window and takes its pictures, light and dark; false when a file can't be written.
bool TakeAllPictures(const QDir& folder) {
    testing::WindowUser user([&user] { return std::make_unique<SiteClient>(user.clock); });
    user.WriteList(testing::FileBytes(OSTROVA_DEMO_DATA "/SampleSearchList.txt"));
    window::MainDialog& dialog = user.Open();
    const bool lightSaved = TakePictures(dialog, folder, "light");
    QApplication::setPalette(gallery::DarkPalette());
    return TakePictures(dialog, folder, "dark") && lightSaved;
}

}  // namespace
}  // namespace ostrova

int main(int count, char** arguments) {
    using namespace ostrova;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setWindowIcon(QIcon(":/icons/ostrova-256.png"));
    // Absolute, since the program makes its data folder the current one.
    const QDir folder(QDir(QString::fromLocal8Bit(count > 1 ? arguments[1] : "")).absolutePath());
    if (count != 2 || !folder.mkpath(".")) {
        std::fputs("Usage: ostrova-screenshots DIR\n", stderr);
        return 2;
    }
    try {
        if (TakeAllPictures(folder)) return 0;
        std::fputs("The pictures could not be written.\n", stderr);
    } catch (const std::exception& failure) {  // of the folder that the user works in
        std::fprintf(stderr, "%s\n", failure.what());
    }
    return 1;
}
