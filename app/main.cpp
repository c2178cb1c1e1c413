// quorvex: the desktop program.
#include "desktop/launch_options.h"
#include "gui/common/program_icon.h"
#include "gui/graph2d/batch_export.h"
#include "gui/shell/application.h"

#include "store/user_library.h"

#include <QApplication>
#include <QDir>

#include <cstdio>

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    std::string error;
    const auto options = quorvex::desktop::parse_launch_options(args, error);
    if (!options) {
        std::fprintf(stderr, "quorvex: %s (see quorvex --help)\n", error.c_str());
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
    if (!options->export_graph.empty()) {
        // Batch plots for reports: no window, no display needed.
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        QApplication app(argc, argv);
        QStringList messages;
        const QString data_dir = quorvex::gui::user_data_dir(*options);
        QDir().mkpath(data_dir);
        quorvex::store::ensure_user_library(data_dir.toStdString()); // as a start of the program would
        const int status =
            quorvex::gui::export_document_graph(*options, quorvex::gui::program_data_dir(), data_dir, messages);
        for (const QString& message : messages) std::fprintf(stderr, "quorvex: %s\n", qPrintable(message));
        return status;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quorvex"));
    QApplication::setApplicationVersion(QStringLiteral(QUORVEX_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("quorvex"));
    QApplication::setWindowIcon(quorvex::gui::program_icon()); // every window and dialog
    quorvex::gui::Application program(*options);
    if (!program.start()) return 0; // a running program took the file
    return QApplication::exec();
}
