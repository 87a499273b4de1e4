// The least that a program with a window can be: the baseline of the main window.

#include <QApplication>
#include <QLabel>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QLabel label(QStringLiteral("A label"));
    label.resize(600, 500);
    label.show();
    return QApplication::exec();
}
