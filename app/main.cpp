// quorvex: the desktop program.
#include "desktop/launch_options.h"
#include "gui/shell/application.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    std::string error;
    const auto options = quorvex::desktop::parse_launch_options(args, error);
    if (!options) {
        std::fprintf(stderr, "quorvex: %s\n%s", error.c_str(), quorvex::desktop::launch_usage().c_str());
        return 2;
    }
    if (options->help) {
        std::fputs(quorvex::desktop::launch_usage().c_str(), stdout);
        return 0;
    }
    if (options->version) {
        std::puts(QUORVEX_VERSION);
        return 0;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quorvex"));
    QApplication::setApplicationVersion(QStringLiteral(QUORVEX_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("quorvex"));
    quorvex::gui::Application program(*options);
    if (!program.start()) return 0; // a running program took the file
    return QApplication::exec();
}
