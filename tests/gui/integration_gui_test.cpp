// The integration window offscreen: a run from its fields, the answer at the chosen precision and
// copied, a refused input pointing at its field, and the inputs kept with the document.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/tools/integration_dialog.h"
#include "gui/tools/tool_windows.h"

#include "engine/parser.h"
#include "store/ini_file.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

class IntegrationGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void integratesFromItsFieldsAndKeepsThemWithTheDocument() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        QString saved;
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            window.show();
            type_line(window.editor(), QStringLiteral("y = 3"));
            type_line(window.editor(), QStringLiteral("sq(x) = x^2"));
            auto* tool = static_cast<IntegrationDialog*>(
                window.tools().open(Tool::Integration, QStringLiteral("sq[x]")));
            QVERIFY(tool);
            QCOMPARE(tool->windowTitle(), QStringLiteral("Integration Utility"));
            QCOMPARE(tool->expression()->currentText(), QStringLiteral("sq[x]"));
            QCOMPARE(tool->precision()->value(), 6);
            QVERIFY(tool->order_button(1)->isChecked());
            QVERIFY(!tool->lower(1)->isEnabled()); // a single integral has no Y limits

            // The integral of x^2 over 0..3 is 9.
            tool->lower(0)->setText(QStringLiteral("3"));
            tool->upper(0)->setText(QStringLiteral("0"));
            QVERIFY(tool->integrate());
            QCOMPARE(tool->answer()->text(), QStringLiteral("9"));
            QVERIFY(!tool->warning()->isVisibleTo(tool));

            // The area under y = x over 0..1 with the empty expression: X's limit follows Y.
            tool->order_button(2)->click();
            QVERIFY(tool->lower(1)->isEnabled() && !tool->lower(2)->isEnabled());
            QVERIFY(tool->answer()->text().isEmpty()); // an edit clears the answer
            tool->expression()->setEditText(QString());
            tool->lower(0)->setText(QStringLiteral("0"));
            tool->upper(0)->setText(QStringLiteral("y"));
            tool->lower(1)->setText(QStringLiteral("0"));
            tool->upper(1)->setText(QStringLiteral("1"));
            tool->accuracy()->setValue(60);
            QVERIFY(tool->integrate());
            QCOMPARE(tool->answer()->text(), QStringLiteral("0.5"));
            QCOMPARE(window.parser().get_var_value("y").real(), 3.0); // the document's y is back
            QVERIFY(!window.parser().is_variable("x"));

            // SQRT(x) over 0..2 is 4*SQRT(2)/3; the precision rewrites the shown answer.
            tool->order_button(1)->click();
            tool->expression()->setEditText(QStringLiteral("SQRT(x)"));
            tool->lower(0)->setText(QStringLiteral("0"));
            tool->upper(0)->setText(QStringLiteral("2"));
            QVERIFY(tool->integrate());
            QCOMPARE(tool->answer()->text(), QStringLiteral("1.88562"));
            tool->precision()->setValue(3);
            QCOMPARE(tool->answer()->text(), QStringLiteral("1.89"));
            QCOMPARE(scratch.services.settings->GetInt("OPTIONS", "IntegrationPrecision", 0), 3);
            tool->copy_answer();
            QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("1.89"));

            // A refused limit says why under the tool's caption and takes the focus.
            tool->upper(0)->setText(QStringLiteral("x+1"));
            QVERIFY(!tool->integrate());
            QCOMPARE(
                scratch.messages.last(),
                QStringLiteral("Integration Utility: The integration limit can not be a function of x."));
            QCOMPARE(tool->focusWidget(), tool->upper(0));
            QVERIFY(tool->answer()->text().isEmpty());

            tool->upper(0)->setText(QStringLiteral("4/2"));
            tool->order_button(3)->click();
            tool->accuracy()->setValue(35);
            saved = scratch.file_path(QStringLiteral("integral.qvx"));
            QVERIFY(window.save(saved));
        }
        DocumentWindow again(scratch.services, QStringLiteral("Untitled 2"));
        QVERIFY(again.load(saved));
        auto* tool = static_cast<IntegrationDialog*>(again.tools().open(Tool::Integration));
        QCOMPARE(tool->expression()->currentText(), QStringLiteral("SQRT(x)"));
        QVERIFY(tool->order_button(3)->isChecked());
        QCOMPARE(tool->upper(0)->text(), QStringLiteral("4/2"));
        QCOMPARE(tool->upper(1)->text(), QStringLiteral("1"));
        QCOMPARE(tool->parameter(2)->currentText(), QStringLiteral("z"));
        QCOMPARE(tool->accuracy()->value(), 35);
        // Any edit is a change of the document.
        again.parser().set_vars_saved(true);
        tool->lower(2)->setText(QStringLiteral("-1"));
        QVERIFY(!again.parser().vars_saved());
    }
};

QTEST_MAIN(IntegrationGuiTest)
#include "integration_gui_test.moc"
