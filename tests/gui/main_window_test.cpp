// Smoke test of the desktop program's window, run offscreen.
#include "gui/main_window.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QtTest>

class MainWindowTest : public QObject {
    Q_OBJECT

private slots:
    void opensWithAnEmptyEditorAndClosesCleanly() {
        quorvex::gui::MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.windowTitle(), QStringLiteral("Quorvex"));

        auto* pane = qobject_cast<QPlainTextEdit*>(window.centralWidget());
        QVERIFY(pane);
        QCOMPARE(pane->objectName(), QStringLiteral("editorPane"));
        QVERIFY(pane->toPlainText().isEmpty());
        pane->setFocus();
        QTest::keyClicks(pane, QStringLiteral("2+3"));
        QCOMPARE(pane->toPlainText(), QStringLiteral("2+3"));

        QTemporaryDir dir;
        const QString shot = dir.filePath(QStringLiteral("window.png"));
        QVERIFY(window.grab().save(shot));
        QImage image(shot);
        QVERIFY(!image.isNull());
        QVERIFY(image.width() >= 400 && image.height() >= 300);

        window.quitAction()->trigger();
        QVERIFY(!window.isVisible());
    }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
