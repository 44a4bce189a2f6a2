// Thousands of random clicks and edits on the real window, compared with the model after each.
#include "tests/app/InterlockModel.h"
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"

#include <QtTest>

#include <memory>
#include <random>

namespace {

const QStringList axes{"X", "Y", "Z"};
const QStringList scaleTexts{"", "0", "1", "1.0", "2", "abc", " "};
const QStringList freeTexts{"", "5", "-5", "abc"};

// Twenty seeds, users and programs: 4000 sequences.
constexpr int windowsPerSeed = 5;
constexpr int sequencesPerWindow = 20;
constexpr int stepsPerSequence = 12;

class Dice {
public:
    explicit Dice(unsigned seed)
        : m_generator(seed)
    {}
    int below(int count) { return int(m_generator() % unsigned(count)); }
    bool oneIn(int count) { return below(count) == 0; }
    QString of(const QStringList &choices) { return choices.at(below(choices.size())); }

private:
    std::mt19937 m_generator;
};

// Window and model side by side.
class Pair {
public:
    WindowUnderTest real;
    InterlockModel model;
    MessageBoxRecorder boxes;
    QString history;

    // Each deed tells in the history what it did.
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

    // A new sequence starts from the state that the one before has left.
    void startSequence() { history.clear(); }

    // Empty if window and model agree.
    QString difference() const
    {
        QStringList found;
        for (auto box = model.boxes().begin(); box != model.boxes().end(); ++box) {
            note(found, box.key() + " ticked", box->ticked, real.isTicked(box.key()));
            note(found, box.key() + " enabled", box->enabled, real.isEnabled(box.key()));
        }
        for (auto field = model.fields().begin(); field != model.fields().end(); ++field) {
            note(found, field.key() + " text", field->text, real.text(field.key()));
            note(found, field.key() + " enabled", field->enabled, real.isEnabled(field.key()));
        }
        note(found, "messages", model.messages().join('|'), boxes.texts().join('|'));
        return found.isEmpty() ? QString() : found.join("; ") + " after" + history;
    }

private:
    template <typename Value>
    static void note(QStringList &found, const QString &what, const Value &expected, const Value &actual)
    {
        if (expected != actual)
            found << QString("%1 should be %2, is %3").arg(what).arg(expected).arg(actual);
    }
};

QString anyEnabledBox(Dice &dice, const InterlockModel &model)
{
    QStringList enabled;
    for (auto box = model.boxes().begin(); box != model.boxes().end(); ++box) {
        if (box->enabled)
            enabled << box.key();
    }
    return dice.of(enabled);
}

void editOneField(Dice &dice, Pair &pair)
{
    const QString axis = dice.of(axes);
    switch (dice.below(5)) {
    case 0:
        return pair.enter("edt" + axis + "Scale", dice.of(scaleTexts));
    case 1:
        return pair.enter("edt" + axis + "OffsB", dice.of(knownOffsetTexts().keys()));
    case 2:
        return pair.enter("edt" + axis + "OffsA", dice.of(knownOffsetTexts().keys()));
    case 3:
        return pair.enter("edtRotate" + axis, dice.of(freeTexts));
    default:
        return pair.enter("edt" + axis + "SetL", dice.of(freeTexts));
    }
}

// A user: only what is enabled can be clicked or typed into.
void actAsUser(Dice &dice, Pair &pair)
{
    if (dice.oneIn(40))
        return pair.reset();
    if (!dice.oneIn(4))
        return pair.click(anyEnabledBox(dice, pair.model));
    const QString axis = dice.of(axes);
    const QString field = dice.of({"edt" + axis + "Scale", "edt" + axis + "OffsB", "edt" + axis + "OffsA"});
    if (pair.model.fields()[field].enabled)
        pair.enter(field, field.endsWith("Scale") ? dice.of(scaleTexts) : dice.of(knownOffsetTexts().keys()));
}

// A program: anything goes.
void actAsProgram(Dice &dice, Pair &pair)
{
    if (dice.oneIn(40))
        return pair.reset();
    if (dice.oneIn(3))
        return editOneField(dice, pair);
    pair.set(dice.of(boxNames()), dice.oneIn(2));
}

} // namespace

class tst_InterlocksAgainstModel : public QObject {
    Q_OBJECT

private slots:
    void newWindowAgrees();
    void everyPairOfTogglesAgrees();
    void usersSequencesAgree_data() { addSeeds(); }
    void usersSequencesAgree();
    void programsSequencesAgree_data() { addSeeds(); }
    void programsSequencesAgree();
    void mouseClicksAgree();

private:
    static void addSeeds()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 20; ++seed)
            QTest::newRow(qPrintable(QString("seed %1").arg(seed))) << seed;
    }
};

void tst_InterlocksAgainstModel::newWindowAgrees()
{
    const Pair pair;
    QCOMPARE(pair.difference(), QString());
    QStringList names = boxNames();
    names.sort();
    QCOMPARE(pair.model.boxes().keys(), names);
    QCOMPARE(pair.model.fields().size(), fieldNames().size() - 2); // without the two file fields
}

// All sequences of two boxes, each set and set back in every order that a program can choose.
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

void tst_InterlocksAgainstModel::usersSequencesAgree()
{
    QFETCH(unsigned, seed);
    Dice dice(seed);
    for (int window = 0; window < windowsPerSeed; ++window) {
        Pair pair;
        for (int sequence = 0; sequence < sequencesPerWindow; ++sequence) {
            pair.startSequence();
            for (int step = 0; step < stepsPerSequence; ++step) {
                actAsUser(dice, pair);
                QCOMPARE(pair.difference(), QString());
            }
            pair.reset();
            QCOMPARE(pair.difference(), QString());
        }
    }
}

void tst_InterlocksAgainstModel::programsSequencesAgree()
{
    QFETCH(unsigned, seed);
    Dice dice(seed + 1000);
    for (int window = 0; window < windowsPerSeed; ++window) {
        Pair pair;
        for (int sequence = 0; sequence < sequencesPerWindow; ++sequence) {
            pair.startSequence();
            for (int step = 0; step < stepsPerSequence; ++step) {
                actAsProgram(dice, pair);
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
