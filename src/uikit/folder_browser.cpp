#include "uikit/folder_browser.h"

#include <QDir>
#include <QFile>

#include "uikit/plain_text.h"
#include "uikit/text.h"
#include "util/text.h"

namespace ostrova::uikit {

QFileDialog* MakeFolderBrowser(const std::string& title, const std::string& folder,
                               QWidget* owner) {
    const QString start = util::IsBlank(folder)
                              ? QDir::currentPath()
                              : QFile::decodeName(QByteArray::fromStdString(folder));
    auto* browser = new QFileDialog(owner, PlainWindowTitle(ToQString(title)), start);
    browser->setObjectName(QStringLiteral("folderBrowser"));
    browser->setFileMode(QFileDialog::Directory);
    browser->setOption(QFileDialog::ShowDirsOnly);
    return browser;
}

}  // namespace ostrova::uikit
