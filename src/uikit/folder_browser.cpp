#include "uikit/folder_browser.h"

#include <QDir>
#include <QFile>

#include "uikit/plain_text.h"
#include "uikit/text.h"
#include "util/files.h"

namespace ostrova::uikit {

QFileDialog* MakeFolderBrowser(const std::string& title, const std::string& folder,
                               QWidget* owner) {
    const QString start = util::FolderExists(folder)
                              ? QFile::decodeName(QByteArray::fromStdString(folder))
                              : QDir::currentPath();
    auto* browser = new QFileDialog(owner, PlainWindowTitle(ToQString(title)), start);
    browser->setObjectName(QStringLiteral("folderBrowser"));
    browser->setFileMode(QFileDialog::Directory);
    browser->setOption(QFileDialog::ShowDirsOnly);
    return browser;
}

}  // namespace ostrova::uikit
