// Renders the desktop program's windows offscreen into PNG files, for looking at them: the frame
// with a worked document, the options dialog and the error dialog, in the system palette and in
// a dark one. Usage: quorvex-screenshots OUTPUT_DIR
#include "gui/common/error_dialog.h"
#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/find_replace_dialog.h"
#include "gui/editor/keypad.h"
#include "gui/editor/math_editor.h"
#include "gui/graph2d/graph_setup_dialog.h"
#include "gui/graph2d/graph_window.h"
#include "gui/help/help_actions.h"
#include "gui/help/help_window.h"
#include "gui/library/library_dialog.h"
#include "gui/tools/function_solver_dialog.h"
#include "gui/tools/differentiation_dialog.h"
#include "gui/tools/integration_dialog.h"
#include "gui/tools/curve_fitter_dialog.h"
#include "gui/tools/data_points_dialog.h"
#include "gui/tools/quick_calc_dialog.h"
#include "gui/tools/quick_graph_dialog.h"
#include "gui/tools/matrix_dialog.h"
#include "gui/tools/stat_plot_dialog.h"
#include <QSpinBox>
#include <QTableView>
#include "gui/graph2d/simulation_player.h"
#include "gui/tools/root_finder_dialog.h"
#include "gui/tools/tool_windows.h"

#include <QComboBox>
#include <QRadioButton>
#include "gui/lists/manager_dialog.h"

#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>

#include <QTabWidget>
#include "gui/shell/main_frame.h"
#include "gui/shell/options_dialog.h"
#include "screenshots_3d.h"

#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>

#include <cstdio>

using namespace quorvex;
using namespace quorvex::gui;

namespace {

QPalette dark_palette() {
    QPalette palette;
    const QColor window(45, 45, 48), base(30, 30, 30), text(220, 220, 220), highlight(38, 79, 120);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, QColor(140, 140, 140));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(120, 120, 120));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(120, 120, 120));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(120, 120, 120));
    return palette;
}

bool save(QWidget* widget, const QString& path) {
    widget->repaint();
    QApplication::processEvents();
    const bool saved = widget->grab().save(path);
    std::printf("%s %s\n", saved ? "wrote" : "FAILED", qPrintable(path));
    return saved;
}

const char* const k_worksheet[] = {
    "// Quorvex worksheet",          "radius = 2.5",  "area(r) = PI*r^2", "area(radius)",
    "0.1 + 0.2",                     "SIN(30)",       "SQRT(-4)",         "hyp[a, b] = SQRT(a^2 + b^2)",
    "hyp(3, 4) // Pythagoras",       "x = 1; y = 2; x/y", "1/3",
};

bool shoot(const QString& out, const QString& suffix) {
    ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
    Services& services = scratch.services;
    scratch.save_answers = {0x00010000}; // No: the worksheet is not kept
    MainFrame frame(services);
    frame.keypad()->hide(); // a first start shows it; the pictures give the documents the room
    ErrorDialog errors(&frame);
    services.error_dialog = &errors;
    frame.resize(1000, 640);
    frame.show();
    DocumentWindow* window = frame.new_document();
    MathEditor* editor = window->editor();
    for (const char* line : k_worksheet) {
        QTest::keyClicks(editor, QString::fromLatin1(line));
        QTest::keyClick(editor, Qt::Key_Return);
    }
    bool ok = save(&frame, out + QStringLiteral("/frame") + suffix + QStringLiteral(".png"));

    QTest::keyClicks(editor, QStringLiteral("LN(0)"));
    QTest::keyClick(editor, Qt::Key_Return);
    ok = save(&errors, out + QStringLiteral("/error-dialog") + suffix + QStringLiteral(".png")) && ok;
    errors.hide();

    // A graph of each drawn kind: a curve with a pole, points, bars.
    QTest::keyClicks(editor, QStringLiteral("wave(x) = SIN(x)*x/100"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::keyClicks(editor, QStringLiteral("pole(x) = 1/(x-2)"));
    QTest::keyClick(editor, Qt::Key_Return);
    window->add_function_graph("wave[x]", "x", -720, 720, 401);
    ok = save(&frame, out + QStringLiteral("/graph-plot") + suffix + QStringLiteral(".png")) && ok;
    window->add_function_graph("pole[x]", "x", -4, 8, 241);
    ok = save(&frame, out + QStringLiteral("/graph-pole") + suffix + QStringLiteral(".png")) && ok;
    auto& graphs = window->document().Graphs;
    for (auto [type, name] : {std::pair{13, "scatter"}, std::pair{14, "line"}, std::pair{2, "bar"}, std::pair{4, "stacking-bar"},
                              std::pair{5, "area"}, std::pair{3, "pie"}, std::pair{9, "polar"}}) {
        graphs.front().Data.Type = type;
        window->graph_window()->draw(0);
        ok = save(&frame, out + QStringLiteral("/graph-") + QLatin1String(name) + suffix + QStringLiteral(".png")) && ok;
    }
    {
        // Ten days of a price as HiLo Open Close bars and as candles (high, low, open, close), and a
        // histogram of counts with its intervals under the bars.
        document::DocumentGraph prices;
        prices.Data = graph::GraphData("Prices");
        prices.Data.Header = "Daily price";
        prices.Data.XAxisTitle = "Day";
        const double open[] = {20, 21.5, 21, 23, 22.5, 24, 23.2, 25, 26.1, 25.4};
        const double close[] = {21.4, 20.8, 22.9, 22.6, 24.2, 23.1, 25.3, 26.2, 25.2, 27};
        const char* names[] = {"High", "Low", "Open", "Close"};
        for (int set = 0; set < 4; ++set) {
            graph::StrDataPnts points;
            points.SetName(names[set]);
            for (int day = 0; day < 10; ++day) {
                const double high = std::max(open[day], close[day]) + 0.6 + 0.1 * (day % 3);
                const double low = std::min(open[day], close[day]) - 0.5 - 0.1 * (day % 4);
                const double value[] = {high, low, open[day], close[day]};
                points.PutXDataPoint(std::to_string(day + 1), day);
                points.PutYDataPoint(QString::number(value[set], 'f', 2).toStdString(), day);
            }
            prices.Data.DataSets.push_back(points);
        }
        graphs.push_back(prices);
        const int at = static_cast<int>(graphs.size()) - 1;
        window->graph_window()->refresh_list();
        for (auto [type, name] : {std::pair{7, "hilo-open-close"}, std::pair{8, "candle"}}) {
            graphs[static_cast<size_t>(at)].Data.Type = type;
            window->graph_window()->draw(at);
            ok = save(&frame, out + QStringLiteral("/graph-") + QLatin1String(name) + suffix + QStringLiteral(".png")) && ok;
        }
        document::DocumentGraph counts;
        counts.Data = graph::GraphData("Heights");
        counts.Data.Type = 15;
        counts.Data.Header = "Heights of 120 plants";
        counts.Data.XAxisTitle = "Height (cm)";
        graph::StrDataPnts bins;
        bins.SetName("Plants");
        const int heights[] = {4, 11, 23, 31, 26, 16, 7, 2};
        for (int bin = 0; bin < 8; ++bin) {
            bins.PutXDataPoint(std::to_string(12 + 4 * bin), bin);
            bins.PutYDataPoint(std::to_string(heights[bin]), bin);
        }
        counts.Data.DataSets.push_back(bins);
        graphs.push_back(counts);
        window->graph_window()->refresh_list();
        window->graph_window()->draw(static_cast<int>(graphs.size()) - 1);
        ok = save(&frame, out + QStringLiteral("/graph-histogram") + suffix + QStringLiteral(".png")) && ok;
    }
    ok = shoot_3d(frame, *window, out, suffix) && ok;
    {
        GraphSetupDialog setup(*window, 0, GraphSetupDialog::Mode::Pages, &frame);
        setup.show();
        for (int tab = 0; tab < setup.tabs()->count(); ++tab) {
            setup.tabs()->setCurrentIndex(tab);
            const QString name = setup.tabs()->tabText(tab).toLower().replace(QLatin1Char(' '), QLatin1Char('-'));
            ok = save(&setup, out + QStringLiteral("/setup-%1-").arg(tab + 1) + name + suffix + QStringLiteral(".png")) && ok;
        }
        setup.reject();
        // The data page of a 3-dimensional graph: a set at each Z value.
        auto& graphs = window->document().Graphs;
        document::DocumentGraph levels;
        levels.Data = graph::GraphData("Levels");
        for (int z = 1; z <= 2; ++z) {
            graph::StrDataPnts set;
            set.SetName(("depth " + std::to_string(z)).c_str());
            set.PutZDataPoint(std::to_string(z * 10));
            for (int p = 0; p < 6; ++p) {
                set.PutXDataPoint(std::to_string(p), p);
                set.PutYDataPoint(std::to_string(z * p * p + 1), p);
            }
            levels.Data.DataSets.push_back(set);
        }
        graphs.push_back(levels);
        {
            GraphSetupDialog three(*window, static_cast<int>(graphs.size()) - 1, GraphSetupDialog::Mode::Pages, &frame);
            three.show();
            three.tabs()->setCurrentIndex(3);
            ok = save(&three, out + QStringLiteral("/setup-4-data-points-3d") + suffix + QStringLiteral(".png")) && ok;
            three.reject();
        }
        graphs.pop_back();
        GraphSetupDialog wizard(*window, -1, GraphSetupDialog::Mode::Wizard, &frame);
        wizard.setWindowTitle(QStringLiteral("Graphs Wizard"));
        wizard.show();
        ok = save(&wizard, out + QStringLiteral("/graphs-wizard") + suffix + QStringLiteral(".png")) && ok;
        wizard.reject();
    }
    window->toggle_graph();

    frame.keypad()->show();
    ok = save(&frame, out + QStringLiteral("/keypad") + suffix + QStringLiteral(".png")) && ok;
    frame.keypad()->hide();

    // The lists beside the editor, and the two managers.
    window->toggle_list(true);
    window->toggle_list(false);
    ok = save(&frame, out + QStringLiteral("/lists") + suffix + QStringLiteral(".png")) && ok;
    window->toggle_list(true);
    window->toggle_list(false);
    for (auto [kind, name] : {std::pair{ManagerDialog::Kind::Variables, "variables-manager"},
                              std::pair{ManagerDialog::Kind::Functions, "function-manager"}}) {
        ManagerDialog manager(*window, kind, &frame);
        manager.show();
        ok = save(&manager, out + QStringLiteral("/") + QLatin1String(name) + suffix + QStringLiteral(".png")) && ok;
    }

    {
        LibraryDialog library(*window, &frame);
        library.show();
        library.search()->setText(QStringLiteral("angle"));
        ok = save(&library, out + QStringLiteral("/function-library") + suffix + QStringLiteral(".png")) && ok;
    }

    {
        // The solver in both of its forms: fixed parameters, and a list with a parameter after it.
        FunctionSolverDialog solver(*window, &frame);
        solver.configure(QStringLiteral("QUADROOT1[A,B,C] = (-(B)+SQRT[(B)^2-4*(A)*(C)])/(2*(A))"),
                         QStringLiteral("First root of A*X^2+B*X+C=0, with the plus sign before the square root."));
        solver.parameter_field(0)->setText(QStringLiteral("1"));
        solver.parameter_field(1)->setText(QStringLiteral("-3"));
        solver.parameter_field(2)->setText(QStringLiteral("2"));
        solver.solve();
        solver.show();
        ok = save(&solver, out + QStringLiteral("/function-solver") + suffix + QStringLiteral(".png")) && ok;
        solver.configure(QStringLiteral("ZSCORE[x, mean, sd] or ZSCORE[{list}, x]"),
                         QStringLiteral("Standard score of x"));
        solver.set_list_form(true);
        for (const char* value : {"12.5", "14", "9.75", "11", "13.25"}) solver.add_list_value(QString::fromLatin1(value));
        solver.parameter_field(0)->setText(QStringLiteral("14"));
        solver.solve();
        ok = save(&solver, out + QStringLiteral("/function-solver-list") + suffix + QStringLiteral(".png")) && ok;
    }

    {
        FindReplaceDialog find(&frame);
        find.open_for(window->editor(), true);
        find.find_field()->setText(QStringLiteral("radius"));
        find.replace_field()->setText(QStringLiteral("r0"));
        ok = save(&find, out + QStringLiteral("/find-replace") + suffix + QStringLiteral(".png")) && ok;
    }

    {
        QuickCalcDialog* calc = static_cast<QuickCalcDialog*>(window->tools().open(Tool::QuickCalc));
        calc->expression()->setEditText(QStringLiteral("SQRT(x)"));
        calc->variable()->setEditText(QStringLiteral("x"));
        calc->start()->setText(QStringLiteral("-1"));
        calc->end()->setText(QStringLiteral("1"));
        calc->points()->setText(QStringLiteral("11"));
        scratch.save_answers = {0x00004000}; // Yes: both branches of the root
        calc->compute();
        scratch.save_answers = {0x00010000}; // and No again when the worksheet closes
        ok = save(calc, out + QStringLiteral("/quick-calc") + suffix + QStringLiteral(".png")) && ok;
        calc->hide();
    }

    {
        // Answers made stale by a change of the radius above them.
        DocumentWindow* sheet = frame.new_document();
        MathEditor* lines = sheet->editor();
        for (const char* line : {"r = 2", "area = PI*r^2", "perimeter = 2*PI*r", "1+1 // not touched", "area/perimeter"}) {
            QTest::keyClicks(lines, QString::fromLatin1(line));
            QTest::keyClick(lines, Qt::Key_Return);
        }
        QTextCursor first(lines->document()->firstBlock());
        first.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        first.insertText(QStringLiteral("r = 3"));
        lines->setTextCursor(first);
        QTest::keyClick(lines, Qt::Key_F4);
        ok = save(&frame, out + QStringLiteral("/stale-lines") + suffix + QStringLiteral(".png")) && ok;
        // Nothing of it to keep: it closes without the save question, the worksheet comes back.
        lines->document()->setModified(false);
        sheet->parser().set_vars_saved(true);
        sheet->parser().set_funcs_saved(true);
        sheet->parentWidget()->close();
    }

    {
        // A cubic through twelve measured points, fitted with four coefficients.
        auto* fitter = static_cast<CurveFitterDialog*>(window->tools().open(Tool::CurveFitter));
        graph::StrDataPnts points;
        const double y[] = {1.1, 2.9, 3.2, 2.8, 1.6, 0.9, 1.2, 2.4, 4.9, 8.8, 14.1, 21.2};
        for (int i = 0; i < 12; ++i) {
            points.PutXDataPoint(QString::number(i * 0.5).toStdString().c_str(), i);
            points.PutYDataPoint(QString::number(y[i]).toStdString().c_str(), i);
        }
        points.SetName("Sensor");
        fitter->set_data(points);
        fitter->coefficients()->setValue(4);
        fitter->precision()->setValue(6);
        fitter->compute();
        ok = save(fitter, out + QStringLiteral("/curve-fitter") + suffix + QStringLiteral(".png")) && ok;
        DataPointsDialog* data = fitter->data_dialog();
        data->set_points(points);
        data->show();
        ok = save(data, out + QStringLiteral("/data-points") + suffix + QStringLiteral(".png")) && ok;
        data->hide();
        fitter->hide();
        // Forty test scores in six intervals; then a 3 by 3 system solved by the matrix tool.
        auto* plot = static_cast<StatPlotDialog*>(window->tools().open(Tool::StatPlot));
        plot->data_name()->setText(QStringLiteral("Scores"));
        plot->add_values({"72", "85", "91", "64", "78", "88", "95", "70", "81", "77", "69", "84", "90", "58",
                          "73", "86", "79", "92", "67", "75", "83", "88", "71", "80", "76", "94", "62", "87",
                          "74", "82", "89", "68", "79", "85", "93", "66", "77", "81", "100/1.25", "SQRT(5184)"});
        plot->set_intervals()->setChecked(true);
        plot->interval_count()->setValue(6);
        plot->compute();
        ok = save(plot, out + QStringLiteral("/stat-plot") + suffix + QStringLiteral(".png")) && ok;
        // Its values in the data points dialog, and the distribution graphed both ways.
        DataPointsDialog* values = plot->data_dialog();
        values->set_points(window->document().Tools.StatPlotting.DataSet);
        values->show();
        ok = save(values, out + QStringLiteral("/stat-plot-values") + suffix + QStringLiteral(".png")) && ok;
        values->hide();
        plot->graph_answer();
        ok = save(&frame, out + QStringLiteral("/stat-plot-hystogram") + suffix + QStringLiteral(".png")) && ok;
        plot->pareto()->click();
        plot->graph_answer();
        ok = save(&frame, out + QStringLiteral("/stat-plot-pareto") + suffix + QStringLiteral(".png")) && ok;
        window->toggle_graph();
        plot->hide();

        auto* matrices = static_cast<MatrixDialog*>(window->tools().open(Tool::Matrix));
        const auto fill = [matrices](const QList<QStringList>& rows) {
            QAbstractItemModel* cells = matrices->grid()->model();
            for (int i = 0; i < rows.size(); ++i)
                for (int j = 0; j < rows[i].size(); ++j) cells->setData(cells->index(i, j), rows[i][j]);
        };
        matrices->rows()->setValue(3);
        matrices->columns()->setValue(3);
        matrices->add_matrix();
        fill({{"2", "1", "-1"}, {"-3", "-1", "2"}, {"-2", "1", "2"}});
        matrices->select(-1);
        matrices->columns()->setValue(1);
        matrices->add_matrix();
        fill({{"8"}, {"-11"}, {"-3"}});
        matrices->linear_solver()->setChecked(true);
        matrices->matrix_a()->setCurrentText(QStringLiteral("Matrix1"));
        matrices->vector_b()->setCurrentText(QStringLiteral("Vector1"));
        matrices->compute();
        ok = save(matrices, out + QStringLiteral("/matrix-tool") + suffix + QStringLiteral(".png")) && ok;
        matrices->hide();
        // The manual at the contents and at a function's entry, as F1 opens them.
        frame.action(QStringLiteral("helpContents"))->trigger();
        HelpWindow* help = help_window(&frame);
        help->show_page({});
        ok = save(help, out + QStringLiteral("/help-contents") + suffix + QStringLiteral(".png")) && ok;
        help->show_page(QStringLiteral("functions.html#SQRT"));
        ok = save(help, out + QStringLiteral("/help-function") + suffix + QStringLiteral(".png")) && ok;
        help->hide();
    }

    {
        // A family of curves, its dialog and one frame of its simulation in the graph window.
        auto* quick = static_cast<QuickGraphDialog*>(window->tools().open(Tool::QuickGraph));
        const QuickGraphFields& in = quick->fields_2d();
        in.function->setEditText(QStringLiteral("k*SIN(x)"));
        in.variable->setEditText(QStringLiteral("x"));
        in.start->setText(QStringLiteral("0"));
        in.end->setText(QStringLiteral("360"));
        in.points->setText(QStringLiteral("181"));
        in.variable2->setEditText(QStringLiteral("k"));
        in.start2->setText(QStringLiteral("1"));
        in.end2->setText(QStringLiteral("5"));
        in.points2->setText(QStringLiteral("5"));
        quick->graph_2d();
        ok = save(quick, out + QStringLiteral("/quick-graph") + suffix + QStringLiteral(".png")) && ok;
        quick->toggle_simulation();
        window->graph_window()->simulation().step();
        window->graph_window()->simulation().step();
        ok = save(window, out + QStringLiteral("/quick-graph-simulation") + suffix + QStringLiteral(".png")) && ok;
        quick->toggle_simulation();
        quick->pages()->setCurrentIndex(1);
        const QuickGraphFields& surface = quick->fields_3d();
        surface.function->setEditText(QStringLiteral("x^2-y^2"));
        quick->graph_3d();
        ok = save(quick, out + QStringLiteral("/quick-graph-3d") + suffix + QStringLiteral(".png")) && ok;
        ok = save(window, out + QStringLiteral("/quick-graph-surface") + suffix + QStringLiteral(".png")) && ok;
        quick->hide();
        if (window->graph_shown()) window->toggle_graph();
        auto* diff = static_cast<DifferentiationDialog*>(window->tools().open(Tool::Differentiation));
        const int angle = window->parser().angle_type();
        window->parser().set_angle_type(1); // radians: trigonometric functions can be differentiated
        diff->expression()->setEditText(QStringLiteral("x*SIN(x)"));
        diff->variable()->setEditText(QStringLiteral("x"));
        diff->start()->setText(QStringLiteral("0"));
        diff->end()->setText(QStringLiteral("2"));
        diff->steps()->setText(QStringLiteral("11"));
        diff->differentiate();
        window->parser().set_angle_type(angle);
        ok = save(diff, out + QStringLiteral("/differentiation") + suffix + QStringLiteral(".png")) && ok;
        diff->hide();
        auto* integral = static_cast<IntegrationDialog*>(window->tools().open(Tool::Integration));
        integral->expression()->setEditText(QStringLiteral("x^2 + y^2"));
        integral->order_button(2)->click();
        integral->parameter(0)->setEditText(QStringLiteral("x"));
        integral->lower(0)->setText(QStringLiteral("0"));
        integral->upper(0)->setText(QStringLiteral("SQRT(1 - y^2)"));
        integral->parameter(1)->setEditText(QStringLiteral("y"));
        integral->lower(1)->setText(QStringLiteral("0"));
        integral->upper(1)->setText(QStringLiteral("1"));
        integral->accuracy()->setValue(60);
        integral->integrate();
        ok = save(integral, out + QStringLiteral("/integration") + suffix + QStringLiteral(".png")) && ok;
        integral->hide();
        RootFinderDialog* roots = static_cast<RootFinderDialog*>(window->tools().open(Tool::RootFinder));
        roots->real_mode()->setChecked(true);
        roots->expression()->setEditText(QStringLiteral("x^3-6x^2+11x-6"));
        roots->variable()->setEditText(QStringLiteral("x"));
        roots->start()->setText(QStringLiteral("0"));
        roots->end()->setText(QStringLiteral("4"));
        roots->steps()->setText(QStringLiteral("401"));
        roots->compute();
        ok = save(roots, out + QStringLiteral("/root-finder") + suffix + QStringLiteral(".png")) && ok;
        roots->complex_mode()->setChecked(true);
        roots->set_coefficient(3, QStringLiteral("1"));
        roots->set_coefficient(1, QStringLiteral("-2"));
        roots->set_coefficient(0, QStringLiteral("5"));
        roots->compute();
        ok = save(roots, out + QStringLiteral("/root-finder-complex") + suffix + QStringLiteral(".png")) && ok;
        roots->real_mode()->setChecked(true); // the mode the settings keep
        roots->hide();
    }

    OptionsDialog options(services, &window->parser(), &frame);
    options.show();
    ok = save(&options, out + QStringLiteral("/options-dialog") + suffix + QStringLiteral(".png")) && ok;
    frame.close();
    return ok;
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: quorvex-screenshots OUTPUT_DIR\n");
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(out);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    bool ok = shoot(out, QString());
    QApplication::setPalette(dark_palette());
    ok = shoot(out, QStringLiteral("-dark")) && ok;
    return ok ? 0 : 1;
}
