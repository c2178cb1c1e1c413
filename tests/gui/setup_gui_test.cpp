// The graph setup offscreen: the pages change a temporary copy, Apply and OK write it back after
// the checks, Cancel leaves the document's graph alone, and the wizard makes a graph from nothing.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/graph2d/graph_setup_dialog.h"
#include "gui/graph2d/graph_window.h"
#include "gui/graph2d/setup_pages.h"
#include "gui/graph3d/graph3d_view.h"
#include "gui/lists/manager_dialog.h"
#include "gui/shell/main_frame.h"
#include "graph/graph_colors.h"
#include "graph/graph_limits.h"
#include "store/ini_file.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include "gui/common/color_picker.h"
#include <QtTest>

using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

namespace {


struct Document {
    ScratchServices scratch{QStringLiteral(QUORVEX_SOURCE_DATA_DIR)};
    DocumentWindow window{scratch.services, QStringLiteral("Untitled 1")};
    Document() {
        window.show();
        type_line(window.editor(), QStringLiteral("cube(x) = x^3"));
    }
    int count(const QString& part) const {
        return static_cast<int>(std::count_if(scratch.messages.begin(), scratch.messages.end(),
                                              [&](const QString& m) { return m.contains(part); }));
    }
};

void select_and_add(FunctionsPage* page, const QString& function) {
    page->defined()->clearSelection();
    if (!function.isEmpty()) page->defined()->findItems(function, Qt::MatchExactly).value(0)->setSelected(true);
    page->add_selected();
}

} // namespace

class SetupGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cancelKeepsTheGraphAndApplyWritesItAfterTheChecks() {
        Document doc;
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 41));
        const std::string header = doc.window.document().Graphs[0].Data.Header;
        {
            GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
            setup.page<LabelsPage>()->header()->setText(QStringLiteral("changed"));
            setup.page<TypesPage>()->types()->button(13)->setChecked(true);
            QCOMPARE(setup.temp().Data.Header, std::string("changed")); // the copy changes...
            setup.reject();
        }
        QCOMPARE(doc.window.document().Graphs[0].Data.Header, header); // ...the document's graph does not
        QCOMPARE(doc.window.document().Graphs[0].Data.Type, 1);

        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        QSignalSpy applied(&setup, &GraphSetupDialog::applied);
        setup.page<TypesPage>()->types()->button(13)->setChecked(true);
        setup.page<VariablesPage>()->low()->setValue(3);
        setup.page<VariablesPage>()->high()->setValue(3);
        QVERIFY(!setup.apply()); // equal limits: refused, on the page concerned
        QCOMPARE(setup.tabs()->currentWidget(), static_cast<QWidget*>(setup.page<VariablesPage>()));
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("are equal")));
        QCOMPARE(doc.window.document().Graphs[0].Data.Type, 1);
        setup.page<VariablesPage>()->low()->setValue(-1);
        QVERIFY(setup.apply());
        QCOMPARE(applied.count(), 1);
        QCOMPARE(doc.window.document().Graphs[0].Data.Type, 13);
        QCOMPARE(doc.window.document().Graphs[0].Data.XAxisVar->low().real(), -1.0);
    }

    void titleFieldsRefuseTextBeyondWhatAGraphHolds() {
        Document doc;
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 5));
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        const QString overlong(20000, QLatin1Char('T'));
        for (QLineEdit* field : setup.page<LabelsPage>()->findChildren<QLineEdit*>()) field->setText(overlong);
        QVERIFY(setup.apply());
        const auto& graph = doc.window.document().Graphs[0].Data;
        for (const std::string* title : {&graph.Header, &graph.Footer, &graph.XAxisTitle, &graph.YAxisTitle})
            QCOMPARE(title->size(), quorvex::graph::k_max_graph_text);
    }

    void theWizardMakesAGraphFromNothing() {
        Document doc;
        GraphSetupDialog wizard(doc.window, -1, GraphSetupDialog::Mode::Wizard);
        wizard.show();
        QVERIFY(QTest::qWaitForWindowExposed(&wizard));
        QObject::connect(&wizard, &GraphSetupDialog::applied, &doc.window,
                         [&doc](int graph) { doc.window.show_graph(graph); });
        QVERIFY(!wizard.add_graph(QString())); // a graph needs a name
        QVERIFY(wizard.add_graph(QStringLiteral("Cubic")));
        QVERIFY(!wizard.add_graph(QStringLiteral("Cubic"))); // and one of its own
        wizard.next(); // Functions
        auto* functions = wizard.page<FunctionsPage>();
        QCOMPARE(functions->defined()->count(), 1);
        functions->defined()->setCurrentRow(0);
        functions->defined()->item(0)->setSelected(true);
        for (QPushButton* button : functions->findChildren<QPushButton*>())
            if (button->text().contains(QStringLiteral("Add"))) button->click();
        QCOMPARE(functions->chosen()->count(), 1);
        wizard.next(); // Variables: the function's x is offered as the axis
        QCOMPARE(wizard.page<VariablesPage>()->axis()->currentText(), QStringLiteral("x"));
        wizard.page<VariablesPage>()->points()->setValue(21);
        // The titles are the defaults that name the function, not the placeholders of an empty graph.
        wizard.tabs()->setCurrentWidget(wizard.page<LabelsPage>());
        QCOMPARE(wizard.page<LabelsPage>()->header()->text(), QStringLiteral("Graph of: cube[x]"));
        QCOMPARE(wizard.page<LabelsPage>()->footer()->text(), QStringLiteral("Graph of: cube[x]"));
        wizard.accept(); // Finish
        QCOMPARE(wizard.result(), int(QDialog::Accepted));
        const auto& graph = doc.window.document().Graphs.at(0);
        QCOMPARE(graph.Data.Name, std::string("Cubic"));
        QCOMPARE(graph.Data.Functions.size(), size_t(1));
        QCOMPARE(graph.Data.Header, std::string("Graph of: cube[x]"));
        QCOMPARE(graph.Data.Footer, std::string("Graph of: cube[x]"));
        QVERIFY(!graph.Data.HeaderSet && !graph.Data.FooterSet); // still defaults: new functions renew them
        QVERIFY(doc.window.graph_shown());
        QVERIFY(doc.window.graph_window()->errors().isEmpty());
    }

    void aZAxisVariableMakesASurfaceDrawnInItsForms() {
        Document doc;
        type_line(doc.window.editor(), QStringLiteral("bowl(x, y) = x^2 + y^2"));
        QVERIFY(!doc.window.add_function_graph("bowl[x,y]", "x", -2, 2, 11)); // y has no value yet
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        auto* variables = setup.page<VariablesPage>();
        QCOMPARE(variables->z_axis()->currentIndex(), 0); // none: a 2-D graph
        QVERIFY(!variables->z_low()->isEnabled());
        variables->z_axis()->setCurrentIndex(variables->z_axis()->findText(QStringLiteral("y")));
        QVERIFY(variables->z_low()->isEnabled());
        variables->z_low()->setValue(-2);
        variables->z_high()->setValue(2);
        variables->z_points()->setValue(9);
        auto* types = setup.page<TypesPage>();
        QCOMPARE(types->flags_3d().size(), size_t(6));
        types->flags_3d()[3]->setChecked(false); // no zones
        types->flags_3d()[4]->setChecked(true);  // hidden lines
        setup.tabs()->setCurrentWidget(setup.page<LabelsPage>());
        QVERIFY(setup.apply());
        const auto& graph = doc.window.document().Graphs[0].Data;
        QCOMPARE(graph.GetGraphType(), 2);
        QCOMPARE(graph.Type3D, 10111ul); // mesh, shade, contour, hidden
        QCOMPARE(graph.ZAxisVar->num_points(), 9L);

        QVERIFY(doc.window.show_graph(0));
        GraphWindow* window = doc.window.graph_window();
        QVERIFY(window->showing_3d());
        QVERIFY(window->errors().isEmpty());
        const auto& grid = window->view_3d()->grid();
        QCOMPARE(grid.nx(), size_t(11));
        QCOMPARE(grid.ny(), size_t(9));
        QCOMPARE(grid.value(0, 0), 8.0); // the rim of the bowl...
        QCOMPARE(grid.value(5, 4), 0.0); // ...and its bottom
        QVERIFY(window->view_3d()->style().hidden);
        QVERIFY(!window->view_3d()->style().zone);
    }

    void stylesAndDataPointsReachTheGraph() {
        Document doc;
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 5));
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        setup.tabs()->setCurrentWidget(setup.page<StylesPage>());
        auto* width = qobject_cast<QSpinBox*>(setup.page<StylesPage>()->table()->cellWidget(0, 1));
        QVERIFY(width);
        width->setValue(4);
        setup.tabs()->setCurrentWidget(setup.page<DataPage>());
        setup.page<DataPage>()->add_set(QStringLiteral("measured"));
        QTableWidget* table = setup.page<DataPage>()->table();
        table->setItem(0, 0, new QTableWidgetItem(QStringLiteral("-1")));
        table->setItem(0, 1, new QTableWidgetItem(QStringLiteral("-1.2")));
        table->setItem(1, 0, new QTableWidgetItem(QStringLiteral("1")));
        table->setItem(1, 1, new QTableWidgetItem(QStringLiteral("0.9")));
        QVERIFY(setup.apply());
        const auto& graph = doc.window.document().Graphs[0];
        QCOMPARE(graph.StyleOf(0).LineWidth, 4);
        QCOMPARE(graph.Data.DataSets.size(), size_t(1));
        QCOMPARE(*graph.Data.DataSets.front().GetYDataPoint(1), std::string("0.9"));
    }

    void graphsAreRenamedCheckedAndTheSheetStaysModeless() {
        Document doc;
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 5));
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        QVERIFY(setup.add_graph(QStringLiteral("Other")));
        setup.graph_list()->setCurrentRow(0);
        QVERIFY(!setup.rename_graph(QStringLiteral("  ")));
        QVERIFY(!setup.rename_graph(QStringLiteral("Other"))); // another graph's name
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("exists already")));
        QVERIFY(setup.rename_graph(QStringLiteral("Cubes")));
        QCOMPARE(doc.window.document().Graphs[0].Data.Name, std::string("Cubes"));
        QCOMPARE(setup.graph_list()->item(0)->text(), QStringLiteral("Cubes"));
        QVERIFY(setup.windowTitle().endsWith(QStringLiteral(": Cubes")));
        QVERIFY(setup.apply()); // the copy carries the new name too
        QCOMPARE(doc.window.document().Graphs[0].Data.Name, std::string("Cubes"));

        // Data Check runs the checks without applying, and says when all pass.
        setup.page<VariablesPage>()->high()->setValue(-2);
        QVERIFY(!setup.data_check());
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("are equal")));
        setup.page<VariablesPage>()->high()->setValue(3);
        QVERIFY(setup.data_check());
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("no errors")));
        QCOMPARE(doc.window.document().Graphs[0].Data.XAxisVar->high().real(), 2.0);

        // From the menu the sheet opens beside the document, once.
        MainFrame frame(doc.scratch.services);
        DocumentWindow* window = frame.new_document();
        type_line(window->editor(), QStringLiteral("cube(x) = x^3"));
        QVERIFY(window->add_function_graph("cube[x]", "x", -2, 2, 5));
        QAction* open = frame.findChild<QAction*>(QStringLiteral("graphSetup"));
        open->trigger();
        open->trigger();
        const auto sheets = window->findChildren<GraphSetupDialog*>();
        QCOMPARE(sheets.size(), 1);
        QVERIFY(sheets.front()->isVisible());
        QVERIFY(!sheets.front()->isModal());
        QVERIFY(!QApplication::activeModalWidget());
    }

    void theWizardChecksThePageItLeaves() {
        Document doc;
        GraphSetupDialog wizard(doc.window, -1, GraphSetupDialog::Mode::Wizard);
        QVERIFY(wizard.add_graph(QStringLiteral("Cubic")));
        wizard.next(); // Functions
        wizard.next(); // nothing to graph: it stays
        QCOMPARE(wizard.tabs()->currentWidget(), static_cast<QWidget*>(wizard.page<FunctionsPage>()));
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("nothing to graph")));
        wizard.previous(); // back is checked as well
        QCOMPARE(wizard.tabs()->currentWidget(), static_cast<QWidget*>(wizard.page<FunctionsPage>()));
        select_and_add(wizard.page<FunctionsPage>(), QStringLiteral("cube[x]"));
        wizard.next();
        QCOMPARE(wizard.tabs()->currentWidget(), static_cast<QWidget*>(wizard.page<VariablesPage>()));
        wizard.page<VariablesPage>()->points()->setValue(1);
        wizard.next();
        QCOMPARE(wizard.tabs()->currentWidget(), static_cast<QWidget*>(wizard.page<VariablesPage>()));
        wizard.page<VariablesPage>()->points()->setValue(11);
        wizard.next();
        wizard.next();
        QCOMPARE(wizard.tabs()->currentWidget(), static_cast<QWidget*>(wizard.page<LabelsPage>()));
        // The titles must all be there.
        wizard.page<LabelsPage>()->footer()->clear();
        const int before = doc.scratch.messages.size();
        wizard.next();
        QCOMPARE(wizard.tabs()->currentWidget(), static_cast<QWidget*>(wizard.page<LabelsPage>()));
        QCOMPARE(doc.scratch.messages.size(), before + 1);
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("footer")));
        QVERIFY(!wizard.apply()); // Finish from the labels page checks them too
        wizard.page<LabelsPage>()->footer()->setText(QStringLiteral("made in a wizard"));
        wizard.next();
        QCOMPARE(wizard.tabs()->currentWidget(), static_cast<QWidget*>(wizard.page<TypesPage>()));
        QVERIFY(wizard.apply());
        QCOMPARE(doc.window.document().Graphs[0].Data.Footer, std::string("made in a wizard"));
    }

    void aFunctionAddedTakesTheLowestSeriesAndTheLabelsMoveUp() {
        Document doc;
        type_line(doc.window.editor(), QStringLiteral("sq(x) = x^2"));
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 5));
        doc.window.document().Graphs[0].Data.SetNote(" (0 , 0) ", 0, 2, -1, false); // cube's third point
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        setup.tabs()->setCurrentWidget(setup.page<FunctionsPage>());
        select_and_add(setup.page<FunctionsPage>(), QStringLiteral("sq[x]"));
        QVERIFY(setup.apply());
        setup.temp(); // storing the pages again moves nothing more
        QVERIFY(setup.apply());
        quorvex::graph::GraphData& graph = doc.window.document().Graphs[0].Data;
        QCOMPARE(graph.GetNumLabels(-1), 1);
        QVERIFY(graph.GetLabel(1, 2)); // sq[x] is series 0 now
    }

    void aRemovedDataSetTakesItsLabelsAlong() {
        Document doc;
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 5));
        quorvex::graph::GraphData& graph = doc.window.document().Graphs[0].Data;
        for (const char* name : {"a", "b"}) {
            quorvex::graph::StrDataPnts& set = graph.DataSets.emplace_back();
            set.SetName(name);
            for (int p = 0; p < 5; ++p) {
                set.PutXDataPoint(std::to_string(p - 2).c_str(), p);
                set.PutYDataPoint(std::to_string(p).c_str(), p);
            }
        }
        graph.SetNote(" (0 , 2) ", 1, 2, -1, false); // on a
        graph.SetNote(" (0 , 2) ", 2, 3, -1, false); // on b
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        setup.tabs()->setCurrentWidget(setup.page<DataPage>());
        setup.page<DataPage>()->sets()->setCurrentIndex(0);
        QVERIFY(setup.page<DataPage>()->remove_set()); // a
        QVERIFY(setup.apply());
        QCOMPARE(graph.GetNumLabels(-1), 1);
        QVERIFY(graph.GetLabel(1, 3)); // b's label on b's new series
    }

    void leavingAPageChecksItAndAFailureKeepsTheUserThere() {
        Document doc;
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 41));
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        QTabWidget* tabs = setup.tabs();
        tabs->setCurrentWidget(setup.page<VariablesPage>());
        setup.page<VariablesPage>()->points()->setValue(1);
        tabs->setCurrentWidget(setup.page<LabelsPage>());
        QCOMPARE(tabs->currentWidget(), static_cast<QWidget*>(setup.page<VariablesPage>()));
        QCOMPARE(doc.count(QStringLiteral("needs at least 2 points")), 1);
        setup.page<VariablesPage>()->points()->setValue(11);
        tabs->setCurrentWidget(setup.page<LabelsPage>());
        QCOMPARE(tabs->currentWidget(), static_cast<QWidget*>(setup.page<LabelsPage>()));
        setup.page<LabelsPage>()->footer()->clear();
        const int before = doc.scratch.messages.size();
        tabs->setCurrentIndex(0); // back to "Graphs" is a page left as well
        QCOMPARE(tabs->currentWidget(), static_cast<QWidget*>(setup.page<LabelsPage>()));
        QCOMPARE(doc.scratch.messages.size(), before + 1);
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("footer")));
        setup.page<LabelsPage>()->footer()->setText(QStringLiteral("checked on the way out"));
        tabs->setCurrentWidget(setup.page<TypesPage>());
        QCOMPARE(tabs->currentWidget(), static_cast<QWidget*>(setup.page<TypesPage>()));
        QCOMPARE(doc.scratch.messages.size(), before + 1);
        QCOMPARE(setup.temp().Data.XAxisVar->num_points(), 11L);

        // A new graph holds nothing yet: the user may leave the functions for the data points.
        QVERIFY(setup.add_graph(QStringLiteral("empty")));
        tabs->setCurrentWidget(setup.page<FunctionsPage>());
        tabs->setCurrentWidget(setup.page<DataPage>());
        QCOMPARE(tabs->currentWidget(), static_cast<QWidget*>(setup.page<DataPage>()));
        QVERIFY(!setup.apply());
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("nothing to graph")));
    }

    void theSheetIsDisabledWhileAGraphIsBuilt() {
        Document doc;
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 41));
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        bool seen = false, enabled_during = true, applied_during = true;
        QObject::connect(&doc.window, &DocumentWindow::graphBuilding, &setup, [&](bool building) {
            if (!building || seen) return;
            seen = true;
            enabled_during = setup.tabs()->isEnabled();
            applied_during = setup.apply();
        });
        QVERIFY(doc.window.show_graph(0));
        QVERIFY(seen);
        QVERIFY(!enabled_during);
        QVERIFY(!applied_during);
        QCOMPARE(doc.count(QStringLiteral("A graph is being built")), 1);
        QVERIFY(setup.tabs()->isEnabled()); // on again when the build is over
        QVERIFY(setup.apply());
        QCOMPARE(doc.count(QStringLiteral("A graph is being built")), 1);
    }

    void theFunctionsPageRefusesWithItsMessagesAndOffersToEdit() {
        Document doc;
        type_line(doc.window.editor(), QStringLiteral("tide(t) = sin(t)"));
        GraphSetupDialog setup(doc.window, -1, GraphSetupDialog::Mode::Pages);
        QVERIFY(setup.add_graph(QStringLiteral("g")));
        setup.tabs()->setCurrentWidget(setup.page<FunctionsPage>());
        auto* functions = setup.page<FunctionsPage>();
        QVERIFY(!functions->remove_selected());
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("no functions to remove")));
        select_and_add(functions, QString());
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("Select a function")));
        select_and_add(functions, QStringLiteral("cube[x]"));
        select_and_add(functions, QStringLiteral("cube[x]"));
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("graphed already")));
        QCOMPARE(functions->chosen()->count(), 1);
        // tide[t] shares no variable with cube[x]: No leaves it; Yes opens it to be edited.
        doc.scratch.save_answers = {QMessageBox::No};
        select_and_add(functions, QStringLiteral("tide[t]"));
        QCOMPARE(doc.count(QStringLiteral("Do you want to edit it?")), 1);
        QVERIFY(!doc.window.findChild<ManagerDialog*>());
        select_and_add(functions, QStringLiteral("tide[t]"));
        QCOMPARE(functions->chosen()->count(), 1);
        auto* manager = doc.window.findChild<ManagerDialog*>();
        QVERIFY(manager && manager->isVisible());
        QCOMPARE(manager->name()->text(), QStringLiteral("tide[t]"));
        functions->chosen()->clearSelection();
        QVERIFY(!functions->remove_selected());
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("Select a function")));
        functions->chosen()->item(0)->setSelected(true);
        QVERIFY(functions->remove_selected());
        QCOMPARE(functions->chosen()->count(), 0);
    }

    void aMissingAxisOrVariableIsOfferedRatherThanRefused() {
        Document doc;
        GraphSetupDialog setup(doc.window, -1, GraphSetupDialog::Mode::Pages);
        QVERIFY(setup.add_graph(QStringLiteral("g")));
        setup.tabs()->setCurrentWidget(setup.page<FunctionsPage>());
        select_and_add(setup.page<FunctionsPage>(), QStringLiteral("cube[x]"));
        // Applied at once: no axis variable was chosen, and the default is offered.
        doc.scratch.save_answers = {QMessageBox::No};
        QVERIFY(!setup.apply());
        QCOMPARE(doc.count(QStringLiteral("No axis variable has been chosen")), 1);
        QVERIFY(!doc.window.document().Graphs[0].Data.XAxisVar);
        QVERIFY(setup.add_graph(QStringLiteral("h")));
        select_and_add(setup.page<FunctionsPage>(), QStringLiteral("cube[x]"));
        QVERIFY(setup.apply()); // Yes
        QCOMPARE(doc.count(QStringLiteral("No axis variable has been chosen")), 2);
        QCOMPARE(doc.window.document().Graphs[1].Data.XAxisVar->name(), std::string("x"));

        type_line(doc.window.editor(), QStringLiteral("line(x, k) = k*x"));
        QVERIFY(!doc.window.add_function_graph("line[x,k]", "x", -2, 2, 11)); // k has no value
        GraphSetupDialog second(doc.window, static_cast<int>(doc.window.document().Graphs.size()) - 1,
                                GraphSetupDialog::Mode::Pages);
        QStringList asked;
        second.ask_value = [&asked](const QString& variable) -> std::optional<QString> {
            asked << variable;
            return QStringLiteral("3");
        };
        doc.scratch.save_answers = {QMessageBox::No};
        QVERIFY(!second.apply());
        QVERIFY(asked.isEmpty());
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("' k ' must be defined")));
        QVERIFY(doc.count(QStringLiteral("Do you want to define it now?")) == 1);
        QVERIFY(second.apply()); // Yes, and the value 3
        QCOMPARE(asked, QStringList{QStringLiteral("k")});
        quorvex::engine::complex k;
        QVERIFY(doc.window.hub().ComputeValue("k", k));
        QCOMPARE(k.real(), 3.0);
    }

    void theDataPageNamesRemovesAndLoadsSetsAndMovesOnWithEnter() {
        Document doc;
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 5));
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        setup.show();
        setup.tabs()->setCurrentWidget(setup.page<DataPage>());
        auto* data = setup.page<DataPage>();
        QVERIFY(data->add_set(QStringLiteral("a")));
        QVERIFY(!data->add_set(QStringLiteral("a")));
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("exists already")));
        QCOMPARE(data->sets()->count(), 1);

        // Enter and Tab: X, then Y, then the next point; past the last row a row is added.
        QTableWidget* table = data->table();
        table->setFocus();
        table->setCurrentCell(0, 0);
        QTest::keyClicks(table, QStringLiteral("1")); // typing opens the cell
        QWidget* editor = table->indexWidget(table->currentIndex());
        QVERIFY(editor);
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(table->currentRow(), 0);
        QCOMPARE(table->currentColumn(), 1);
        QCOMPARE(table->item(0, 0)->text(), QStringLiteral("1"));
        editor = table->indexWidget(table->currentIndex()); // the next cell is open for its value
        QVERIFY(editor);
        QTest::keyClicks(editor, QStringLiteral("8"));
        QTest::keyClick(editor, Qt::Key_Tab);
        QCOMPARE(table->item(0, 1)->text(), QStringLiteral("8"));
        QCOMPARE(table->currentRow(), 1);
        QCOMPARE(table->currentColumn(), 0);
        table->setCurrentCell(table->rowCount() - 1, 1);
        const int rows = table->rowCount();
        QTest::keyClick(table, Qt::Key_Return);
        QCOMPARE(table->rowCount(), rows + 1);
        QCOMPARE(table->currentRow(), rows);
        QCOMPARE(setup.result(), 0); // Enter never reached the sheet's OK

        // Removing asks first.
        doc.scratch.save_answers = {QMessageBox::No};
        QVERIFY(!data->remove_set());
        QCOMPARE(data->sets()->count(), 1);
        QVERIFY(doc.scratch.messages.last().contains(QStringLiteral("remove the data set ' a '")));
        QVERIFY(data->remove_set());
        QCOMPARE(data->sets()->count(), 0);

        // A data file becomes a set named after it; loaded again it is added to it, or (No) a set of its own.
        QFile file(doc.scratch.file_path(QStringLiteral("tide.dat")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("t  level\n0 1.5\n1 2.5\n2 2\n");
        file.close();
        QVERIFY(data->load_file(file.fileName()));
        QCOMPARE(data->sets()->currentText(), QStringLiteral("tide"));
        QVERIFY(data->load_file(file.fileName())); // Yes: added
        doc.scratch.save_answers = {QMessageBox::No};
        QVERIFY(data->load_file(file.fileName()));
        QCOMPARE(data->sets()->currentText(), QStringLiteral("tide #1"));
        doc.scratch.save_answers = {QMessageBox::Cancel};
        QVERIFY(!data->load_file(file.fileName()));
        QVERIFY(!data->load_file(doc.scratch.file_path(QStringLiteral("missing.dat"))));
        const auto& sets = setup.temp().Data.DataSets;
        QCOMPARE(sets.size(), size_t(2));
        QCOMPARE(sets.front().GetNumXDataPoints(), 6);
        QCOMPARE(*sets.front().GetYDataPoint(4), std::string("2.5"));
        QCOMPARE(sets.back().GetNumXDataPoints(), 3);
    }

    void threeDimensionalDataFilesMakeASetForEachZ() {
        Document doc;
        GraphSetupDialog setup(doc.window, -1, GraphSetupDialog::Mode::Pages);
        QVERIFY(setup.add_graph(QStringLiteral("levels")));
        setup.tabs()->setCurrentWidget(setup.page<DataPage>());
        auto* data = setup.page<DataPage>();
        const auto write = [&doc](const char* name, const char* text) {
            QFile file(doc.scratch.file_path(QString::fromLatin1(name)));
            if (!file.open(QIODevice::WriteOnly)) return QString();
            file.write(text);
            return file.fileName();
        };
        // Three values a line: asked how to read them; a point without Z is asked about too.
        const QString levels = write("levels.dat", "0 1 5\n1 2 5\n0 3 7\n1 4 7.0\n2 8\n");
        doc.scratch.save_answers = {QMessageBox::Yes, QMessageBox::Yes};
        QVERIFY(data->load_file(levels));
        QCOMPARE(doc.count(QStringLiteral("three values on each line")), 1);
        QCOMPARE(doc.count(QStringLiteral("1 of its points have none, the first is point 5")), 1);
        QCOMPARE(data->sets()->count(), 2);
        QVERIFY(data->show_z()->isChecked());
        QCOMPARE(data->z_value()->text(), QStringLiteral("7"));
        {
            const auto& sets = setup.temp().Data.DataSets;
            QCOMPARE(*sets.front().GetZDataPoint(), std::string("5"));
            QCOMPARE(sets.back().GetNumXDataPoints(), 2);
            QCOMPARE(*sets.back().GetYDataPoint(1), std::string("4"));
        }
        // Two values a line in a 3-dimensional graph: asked, No leaves the file out.
        doc.scratch.save_answers = {QMessageBox::No};
        QVERIFY(!data->load_file(write("flat.dat", "0 1\n1 2\n")));
        QCOMPARE(doc.count(QStringLiteral("holds 2-dimensional data points")), 1);
        QCOMPARE(data->sets()->count(), 2);
        // Added to a set at another Z: No keeps the set's Z.
        data->sets()->setCurrentIndex(0);
        doc.scratch.save_answers = {QMessageBox::Yes, QMessageBox::No};
        QVERIFY(data->load_file(write("more.dat", "2 9 6\n")));
        QCOMPARE(doc.count(QStringLiteral("lies at Z = 5. Do you want the data set to take")), 1);
        QCOMPARE(setup.temp().Data.DataSets.front().GetNumXDataPoints(), 3);
        QCOMPARE(*setup.temp().Data.DataSets.front().GetZDataPoint(), std::string("5"));
        // Several Z values can not go into one set: as new sets, each Z a set has joins it on Yes.
        doc.scratch.save_answers = {QMessageBox::Yes, QMessageBox::Yes, QMessageBox::Yes, QMessageBox::No};
        QVERIFY(data->load_file(write("two.dat", "3 1 5\n3 2 7\n")));
        QCOMPARE(doc.count(QStringLiteral("lie at 2 different Z values")), 1);
        QCOMPARE(doc.count(QStringLiteral("lies at Z = 5 already")), 1);
        QCOMPARE(doc.count(QStringLiteral("lies at Z = 7 already")), 1);
        QCOMPARE(data->sets()->count(), 3);
        QCOMPARE(data->sets()->currentText(), QStringLiteral("two z=7"));
        QCOMPARE(setup.temp().Data.DataSets.front().GetNumXDataPoints(), 4);
    }

    void aZValueMakesTheGraphThreeDimensionalButNotBesideFunctions() {
        Document doc;
        GraphSetupDialog setup(doc.window, -1, GraphSetupDialog::Mode::Pages);
        QVERIFY(setup.add_graph(QStringLiteral("plain")));
        setup.tabs()->setCurrentWidget(setup.page<DataPage>());
        auto* data = setup.page<DataPage>();
        QVERIFY(data->add_set(QStringLiteral("a")));
        QVERIFY(data->add_set(QStringLiteral("b")));
        doc.scratch.save_answers = {QMessageBox::No};
        QVERIFY(!data->set_z(QStringLiteral("1")));
        QCOMPARE(doc.count(QStringLiteral("A Z value makes this graph 3-dimensional")), 1);
        QVERIFY(data->z_value()->text().isEmpty());
        QVERIFY(!setup.temp().Data.DataSets.back().ZPoint);
        QVERIFY(data->set_z(QStringLiteral("1")));
        data->sets()->setCurrentIndex(0);
        QVERIFY(data->set_z(QStringLiteral("2"))); // the graph is 3-dimensional already: no question
        QCOMPARE(doc.count(QStringLiteral("A Z value makes this graph 3-dimensional")), 2);
        QCOMPARE(setup.temp().Data.GetGraphType(), 2);
        QVERIFY(data->set_z(QString())); // cleared
        QVERIFY(!setup.temp().Data.DataSets.front().ZPoint);

        // Beside a function a Z value and a 3-dimensional file are refused.
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 5));
        GraphSetupDialog functions(doc.window, static_cast<int>(doc.window.document().Graphs.size()) - 1,
                                   GraphSetupDialog::Mode::Pages);
        functions.tabs()->setCurrentWidget(functions.page<DataPage>());
        auto* page = functions.page<DataPage>();
        QVERIFY(page->add_set(QStringLiteral("c")));
        QVERIFY(!page->set_z(QStringLiteral("3")));
        QVERIFY(page->z_value()->text().isEmpty());
        QFile file(doc.scratch.file_path(QStringLiteral("cube.dat")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("0 1 2\n");
        file.close();
        doc.scratch.save_answers = {QMessageBox::Yes};
        QVERIFY(!page->load_file(file.fileName()));
        QCOMPARE(doc.count(QStringLiteral("You can not graph both equations and data points in 3-dimensions")), 2);
    }

    void widthsApplyToAllAndColorsAreTheUsersDefaults() {
        Document doc;
        QVERIFY(doc.window.add_function_graph("cube[x]", "x", -2, 2, 5));
        type_line(doc.window.editor(), QStringLiteral("square(x) = x^2"));
        GraphSetupDialog setup(doc.window, 0, GraphSetupDialog::Mode::Pages);
        setup.tabs()->setCurrentWidget(setup.page<FunctionsPage>());
        select_and_add(setup.page<FunctionsPage>(), QStringLiteral("square[x]"));
        setup.tabs()->setCurrentWidget(setup.page<StylesPage>());
        auto* styles = setup.page<StylesPage>();
        QCOMPARE(styles->table()->rowCount(), 2);
        styles->width_for_all()->setValue(6);
        styles->apply_to_all();
        QVERIFY(setup.apply());
        const auto& graph = doc.window.document().Graphs[0];
        QCOMPARE(graph.StyleOf(0).LineWidth, 6);
        QCOMPARE(graph.StyleOf(1).LineWidth, 6);
        QVERIFY(graph.Data.ApplyAllLineWidths);

        auto* colors = setup.page<ColorsPage>();
        colors->buttons()[0]->set_color(0x123456);
        doc.scratch.save_answers = {QMessageBox::No};
        QVERIFY(!colors->save_defaults());
        quorvex::store::IniFile& ini = *doc.scratch.services.settings;
        QVERIFY(ini.GetString(quorvex::graph::k_default_colors_section, quorvex::graph::graph_colors()[0].ini_key, "")
                    .empty());
        QVERIFY(colors->save_defaults());
        quorvex::store::IniFile reread(doc.scratch.file_path(QStringLiteral("Quorvex.ini")).toStdString());
        quorvex::graph::GraphData fresh;
        fresh.SetDefaultColors(reread);
        QCOMPARE(fresh.*(quorvex::graph::graph_colors()[0].member), quorvex::store::TColor(0x123456));
        colors->buttons()[0]->set_color(0xFF);
        doc.scratch.save_answers = {QMessageBox::No};
        QVERIFY(!colors->load_defaults());
        QCOMPARE(colors->buttons()[0]->color(), quorvex::store::TColor(0xFF));
        QVERIFY(colors->load_defaults());
        QCOMPARE(colors->buttons()[0]->color(), quorvex::store::TColor(0x123456));
    }
};

QTEST_MAIN(SetupGuiTest)
#include "setup_gui_test.moc"
