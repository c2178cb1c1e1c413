// quorvex: the desktop program.
#include "gui/main_window.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quorvex"));
    quorvex::gui::MainWindow window;
    window.show();
    return QApplication::exec();
}
