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
#include "graph/graph_limits.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
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
};

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
};

QTEST_MAIN(SetupGuiTest)
#include "setup_gui_test.moc"
