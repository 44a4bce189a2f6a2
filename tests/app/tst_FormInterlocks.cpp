// The interlocks on the real window, through whose connections they trigger one another.
#include "app/FormInterlocks.h"
#include "tests/app/InterlockModel.h"
#include "tests/app/WindowTest.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"

#include <QEvent>
#include <QSignalSpy>
#include <QtTest>

#include <memory>
#include <utility>
#include <vector>

namespace {

// Records the objects whose enabled state changes.
class EnabledChanges : public QObject {
public:
    QStringList order;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange)
            order << watched->objectName();
        return QObject::eventFilter(watched, event);
    }
};

const struct {
    const char *name;
    QStringList entered;
    QStringList ticked;
    QStringList expected;
} resetCases[] = {
    {"angle and length boxes, their fields, origin boxes",
     {"edtRotateX", "edtRotateY", "edtRotateZ", "edtXSetL", "edtYSetL", "edtZSetL"},
     {"chbRotateX", "chbRotateY", "chbRotateZ", "chbXSetL", "chbYSetL", "chbZSetL", "chbXSet0", "chbYSet0",
      "chbZSet0"},
     {"chbRotateX", "chbRotateY", "chbRotateZ", "chbXSetL", "chbYSetL", "chbZSetL", "edtRotateX",
      "edtRotateY", "edtRotateZ", "edtXSetL", "edtYSetL", "edtZSetL", "chbXSet0", "chbYSet0", "chbZSet0"}},
    {"scales, offsets, angles and lengths",
     {"edtZSetL", "edtYSetL", "edtXSetL", "edtRotateZ", "edtRotateY", "edtRotateX", "edtZOffsA", "edtYOffsA",
      "edtXOffsA", "edtZOffsB", "edtYOffsB", "edtXOffsB", "edtZScale", "edtYScale", "edtXScale"},
     {},
     {"edtXScale", "edtYScale", "edtZScale", "edtXOffsB", "edtYOffsB", "edtZOffsB", "edtXOffsA", "edtYOffsA",
      "edtZOffsA", "edtRotateX", "edtRotateY", "edtRotateZ", "edtXSetL", "edtYSetL", "edtZSetL"}},
    {"offsets before angle boxes", {"edtZOffsA"}, {"chbRotateX"}, {"edtZOffsA", "chbRotateX"}},
    {"origin boxes before same-length boxes",
     {},
     {"chbXsameY", "chbXsameZ", "chbYsameX", "chbYsameZ", "chbZsameX", "chbZsameY", "chbXSet0", "chbYSet0",
      "chbZSet0"},
     {"chbXSet0", "chbYSet0", "chbZSet0", "chbXsameY", "chbXsameZ", "chbYsameX", "chbYsameZ", "chbZsameX",
      "chbZsameY"}},
};

} // namespace

class tst_FormInterlocks : public WindowTest {
    Q_OBJECT

private slots:
    void angleFieldFollowsItsBox_data() { addNamedRows(axes()); }
    void angleFieldFollowsItsBox();
    void tickedSetLengthBox_data() { addNamedRows(axes()); }
    void tickedSetLengthBox();
    void setLengthUnticksItsSameLengthBoxes_data() { addNamedRows(axes()); }
    void setLengthUnticksItsSameLengthBoxes();
    void tickedSameLengthBox_data() { addNamedRows(sameLengthBoxNames()); }
    void tickedSameLengthBox();
    void sameLengthUnticksTheSetLengthBox_data() { addNamedRows(sameLengthBoxNames()); }
    void sameLengthUnticksTheSetLengthBox();
    void widgetsAreEnabledAndDisabledInOrder();
    void twoSameLengthBoxesCanBeTicked();
    void scaleFieldCanStayDisabled();

    void originBox_data() { addNamedRows(axes()); }
    void originBox();
    void untickedOriginBoxEnablesTheOffsets_data() { addNamedRows(axes()); }
    void untickedOriginBoxEnablesTheOffsets();
    void formIsUnchangedWhileTheRefusalIsShown();

    void everyScaleTextUnticksTheSetLengthBox();
    void scaleTextOfOneUnticksTheSetLengthBox();

    void resetRestoresEveryField();
    void resetEnablesWhatTheBoxesHadDisabled();
    void resetOfANewFormChangesNothing();
    void resetWorksInOrder_data() { addRows(resetCases); }
    void resetWorksInOrder();

private:
    // The name with the axis of the running row.
    static QString on(const char *pattern) { return onAxis(pattern, currentName()); }
};

void tst_FormInterlocks::angleFieldFollowsItsBox()
{
    m->enter(on("edtRotate?"), "12");
    m->tick(on("chbRotate?"));
    for (const QString &each : axes())
        QCOMPARE(m->isEnabled("edtRotate" + each), each == currentName());
    m->tick(on("chbRotate?"), false);
    QVERIFY(!m->isEnabled(on("edtRotate?")));
    QCOMPARE(m->text(on("edtRotate?")), QString("12"));
}

void tst_FormInterlocks::tickedSetLengthBox()
{
    for (const bool ticked : {true, false}) {
        m->tick(on("chb?SetL"), ticked);
        QCOMPARE(m->isEnabled(on("edt?SetL")), ticked);
        QCOMPARE(m->isEnabled(on("edt?Scale")), !ticked);
        for (const QString &box : sameLengthBoxNames())
            QCOMPARE(m->isEnabled(box), !(ticked && sameLengthBoxesOf(currentName()).contains(box)));
        for (const QString &each : axes()) {
            if (each != currentName()) {
                QVERIFY(m->isEnabled("edt" + each + "Scale"));
                QVERIFY(!m->isEnabled("edt" + each + "SetL"));
            }
            QVERIFY(m->isEnabled("chb" + each + "SetL"));
            QVERIFY(m->isEnabled("chb" + each + "Set0"));
        }
    }
}

// Only a program can tick both. The same-length box is unticked in the middle of the steps, its own slot
// unticks the length box again, and the scale field stays disabled.
void tst_FormInterlocks::setLengthUnticksItsSameLengthBoxes()
{
    for (const QString &box : sameLengthBoxesOf(currentName())) {
        m->tick(box);
        m->tick(on("chb?SetL"));
        QVERIFY(!m->isTicked(box));
        QVERIFY(!m->isTicked(on("chb?SetL")));
        QVERIFY(!m->isEnabled(on("edt?SetL")));
        QVERIFY(!m->isEnabled(on("edt?Scale")));
        for (const QString &each : sameLengthBoxNames())
            QVERIFY(m->isEnabled(each));
        m->box(on("chb?SetL"))->click();
        m->box(on("chb?SetL"))->click();
        QVERIFY(m->isEnabled(on("edt?Scale")));
    }
}

void tst_FormInterlocks::tickedSameLengthBox()
{
    const QString box = currentName();
    const QString target = box.mid(3, 1);
    for (const bool ticked : {true, false}) {
        m->tick(box, ticked);
        for (const QString &other : sameLengthBoxNames())
            QCOMPARE(m->isEnabled(other), other == box || !ticked);
        for (const QString &each : axes()) {
            QCOMPARE(m->isEnabled("edt" + each + "Scale"), each != target || !ticked);
            QCOMPARE(m->isEnabled("chb" + each + "SetL"), each != target || !ticked);
            QVERIFY(m->isEnabled("chb" + each + "Set0"));
            QVERIFY(!m->isTicked("chb" + each + "SetL"));
        }
    }
}

void tst_FormInterlocks::sameLengthUnticksTheSetLengthBox()
{
    const QString box = currentName();
    const QString target = box.mid(3, 1);
    for (const QString &each : axes())
        m->tick("chb" + each + "SetL");
    m->tick(box);
    for (const QString &each : axes())
        QCOMPARE(m->isTicked("chb" + each + "SetL"), each != target);
    // The slot of the unticked length box has enabled again what the same-length slot had just disabled.
    QVERIFY(m->isEnabled(onAxis("edt?Scale", target)));
    for (const QString &other : sameLengthBoxesOf(target))
        QVERIFY(m->isEnabled(other));
    QVERIFY(!m->isEnabled(onAxis("chb?SetL", target)));
    QVERIFY(!m->isTicked(box)); // unticked by the slot of the length box
}

void tst_FormInterlocks::widgetsAreEnabledAndDisabledInOrder()
{
    EnabledChanges changes;
    for (const QString &name : fieldNames() + boxNames())
        m->find<QWidget>(name)->installEventFilter(&changes);
    QList<QPair<QString, QStringList>> expected;
    for (const QString &box : sameLengthBoxNames()) {
        QStringList others = sameLengthBoxNames();
        others.removeOne(box);
        const QString target = box.mid(3, 1);
        expected << qMakePair(box, others << onAxis("edt?Scale", target) << onAxis("chb?SetL", target));
    }
    expected << QList<QPair<QString, QStringList>>{
        {"chbXSetL", {"edtXSetL", "chbXsameY", "chbXsameZ", "edtXScale"}},
        {"chbYSetL", {"edtYSetL", "chbYsameX", "chbYsameZ", "edtYScale"}},
        {"chbZSetL", {"edtZSetL", "chbZsameX", "chbZsameY", "edtZScale"}},
        {"chbXSet0", {"edtXOffsB", "edtXOffsA"}},
        {"chbYSet0", {"edtYOffsB", "edtYOffsA"}},
        {"chbZSet0", {"edtZOffsB", "edtZOffsA"}},
    };
    for (const auto &[box, order] : std::as_const(expected)) {
        for (const bool ticked : {true, false}) {
            changes.order.clear();
            m->tick(box, ticked);
            QCOMPARE(changes.order, order);
        }
    }
}

void tst_FormInterlocks::twoSameLengthBoxesCanBeTicked()
{
    m->box("chbXsameY")->click();
    QVERIFY(!m->isEnabled("chbYsameX"));
    m->box("chbYSetL")->click();
    m->box("chbYSetL")->click();
    QVERIFY(m->isTicked("chbXsameY"));
    QVERIFY(m->isEnabled("chbYsameX"));
    QVERIFY(m->isEnabled("chbYsameZ"));
    QVERIFY(!m->isEnabled("chbXsameZ"));
    QVERIFY(!m->isEnabled("chbZsameX"));
    QVERIFY(!m->isEnabled("chbZsameY"));
    m->box("chbYsameX")->click();
    QVERIFY(m->isTicked("chbXsameY"));
    QVERIFY(m->isTicked("chbYsameX"));
    QVERIFY(!m->isEnabled("chbXsameY"));
}

// By clicks alone: two same-length boxes at once, then a length box.
void tst_FormInterlocks::scaleFieldCanStayDisabled()
{
    for (const QString name : {"chbXsameY", "chbYSetL", "chbYSetL", "chbYsameX"})
        m->box(name)->click();
    QVERIFY(!m->isEnabled("edtXScale"));
    QVERIFY(!m->isEnabled("edtYScale"));
    m->box("chbYsameX")->click();
    QVERIFY(m->isTicked("chbXsameY"));
    QVERIFY(m->isEnabled("chbXsameZ"));
    QVERIFY(m->isEnabled("edtYScale"));
    QVERIFY(!m->isEnabled("edtXScale"));
    m->box("chbXsameZ")->click();
    m->box("chbXsameZ")->click();
    QVERIFY(m->isTicked("chbXsameY"));
    QVERIFY(m->isEnabled("edtXScale")); // although its same-length box is ticked
    QVERIFY(m->isEnabled("chbXSetL"));
    m->box("chbXSetL")->click();
    for (const QString name : {"chbXsameY", "chbXsameZ", "chbXSetL"})
        QVERIFY(!m->isTicked(name));
    QVERIFY(!m->isEnabled("edtXScale")); // although nothing is ticked
    QVERIFY(!m->isEnabled("edtXSetL"));
}

// All pairs of the texts that the model knows.
void tst_FormInterlocks::originBox()
{
    const QMap<QString, bool> &texts = knownOffsetTexts();
    for (auto before = texts.begin(); before != texts.end(); ++before) {
        for (auto after = texts.begin(); after != texts.end(); ++after) {
            const bool accepted = !before.value() && !after.value();
            m_boxes->clear();
            m->enter(on("edt?OffsB"), before.key());
            m->enter(on("edt?OffsA"), after.key());
            m->box(on("chb?Set0"))->click();
            QCOMPARE(m->isTicked(on("chb?Set0")), accepted);
            QCOMPARE(m->isEnabled(on("edt?OffsB")), !accepted);
            QCOMPARE(m->isEnabled(on("edt?OffsA")), !accepted);
            QCOMPARE(m->text(on("edt?OffsB")), accepted ? "0" : before.key());
            QCOMPARE(m->text(on("edt?OffsA")), accepted ? "0" : after.key());
            QStringList messages;
            if (!accepted)
                messages << on("Unable to set ? Length to zero while ? offsets are nonzero.");
            QCOMPARE(m_boxes->texts(), messages);
            m->tick(on("chb?Set0"), false);
        }
    }
}

void tst_FormInterlocks::untickedOriginBoxEnablesTheOffsets()
{
    m->tick(on("chb?Set0"));
    QVERIFY(!m->isEnabled(on("edt?OffsB")));
    QVERIFY(!m->isEnabled(on("edt?OffsA")));
    for (const QString &each : axes()) {
        if (each != currentName()) {
            QVERIFY(m->isEnabled("edt" + each + "OffsB"));
            QVERIFY(m->isEnabled("edt" + each + "OffsA"));
        }
    }
    m->enter(on("edt?OffsB"), "3");
    m->tick(on("chb?Set0"), false);
    QVERIFY(m->isEnabled(on("edt?OffsB")));
    QVERIFY(m->isEnabled(on("edt?OffsA")));
    QCOMPARE(m->text(on("edt?OffsB")), QString("3"));
    QCOMPARE(m->text(on("edt?OffsA")), QString("0"));
}

void tst_FormInterlocks::formIsUnchangedWhileTheRefusalIsShown()
{
    bool wasTicked = false;
    m_boxes->whenShown([&](const ShownBox &) { wasTicked = m->isTicked("chbXSet0"); });
    m->enter("edtXOffsB", "2");
    m->box("chbXSet0")->click();
    QVERIFY(wasTicked); // it is unticked when the message has been closed
    QVERIFY(!m->isTicked("chbXSet0"));
    QCOMPARE(m->text("edtXOffsB"), QString("2"));
    QCOMPARE(m->text("edtXOffsA"), QString("0"));
}

void tst_FormInterlocks::everyScaleTextUnticksTheSetLengthBox()
{
    for (const QString text : {"2", "1.0", "", " ", "abc", "0", "nan"}) {
        for (const QString &edited : axes()) {
            for (const QString &each : axes())
                m->tick(onAxis("chb?SetL", each));
            m->enter(onAxis("edt?Scale", edited), text);
            for (const QString &each : axes()) {
                QCOMPARE(m->isTicked(onAxis("chb?SetL", each)), each != edited);
                QCOMPARE(m->isEnabled(onAxis("edt?SetL", each)), each != edited);
                QCOMPARE(m->isEnabled(onAxis("edt?Scale", each)), each == edited);
            }
        }
    }
}

void tst_FormInterlocks::scaleTextOfOneUnticksTheSetLengthBox()
{
    m->enter("edtXScale", "");
    m->tick("chbXSetL");
    m->enter("edtXScale", "1");
    QVERIFY(!m->isTicked("chbXSetL"));
    m->tick("chbXSetL");
    m->enter("edtXScale", "1"); // no change, no signal
    QVERIFY(m->isTicked("chbXSetL"));
}

void tst_FormInterlocks::resetRestoresEveryField()
{
    for (const QString &name : fieldNames())
        m->enter(name, "7");
    for (const QString &name : boxNames())
        m->tick(name);
    m->reset();
    for (const QString &name : fieldNames()) {
        QString expected;
        if (name.startsWith("edtFile"))
            expected = "7";
        else if (name.endsWith("Scale"))
            expected = "1";
        else if (name.contains("Offs"))
            expected = "0";
        QCOMPARE(m->text(name), expected);
    }
    for (const QString &name : boxNames())
        QVERIFY(!m->isTicked(name));
}

void tst_FormInterlocks::resetEnablesWhatTheBoxesHadDisabled()
{
    for (const QString name : {"chbRotateX", "chbYSetL", "chbZSet0", "chbXsameZ"})
        m->box(name)->click();
    m->reset();
    for (const QString &name : fieldNames())
        QCOMPARE(m->isEnabled(name), !name.startsWith("edtRotate") && !name.endsWith("SetL"));
    for (const QString &name : boxNames()) {
        QVERIFY(m->isEnabled(name));
        QVERIFY(!m->isTicked(name));
    }
    QCOMPARE(m->text("edtZOffsB"), QString("0"));
    QCOMPARE(m->text("edtZOffsA"), QString("0"));
    QCOMPARE(m_boxes->texts(), QStringList());
}

void tst_FormInterlocks::resetOfANewFormChangesNothing()
{
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (const QString &name : fieldNames())
        spies.push_back(std::make_unique<QSignalSpy>(m->field(name), &QLineEdit::textChanged));
    for (const QString &name : boxNames())
        spies.push_back(std::make_unique<QSignalSpy>(m->box(name), &QCheckBox::toggled));
    m->reset();
    for (const auto &spy : spies)
        QCOMPARE(spy->count(), 0);
}

void tst_FormInterlocks::resetWorksInOrder()
{
    const auto &row = currentRow(resetCases);
    for (const QString &name : row.entered)
        m->enter(name, "7");
    for (const QString &name : row.ticked) {
        m->tick(name);
        QVERIFY(m->isTicked(name));
    }
    QStringList order;
    const QObject listener;
    for (const QString &name : fieldNames())
        connect(m->field(name), &QLineEdit::textChanged, &listener, [&order, name] { order << name; });
    for (const QString &name : boxNames())
        connect(m->box(name), &QCheckBox::toggled, &listener, [&order, name] { order << name; });
    m->reset();
    QCOMPARE(order, row.expected);
}

MESHVANE_QTEST_MAIN(tst_FormInterlocks)
#include "tst_FormInterlocks.moc"
