#include "app/ErrorBox.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"

#include <QApplication>
#include <QtTest>

class tst_ErrorBox : public QObject {
    Q_OBJECT

private slots:
    void boxIsCriticalAndModalWithOneButtonAndNoParent();
};

void tst_ErrorBox::boxIsCriticalAndModalWithOneButtonAndNoParent()
{
    QWidget window; // active, and yet not the parent
    window.show();
    QApplication::setActiveWindow(&window);
    QCOMPARE(QApplication::activeWindow(), &window);
    const MessageBoxRecorder boxes;
    showError("First line.<br>Second line.<br>");
    QCOMPARE(boxes.boxes().size(), 1); // the call has waited until the box was closed
    const ShownBox &box = boxes.boxes().constFirst();
    QCOMPARE(box.title, QString("Error notification"));
    QCOMPARE(box.text, QString("First line.<br>Second line.<br>"));
    QCOMPARE(box.informativeText, QString());
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QCOMPARE(box.buttonCount, 1);
    QCOMPARE(box.parent, nullptr);
    QVERIFY(box.modal);
    QCOMPARE(boxes.texts(), QStringList{box.text}); // the recorder knows it as the standard box
}

MESHVANE_QTEST_MAIN(tst_ErrorBox)
#include "tst_ErrorBox.moc"
