// The variable and function lists offscreen: what the editor declares appears, what the list
// deletes is gone from the engine, names go into the editor.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/lists/list_pane.h"
#include "gui/lists/manager_dialog.h"
#include "gui/shell/main_frame.h"
#include "gui/tools/function_solver_dialog.h"
#include "store/ini_file.h"

#include <QAction>
#include <QCheckBox>

#include <QItemSelectionModel>
#include <QLineEdit>
#include <QTableView>
#include <QTextBlock>
#include <QtTest>

using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

class ListsGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void declarationsAppearAndDeletionsReachTheEngine() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.show();
        window.toggle_list(true);
        window.toggle_list(false);
        ListPane* variables = window.variable_list();
        ListPane* functions = window.function_list();
        QVERIFY(variables && variables->isVisible());
        type_line(window.editor(), QStringLiteral("a = 2"));
        type_line(window.editor(), QStringLiteral("b = 3"));
        type_line(window.editor(), QStringLiteral("c = 0, 1, 11"));
        type_line(window.editor(), QStringLiteral("twice(x) = 2*x"));
        QTableView* view = variables->view();
        QCOMPARE(view->model()->rowCount(), 3);
        QCOMPARE(view->model()->index(0, 0).data().toString(), QStringLiteral("a"));
        QCOMPARE(view->model()->index(0, 1).data().toString(), QStringLiteral("2"));
        QVERIFY(view->model()->index(2, 1).data().toString().contains(QLatin1Char(','))); // a range shows it
        QCOMPARE(functions->view()->model()->rowCount(), 1);
        QCOMPARE(functions->view()->model()->index(0, 1).data().toString(), QStringLiteral("2*x"));

        // Two selected: deleted without a question.
        view->selectionModel()->select(view->model()->index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        view->selectionModel()->select(view->model()->index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        QCOMPARE(variables->delete_selection(), 2);
        QVERIFY(scratch.messages.filter(QStringLiteral("Are you sure")).isEmpty());
        QCOMPARE(view->model()->rowCount(), 1);
        QVERIFY(!window.parser().is_variable("a"));

        // A later line names the deleted variable: the engine's not-defined message.
        type_line(window.editor(), QStringLiteral("a + 1"));
        QVERIFY(window.editor()->last_error().contains(QStringLiteral("' a '")));

        // The selected name goes to the editor's caret.
        view->setCurrentIndex(view->model()->index(0, 0));
        variables->insert_selection_into_editor();
        QCOMPARE(window.editor()->textCursor().block().text(), QStringLiteral("c"));

        // Clearing all asks first.
        QVERIFY(functions->clear_all());
        QVERIFY(scratch.messages.last().contains(QStringLiteral("delete all the functions")));
        QCOMPARE(window.parser().function_count(), 0);
    }

    void theManagersRefuseBadNamesAndChangeTheEngine() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        ManagerDialog variables(window, ManagerDialog::Kind::Variables);
        QCOMPARE(variables.windowTitle(), QStringLiteral("Variables Manager"));
        variables.name()->setText(QStringLiteral("1st"));
        variables.value()->setText(QStringLiteral("5"));
        QVERIFY(!variables.add());
        QCOMPARE(scratch.messages.last(),
                 QStringLiteral("Variables Manager: The first character of a variable can not be a number!"));
        variables.name()->setText(QStringLiteral("rate"));
        variables.value()->setText(QStringLiteral("1 000"));
        QVERIFY(!variables.add());
        QVERIFY(scratch.messages.last().contains(QStringLiteral("No spaces are allowed")));
        variables.value()->setText(QStringLiteral("0.05"));
        QVERIFY(variables.add());
        QVERIFY(window.parser().is_variable("rate"));
        QVERIFY(!variables.edit()); // unchanged
        QVERIFY(scratch.messages.last().contains(QStringLiteral("You have not changed the value of 'rate'!")));
        variables.value()->setText(QStringLiteral("0.07"));
        QVERIFY(variables.edit());
        QCOMPARE(window.parser().get_var_value("rate").real(), 0.07);
        QVERIFY(variables.remove()); // asked, and the collected question says Yes
        QVERIFY(!window.parser().is_variable("rate"));
        variables.name()->setText(QStringLiteral("nothing"));
        QVERIFY(!variables.remove());
        QCOMPARE(scratch.messages.last(), QStringLiteral("Variables Manager: 'nothing' is not a defined variable!"));

        ManagerDialog functions(window, ManagerDialog::Kind::Functions);
        QCOMPARE(functions.windowTitle(), QStringLiteral("Function Manager"));
        functions.name()->setText(QStringLiteral("area"));
        functions.value()->setText(QStringLiteral("w*h"));
        QVERIFY(!functions.add());
        QVERIFY(scratch.messages.last().contains(QStringLiteral("These brackets must contain the parameter list")));
        functions.name()->setText(QStringLiteral("area[w,h]"));
        QVERIFY(functions.add());
        QCOMPARE(window.parser().function_count(), 1);
    }

    void managersSearchCopyAndRememberTheirInstructions();
    void incrementalValuesChangeEveryDocumentAndTheSetting();
};

void ListsGuiTest::managersSearchCopyAndRememberTheirInstructions() {
    ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
    DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
    type_line(window.editor(), QStringLiteral("rate = 0.05"));
    type_line(window.editor(), QStringLiteral("range = 0, 1, 11"));
    type_line(window.editor(), QStringLiteral("area(w, h) = w*h"));

    // The managers are made once per document and reused.
    ManagerDialog* variables = window.open_manager(true, QStringLiteral("range"));
    QCOMPARE(window.open_manager(true), variables);
    QCOMPARE(variables->name()->text(), QStringLiteral("range"));
    variables->name()->setText(QStringLiteral("ra"));
    QVERIFY(variables->search()); // by its beginning: the first that has it
    QCOMPARE(variables->name()->text(), QStringLiteral("rate"));
    variables->name()->setText(QStringLiteral("zeta"));
    QVERIFY(!variables->search());
    QCOMPARE(scratch.messages.last(), QStringLiteral("Variables Manager: 'zeta' is not a defined variable!"));
    QVERIFY(variables->select(QStringLiteral("rate")));
    QVERIFY(variables->copy_to_editor());
    QCOMPARE(window.editor()->textCursor().block().text(), QStringLiteral("rate = 0.05"));
    QVERIFY(variables->select(QStringLiteral("range")));
    QVERIFY(variables->remove()); // the one before is shown next
    QCOMPARE(variables->name()->text(), QStringLiteral("rate"));
    QCOMPARE(variables->value()->text(), QStringLiteral("0.05"));

    ManagerDialog* functions = window.open_manager(false, QStringLiteral("AREA"));
    QCOMPARE(functions->value()->text(), QStringLiteral("w*h"));
    // Hiding the instructions is kept for the next manager.
    functions->findChild<QCheckBox*>()->setChecked(false);
    QCOMPARE(scratch.services.settings->GetInt("OPTIONS", "FuncMgrInstructions", 1), 0);
    QCOMPARE(scratch.services.settings->GetInt("OPTIONS", "VariMgrInstructions", 1), 1);

    // The function list opens the solver on a function of the document; the list prints.
    window.toggle_list(false);
    QTableView* view = window.function_list()->view();
    view->setCurrentIndex(view->model()->index(0, 0));
    QVERIFY(window.function_list()->printable_html().contains(QStringLiteral("<td>w*h</td>")));
    FunctionSolverDialog* solver =
        window.open_solver(window.function_list()->selected_name() + QStringLiteral(" = w*h"), {});
    solver->parameter_field(0)->setText(QStringLiteral("3"));
    solver->parameter_field(1)->setText(QStringLiteral("rate*100"));
    QVERIFY(solver->solve());
    QCOMPARE(solver->solution(), QStringLiteral("15"));
}

void ListsGuiTest::incrementalValuesChangeEveryDocumentAndTheSetting() {
    ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
    MainFrame frame(scratch.services);
    DocumentWindow* first = frame.new_document();
    DocumentWindow* second = frame.new_document();
    for (DocumentWindow* window : {first, second}) {
        type_line(window->editor(), QStringLiteral("step = 1, 2, 3"));
        window->toggle_list(true);
    }
    const auto shown = [](DocumentWindow* window) {
        return window->variable_list()->view()->model()->index(0, 1).data().toString();
    };
    const QString with_range = shown(first);
    QAction* incremental = frame.action(QStringLiteral("viewIncrementalVariables"));
    QVERIFY(incremental->isChecked());
    incremental->trigger();
    QCOMPARE(scratch.services.settings->GetInt("OPTIONS", "IncrementalVariables", 1), 0);
    QVERIFY(shown(first) != with_range);
    QCOMPARE(shown(second), shown(first));
    Q_EMIT second->frameCommand(QStringLiteral("viewIncrementalVariables")); // the list's menu asks the frame
    QCOMPARE(shown(first), with_range);
    QVERIFY(incremental->isChecked());
}

QTEST_MAIN(ListsGuiTest)
#include "lists_gui_test.moc"
