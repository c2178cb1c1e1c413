// The matrix tool offscreen: matrices typed into the grid, named by their shape, operations and the
// linear solver adding their results to the list, refusals with their messages, and the matrices
// kept with the document.
#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/tools/matrix_dialog.h"
#include "gui/tools/tool_windows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

using namespace quorvex::gui;
using quorvex::numerics::QvxMatrix;

namespace {

// The editor the view opened: closed editors linger until the event loop deletes them.
QLineEdit* open_editor(QTableView* view) {
    for (QLineEdit* editor : view->findChildren<QLineEdit*>())
        if (editor->isVisible()) return editor;
    return nullptr;
}

// Types each row's cells into the grid of the selected matrix, as the user does.
void type_cells(MatrixDialog* tool, const QList<QStringList>& rows) {
    QTableView* grid = tool->grid();
    for (int i = 0; i < rows.size(); ++i)
        for (int j = 0; j < rows[i].size(); ++j) {
            grid->edit(grid->model()->index(i, j));
            QLineEdit* cell = open_editor(grid);
            QVERIFY(cell);
            cell->selectAll();
            QTest::keyClicks(cell, rows[i][j]);
            QTest::keyClick(cell, Qt::Key_Return);
            // The delegate commits on its next turn of the event loop.
            QCoreApplication::processEvents();
        }
}

QStringList names(const MatrixDialog* tool) {
    QStringList shown;
    for (int r = 0; r < tool->list()->model()->rowCount(); ++r) shown << tool->list()->model()->index(r, 0).data().toString();
    return shown;
}

} // namespace

class MatrixGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSystemSolvesOperationsAddResultsAndTheMatricesAreKept() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        QString saved;
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            window.show();
            auto* tool = static_cast<MatrixDialog*>(window.tools().open(Tool::Matrix));
            QVERIFY(tool);
            QCOMPARE(tool->windowTitle(), QStringLiteral("Matrix Utility"));
            // The precision advice comes once, on first use.
            QVERIFY(scratch.messages.value(0).startsWith(QStringLiteral("Matrix Utility Precision Warning: ")));

            // 2x + y - z = 8, -3x - y + 2z = -11, -2x + y + 2z = -3: x = 2, y = 3, z = -1.
            tool->rows()->setValue(3);
            tool->columns()->setValue(3);
            tool->add_matrix();
            type_cells(tool, {{"2", "1", "-1"}, {"-3", "-1", "2"}, {"-2", "1", "2"}});
            tool->columns()->setValue(1); // a default name follows the shape
            QCOMPARE(tool->name()->text(), QStringLiteral("Vector1"));
            tool->columns()->setValue(3);
            QCOMPARE(tool->name()->text(), QStringLiteral("Matrix1"));
            QCOMPARE(tool->grid()->model()->index(2, 2).data().toString(), QStringLiteral("2")); // cells kept
            tool->select(-1); // the size is then that of the next new matrix
            tool->columns()->setValue(1);
            tool->add_matrix();
            type_cells(tool, {{"8"}, {"-22/2"}, {"-3"}});
            QCOMPARE(names(tool), (QStringList{"Matrix1", "Vector1"}));

            tool->linear_solver()->click();
            tool->matrix_a()->setCurrentText(QStringLiteral("Matrix1"));
            tool->vector_b()->setCurrentText(QStringLiteral("Vector1"));
            QVERIFY(tool->compute());
            QCOMPARE(names(tool).last(), QStringLiteral("Solution(Matrix1,Vector1)"));
            QCOMPARE(tool->grid()->model()->index(0, 0).data().toString(), QStringLiteral("2"));
            QCOMPARE(tool->grid()->model()->index(1, 0).data().toString(), QStringLiteral("3"));
            QCOMPARE(tool->grid()->model()->index(2, 0).data().toString(), QStringLiteral("-1"));

            // A singular system says so and adds nothing.
            tool->select(0);
            type_cells(tool, {{"1", "2", "3"}, {"2", "4", "6"}});
            scratch.messages.clear();
            QVERIFY(!tool->compute());
            QVERIFY(scratch.messages.value(0).startsWith(QStringLiteral("Matrix Utility: ")));
            QVERIFY(scratch.messages.value(0).contains(QStringLiteral("singular")));
            QCOMPARE(names(tool).size(), 3);

            // Matrix math: a number goes to the answer, a matrix to the list.
            tool->matrix_math()->click();
            tool->first()->setCurrentText(QStringLiteral("Matrix1"));
            tool->operation()->setCurrentText(QStringLiteral("Determinant"));
            QVERIFY(tool->compute());
            QCOMPARE(tool->answer()->text(), QStringLiteral("Determinant(Matrix1) 0"));
            tool->operation()->setCurrentText(QStringLiteral("* (Scalar)"));
            tool->scalar()->setText(QStringLiteral("1/2"));
            QVERIFY(tool->compute());
            QCOMPARE(names(tool).last(), QStringLiteral("(Matrix1)*(1/2)"));
            tool->fractions()->setChecked(true);
            QCOMPARE(tool->grid()->model()->index(0, 0).data().toString(), QStringLiteral("1/2"));
            tool->fractions()->setChecked(false);

            // A name in use is refused; removing asks first.
            tool->select(0);
            QVERIFY(!tool->rename(QStringLiteral("Vector1")));
            QVERIFY(tool->remove_matrix());
            QCOMPARE(names(tool).first(), QStringLiteral("Vector1"));
            saved = scratch.file_path(QStringLiteral("matrices.qvx"));
            QVERIFY(window.save(saved));
        }
        DocumentWindow again(scratch.services, QStringLiteral("Untitled 2"));
        QVERIFY(again.load(saved));
        auto* tool = static_cast<MatrixDialog*>(again.tools().open(Tool::Matrix));
        QCOMPARE(names(tool), (QStringList{"Vector1", "Solution(Matrix1,Vector1)", "(Matrix1)*(1/2)"}));
        tool->select(0);
        QCOMPARE(tool->grid()->model()->index(1, 0).data(Qt::EditRole).toString(), QStringLiteral("-22/2"));
    }
};

QTEST_MAIN(MatrixGuiTest)
#include "matrix_gui_test.moc"
