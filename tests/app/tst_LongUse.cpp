// A thousand runs from one window with random options: runs release everything they acquire.
#include "tests/app/Dice.h"
#include "tests/app/WindowUnderTest.h"
#include "tests/support/Amount.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/OpenDescriptors.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QtTest>

#include <cstdio>
#include <malloc.h>

namespace {

QByteArray asciiMesh()
{
    QByteArray text = "solid\n";
    for (int i = 0; i < 40; ++i)
        text += QByteArray::fromStdString(asciiFacet({"0 0 1", "1 2 3", "5 2 3", "1 10 19"}));
    return text + "endsolid\n";
}

std::size_t usedMemory() { return mallinfo2().uordblks; }

// What the process holds.
struct Holdings {
    long files = 0;
    qsizetype objects = 0; // children of the window
    std::size_t memory = 0;
};

} // namespace

class tst_LongUse : public QObject {
    Q_OBJECT

private slots:
    void runsReleaseWhatTheyAcquire();

private:
    void enterRandomOptions(const WindowUnderTest &window);
    Dice m_dice{20240229};
};

// As a user does: disabled widgets stay as they are.
void tst_LongUse::enterRandomOptions(const WindowUnderTest &window)
{
    window.reset();
    const QString input = m_dice.oneOf({"ascii.stl", "binary.stl", "broken.stl"});
    const QString output = m_dice.oneIn(20) ? "/dev/full" : m_dice.oneOf({"out.stl", "other.stl"});
    window.enterFiles(input, output);
    for (const QString &name : fieldNames().mid(2)) {
        if (window.isEnabled(name))
            window.enter(name, m_dice.oneOf({"0.5", "1", "2", "-3", "1e3", "", "x"}));
    }
    for (const QString &name : boxNames()) {
        if (window.isEnabled(name) && m_dice.oneIn(4))
            window.tick(name);
    }
    for (const QString &name : fieldNames().mid(2)) {
        if (window.isEnabled(name) && window.text(name).isEmpty() && !m_dice.oneIn(10))
            window.enter(name, m_dice.oneOf({"30", "90", "2.5"}));
    }
}

void tst_LongUse::runsReleaseWhatTheyAcquire()
{
    const WorkingFolder folder;
    folder.write("ascii.stl", asciiMesh());
    folder.write("binary.stl", QByteArray::fromStdString(binaryStl("binary", differentFacets(60))));
    folder.write("broken.stl", asciiMesh().replace("vertex 5", "vertex five"));
    WindowUnderTest window;
    window.window.show();
    MessageBoxRecorder boxes;

    const int runs = amount("MESHVANE_RUNS", 1000);
    const int warmUp = runs / 5;
    Holdings before;
    int succeeded = 0;
    int refused = 0;
    for (int run = 0; run < runs; ++run) {
        enterRandomOptions(window);
        boxes.clear();
        window.run();
        QCoreApplication::processEvents();
        const bool success = window.statusText().startsWith("Calculation finished successfully.");
        window.window.statusBar()->clearMessage(); // with its timer, which is a child of the window
        QVERIFY2(success != !boxes.boxes().isEmpty(), "a run either succeeds or shows a message");
        (success ? succeeded : refused) += 1;
        if (run != warmUp && run != runs - 1)
            continue;
        boxes.clear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const Holdings now{openDescriptors(), window.window.findChildren<QObject *>().size(), usedMemory()};
        if (run == warmUp) {
            before = now;
            continue;
        }
        QCOMPARE(now.files, before.files);
        QCOMPARE(now.objects, before.objects);
        std::printf("%d runs succeeded, %d were refused; memory in use went from %zu to %zu bytes\n",
                    succeeded, refused, before.memory, now.memory);
        constexpr std::size_t noise =
            std::size_t{200} * 1024; // Qt's caches, which grow with new texts and boxes
        if (!underAddressSanitizer)  // which has its own heap and finds leaks itself
            QVERIFY(now.memory < before.memory + noise);
    }
    QVERIFY(succeeded > runs / 10);
    QVERIFY(refused > runs / 10);
    QCOMPARE(folder.read("ascii.stl"), asciiMesh());
}

MESHVANE_QTEST_MAIN(tst_LongUse)
#include "tst_LongUse.moc"
