// Thousands of random clicks and edits on the real window; after each, the window is compared with the model.
#include "tests/app/Dice.h"
#include "tests/app/InterlockModel.h"
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"

#include <QtTest>

namespace {

const QStringList scaleTexts{"", "0", "1", "1.0", "2", "abc", " "};
const QStringList freeTexts{"", "5", "-5", "abc"};

// Twenty seeds for each kind of sequence: 4000 sequences.
constexpr int windowsPerSeed = 5;
constexpr int sequencesPerWindow = 20;
constexpr int stepsPerSequence = 12;

// A window and its model.
class Pair {
public:
    WindowUnderTest real;
    InterlockModel model;
    MessageBoxRecorder boxes;
    QString history;

    // These operations record themselves in the history.
    void click(const QString &box)
    {
        history += " click:" + box;
        model.setTicked(box, !model.boxes()[box].ticked);
        real.box(box)->click();
    }
    void clickWithTheMouse(const QString &box)
    {
        history += " mouse:" + box;
        model.setTicked(box, !model.boxes()[box].ticked);
        QCheckBox *widget = real.box(box);
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
    }
    void set(const QString &box, bool on)
    {
        history += QString(" set:%1=%2").arg(box).arg(on);
        model.setTicked(box, on);
        real.tick(box, on);
    }
    void enter(const QString &field, const QString &text)
    {
        history += " enter:" + field + "=\"" + text + '"';
        model.setText(field, text);
        real.enter(field, text);
    }
    void reset()
    {
        history += " reset";
        model.reset();
        real.reset();
    }

    // The new sequence starts from the state in which the previous one ended.
    void startSequence() { history.clear(); }

    // Empty if window and model agree.
    QString difference() const
    {
        QStringList found = differences(model, real);
        if (boxes.texts() != model.messages())
            found << "messages: " + boxes.texts().join('|');
        return found.isEmpty() ? QString() : found.join("; ") + " after" + history;
    }
};

QString anyEnabledBox(Dice &dice, const InterlockModel &model)
{
    QStringList enabled;
    for (auto box = model.boxes().begin(); box != model.boxes().end(); ++box) {
        if (box->enabled)
            enabled << box.key();
    }
    return dice.oneOf(enabled);
}

void editOneField(Dice &dice, Pair &pair)
{
    const QString axis = dice.oneOf(axes());
    switch (dice.below(5)) {
    case 0:
        return pair.enter("edt" + axis + "Scale", dice.oneOf(scaleTexts));
    case 1:
        return pair.enter("edt" + axis + "OffsB", dice.oneOf(knownOffsetTexts().keys()));
    case 2:
        return pair.enter("edt" + axis + "OffsA", dice.oneOf(knownOffsetTexts().keys()));
    case 3:
        return pair.enter("edtRotate" + axis, dice.oneOf(freeTexts));
    default:
        return pair.enter("edt" + axis + "SetL", dice.oneOf(freeTexts));
    }
}

// A user can only click and edit what is enabled.
void actAsUser(Dice &dice, Pair &pair)
{
    if (dice.oneIn(40))
        return pair.reset();
    if (!dice.oneIn(4))
        return pair.click(anyEnabledBox(dice, pair.model));
    const QString axis = dice.oneOf(axes());
    const QString field =
        dice.oneOf({"edt" + axis + "Scale", "edt" + axis + "OffsB", "edt" + axis + "OffsA"});
    if (pair.model.fields()[field].enabled)
        pair.enter(field,
                   field.endsWith("Scale") ? dice.oneOf(scaleTexts) : dice.oneOf(knownOffsetTexts().keys()));
}

// A program can change every widget.
void actAsProgram(Dice &dice, Pair &pair)
{
    if (dice.oneIn(40))
        return pair.reset();
    if (dice.oneIn(3))
        return editOneField(dice, pair);
    const QString box = dice.oneOf(boxNames());
    pair.set(box, dice.oneIn(2));
}

} // namespace

class tst_InterlocksAgainstModel : public QObject {
    Q_OBJECT

private slots:
    void newWindowAgrees();
    void everyPairOfTogglesAgrees();
    void randomSequencesOfAUserAgree_data() { addSeeds(); }
    void randomSequencesOfAUserAgree() { randomSequencesAgree(actAsUser, 0); }
    void randomSequencesOfAProgramAgree_data() { addSeeds(); }
    void randomSequencesOfAProgramAgree() { randomSequencesAgree(actAsProgram, 1000); }
    void mouseClicksAgree();

private:
    static void addSeeds()
    {
        QStringList seeds;
        for (int seed = 1; seed <= 20; ++seed)
            seeds << QString::number(seed);
        addNamedRows(seeds);
    }
    static void randomSequencesAgree(void (*act)(Dice &, Pair &), unsigned firstSeed);
};

void tst_InterlocksAgainstModel::newWindowAgrees()
{
    const Pair pair;
    QCOMPARE(pair.difference(), QString());
    QStringList names = boxNames();
    names.sort();
    QCOMPARE(pair.model.boxes().keys(), names);
    QCOMPARE(pair.model.fields().size(), fieldNames().size() - 2); // all but the two file fields
}

// Every pair of boxes, toggled in turn as only a program can.
void tst_InterlocksAgainstModel::everyPairOfTogglesAgrees()
{
    Pair pair;
    for (const QString &first : boxNames()) {
        for (const QString &second : boxNames()) {
            for (const QString &toggled : {first, second, first, second, first}) {
                pair.set(toggled, !pair.real.isTicked(toggled));
                QCOMPARE(pair.difference(), QString());
            }
            pair.reset();
            QCOMPARE(pair.difference(), QString());
            pair.startSequence();
        }
    }
}

void tst_InterlocksAgainstModel::randomSequencesAgree(void (*act)(Dice &, Pair &), unsigned firstSeed)
{
    Dice dice(firstSeed + currentName().toUInt());
    for (int window = 0; window < windowsPerSeed; ++window) {
        Pair pair;
        for (int sequence = 0; sequence < sequencesPerWindow; ++sequence) {
            pair.startSequence();
            for (int step = 0; step < stepsPerSequence; ++step) {
                act(dice, pair);
                QCOMPARE(pair.difference(), QString());
            }
            pair.reset();
            QCOMPARE(pair.difference(), QString());
        }
    }
}

void tst_InterlocksAgainstModel::mouseClicksAgree()
{
    Dice dice(7);
    Pair pair;
    pair.real.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pair.real.window));
    for (int step = 0; step < 300; ++step) {
        if (dice.oneIn(20))
            editOneField(dice, pair);
        else
            pair.clickWithTheMouse(anyEnabledBox(dice, pair.model));
        QCOMPARE(pair.difference(), QString());
    }
}

MESHVANE_QTEST_MAIN(tst_InterlocksAgainstModel)
#include "tst_InterlocksAgainstModel.moc"
