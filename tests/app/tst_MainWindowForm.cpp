// The form: the class, text, place and settings of every object.
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "ui_MeshvaneMainWindow.h"
#include "widgets/LineEditCustom.h"

#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QTranslator>
#include <QtTest>

#include <memory>
#include <utility>

namespace {

struct Cell {
    int row, column, rowSpan, columnSpan;
};

// One object of the form and its place.
struct Item {
    const char *name;
    const char *className;
    const char *text; // null: the class has none
    const char *layout;
    Cell cell;
};

const Item items[] = {
    {"groupBox8", "QGroupBox", "Transformation Values", "gridLayout_3", {1, 0, 1, 4}},
    {"btnViewLog", "QPushButton", "View Log", "gridLayout_3", {3, 0, 1, 1}},
    {"buttonBox", "QDialogButtonBox", nullptr, "gridLayout_3", {3, 1, 1, 3}},

    {"lblFileIn", "QLabel", "Input STL:", "gridLayout", {0, 0, 1, 1}},
    {"edtFileIn", "LineEditCustom", "", "gridLayout", {0, 1, 1, 1}},
    {"btnBrowseIn", "QPushButton", "", "gridLayout", {0, 2, 1, 1}},
    {"lblFileOut", "QLabel", "Output STL:", "gridLayout", {1, 0, 1, 1}},
    {"edtFileOut", "LineEditCustom", "", "gridLayout", {1, 1, 1, 1}},
    {"btnBrowseOut", "QPushButton", "", "gridLayout", {1, 2, 1, 1}},

    {"lblScale", "QLabel", "<p align=\"center\"><u>Scale</u></p>", "_2", {0, 1, 1, 1}},
    {"lblOffsetBefore", "QLabel", "<p align=\"center\"><u>Offset Before</u></p>", "_2", {0, 3, 1, 1}},
    {"lblOffsetAfter", "QLabel", "<p align=\"center\"><u>Offset After</u></p>", "_2", {0, 5, 1, 1}},
    {"lblXIs", "QLabel", "x =", "_2", {1, 0, 1, 1}},
    {"edtXScale", "LineEditCustom", "1", "_2", {1, 1, 1, 1}},
    {"lblXTerm2", "QLabel", "* ( x +", "_2", {1, 2, 1, 1}},
    {"edtXOffsB", "LineEditCustom", "0", "_2", {1, 3, 1, 1}},
    {"lblXTerm3", "QLabel", ") +", "_2", {1, 4, 1, 1}},
    {"edtXOffsA", "LineEditCustom", "0", "_2", {1, 5, 1, 1}},
    {"lblYIs", "QLabel", "y =", "_2", {2, 0, 1, 1}},
    {"edtYScale", "LineEditCustom", "1", "_2", {2, 1, 1, 1}},
    {"lblYTerm2", "QLabel", "* ( y +", "_2", {2, 2, 1, 1}},
    {"edtYOffsB", "LineEditCustom", "0", "_2", {2, 3, 1, 1}},
    {"lblYTerm3", "QLabel", ") +", "_2", {2, 4, 1, 1}},
    {"edtYOffsA", "LineEditCustom", "0", "_2", {2, 5, 1, 1}},
    {"lblZIs", "QLabel", "z =", "_2", {3, 0, 1, 1}},
    {"edtZScale", "LineEditCustom", "1", "_2", {3, 1, 1, 1}},
    {"lblZTerm2", "QLabel", "* ( z +", "_2", {3, 2, 1, 1}},
    {"edtZOffsB", "LineEditCustom", "0", "_2", {3, 3, 1, 1}},
    {"lblZTerm3", "QLabel", ") +", "_2", {3, 4, 1, 1}},
    {"edtZOffsA", "LineEditCustom", "0", "_2", {3, 5, 1, 1}},

    {"grpRotation", "QGroupBox", "Rotation", "gridLayout_2", {0, 0, 1, 1}},
    {"grpFlags", "QGroupBox", "Flags", "gridLayout_2", {0, 1, 2, 1}},
    {"grpSetLengths", "QGroupBox", "Set Lengths", "gridLayout_2", {1, 0, 1, 1}},

    {"chbRotateX", "QCheckBox", "Rotate about X", "_4", {0, 0, 1, 1}},
    {"edtRotateX", "LineEditCustom", "", "_4", {0, 1, 1, 1}},
    {"chbRotateY", "QCheckBox", "Rotate about Y", "_4", {1, 0, 1, 1}},
    {"edtRotateY", "LineEditCustom", "", "_4", {1, 1, 1, 1}},
    {"chbRotateZ", "QCheckBox", "Rotate about Z", "_4", {2, 0, 1, 1}},
    {"edtRotateZ", "LineEditCustom", "", "_4", {2, 1, 1, 1}},

    {"chbXSetL", "QCheckBox", "Set X Length", "_5", {0, 0, 1, 1}},
    {"edtXSetL", "LineEditCustom", "", "_5", {0, 1, 1, 1}},
    {"chbYSetL", "QCheckBox", "Set Y Length", "_5", {1, 0, 1, 1}},
    {"edtYSetL", "LineEditCustom", "", "_5", {1, 1, 1, 1}},
    {"chbZSetL", "QCheckBox", "Set Z Length", "_5", {2, 0, 1, 1}},
    {"edtZSetL", "LineEditCustom", "", "_5", {2, 1, 1, 1}},

    {"chbXSet0", "QCheckBox", "Set X origin to zero", "_3", {0, 0, 1, 1}},
    {"chbYSet0", "QCheckBox", "Set Y origin to zero", "_3", {1, 0, 1, 1}},
    {"chbZSet0", "QCheckBox", "Set Z origin to zero", "_3", {2, 0, 1, 1}},
    {"chbXsameY", "QCheckBox", "Set X length to Y length", "_3", {3, 0, 1, 1}},
    {"chbXsameZ", "QCheckBox", "Set X length to Z length", "_3", {4, 0, 1, 1}},
    {"chbYsameX", "QCheckBox", "Set Y length to X length", "_3", {5, 0, 1, 1}},
    {"chbYsameZ", "QCheckBox", "Set Y length to Z length", "_3", {6, 0, 1, 1}},
    {"chbZsameX", "QCheckBox", "Set Z length to X length", "_3", {7, 0, 1, 1}},
    {"chbZsameY", "QCheckBox", "Set Z length to Y length", "_3", {8, 0, 1, 1}},
};

// One layout of the form.
struct LayoutRow {
    const char *name;
    const char *widget; // the widget it is installed on, or null for a layout within a layout
    int margin;         // -1: none of its own
    int items;
    Cell cell; // in gridLayout_3, for those without a widget
};

const LayoutRow layouts[] = {
    {"gridLayout_3", "centralWidget", 11, 5, {0, 0, 0, 0}},
    {"gridLayout", nullptr, -1, 6, {0, 0, 1, 4}},
    {"gridLayout_2", nullptr, -1, 3, {2, 0, 1, 4}},
    {"_2", "groupBox8", 11, 21, {0, 0, 0, 0}},
    {"_3", "grpFlags", 11, 9, {0, 0, 0, 0}},
    {"_4", "grpRotation", 11, 6, {0, 0, 0, 0}},
    {"_5", "grpSetLengths", 11, 6, {0, 0, 0, 0}},
};

const QStringList tabStops{
    "edtFileIn",  "btnBrowseIn", "edtFileOut", "btnBrowseOut", "edtXScale",  "edtXOffsB", "edtXOffsA",
    "edtYScale",  "edtYOffsB",   "edtYOffsA",  "edtZScale",    "edtZOffsB",  "edtZOffsA", "chbRotateX",
    "edtRotateX", "chbRotateY",  "edtRotateY", "chbRotateZ",   "edtRotateZ", "chbXSetL",  "edtXSetL",
    "chbYSetL",   "edtYSetL",    "chbZSetL",   "edtZSetL",     "chbXSet0",   "chbYSet0",  "chbZSet0",
    "chbXsameY",  "chbXsameZ",   "chbYsameX",  "chbYsameZ",    "chbZsameX",  "chbZsameY"};

const QStringList actionNames{"fileOpenAction",    "fileRunAction",  "fileResetAction",
                              "fileViewLogAction", "fileExitAction", "actionAbout_Meshvane"};

const struct {
    const char *name;
    const char *text;
} actionTextCases[] = {
    {"fileOpenAction", "Open"},          {"fileRunAction", "Run"},
    {"fileResetAction", "Reset Fields"}, {"fileViewLogAction", "View Logs"},
    {"fileExitAction", "Exit"},          {"actionAbout_Meshvane", "About Meshvane"},
};

// The names of the children that have one, in order.
QStringList childNames(const QObject &parent)
{
    QStringList names;
    for (const QObject *child : parent.children()) {
        if (!child->objectName().isEmpty() && !child->objectName().startsWith("qt_"))
            names << child->objectName();
    }
    return names;
}

// Those of `names` that are in `wanted`, in the order of `names`.
QStringList only(const QStringList &names, const QStringList &wanted)
{
    QStringList result;
    for (const QString &name : names) {
        if (wanted.contains(name))
            result << name;
    }
    return result;
}

// Records which texts the form has translated.
class TextCollector : public QTranslator {
public:
    mutable QSet<QString> asked;
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        asked << QString(context) + ": " + sourceText;
        return QString();
    }
};

} // namespace

class tst_MainWindowForm : public QObject {
    Q_OBJECT

private slots:
    // Before the first window or field exists.
    void initTestCase() { m_iconsAtFirst = QDir(":/pixmaps").entryList(QDir::NoFilter, QDir::Name); }
    void init() { m = std::make_unique<WindowUnderTest>(); }
    void cleanup() { m.reset(); }

    void everyObjectHasItsClassTextAndPlace_data() { addRows(items); }
    void everyObjectHasItsClassTextAndPlace();
    void formHasNoOtherWidgets();
    void everyLayoutHasItsSettings_data() { addRows(layouts); }
    void everyLayoutHasItsSettings();
    void browseButtonsAreNarrowAndHaveAnIcon_data() { addNamedRows({"btnBrowseIn", "btnBrowseOut"}); }
    void browseButtonsAreNarrowAndHaveAnIcon();
    void labelsDoNotWrap();
    void boxesStretchVertically_data() { addNamedRows(boxNames()); }
    void boxesStretchVertically();
    void onlyAngleAndLengthFieldsAreDisabled();
    void noBoxIsTicked();
    void fieldsAreOtherwisePlain_data() { addNamedRows(fieldNames()); }
    void fieldsAreOtherwisePlain();

    void actionTexts_data() { addRows(actionTextCases); }
    void actionTexts();
    void actionsAreOtherwisePlain_data() { addNamedRows(actionNames); }
    void actionsAreOtherwisePlain();
    void menus();
    void statusBarBelongsToTheWindow();
    void buttonBoxHasThreeButtons();

    void tabOrder();

    void nothingHasTipsOrShortcuts();
    void childrenAreInTheOrderOfTheForm();
    void windowHasItsIcon();
    void iconsAreResources();
    void iconsAreRegisteredBeforeTheFirstWindow();

    void formOnAPlainWindow();
    void formKeepsTheNameOfANamedWindow();
    void formHasAPointerForEveryObject();
    void textsAreTranslatedInTheContextOfTheWindow();
    void retranslatingRestoresTheDefaultsOnly();

private:
    QStringList m_iconsAtFirst;
    std::unique_ptr<WindowUnderTest> m;
};

void tst_MainWindowForm::everyObjectHasItsClassTextAndPlace()
{
    const Item &item = currentRow(items);
    QWidget *widget = m->find<QWidget>(item.name);
    QCOMPARE(widget->metaObject()->className(), item.className);
    if (item.text) {
        const char *property = qobject_cast<QGroupBox *>(widget) ? "title" : "text";
        QCOMPARE(widget->property(property).toString(), QString(item.text));
    }
    QGridLayout *grid = m->find<QGridLayout>(item.layout);
    const int at = grid->indexOf(widget);
    QVERIFY2(at >= 0, "not in its layout");
    Cell cell{};
    grid->getItemPosition(at, &cell.row, &cell.column, &cell.rowSpan, &cell.columnSpan);
    QCOMPARE(cell.row, item.cell.row);
    QCOMPARE(cell.column, item.cell.column);
    QCOMPARE(cell.rowSpan, item.cell.rowSpan);
    QCOMPARE(cell.columnSpan, item.cell.columnSpan);
    QCOMPARE(grid->itemAt(at)->alignment(), Qt::Alignment());
}

void tst_MainWindowForm::formHasNoOtherWidgets()
{
    QStringList expected;
    for (const Item &item : items)
        expected << item.name;
    QStringList found;
    for (const QWidget *widget : m->find<QWidget>("centralWidget")->findChildren<QWidget *>()) {
        if (!widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_"))
            found << widget->objectName();
    }
    expected.sort();
    found.sort();
    QCOMPARE(found, expected);
    QCOMPARE(m->window.findChildren<LineEditCustom *>().size(), 17);
    QCOMPARE(m->window.findChildren<QCheckBox *>().size(), 15);
}

void tst_MainWindowForm::everyLayoutHasItsSettings()
{
    const LayoutRow &row = currentRow(layouts);
    QGridLayout *grid = m->find<QGridLayout>(row.name);
    QCOMPARE(grid->horizontalSpacing(), 6);
    QCOMPARE(grid->verticalSpacing(), 6);
    QCOMPARE(grid->count(), row.items);
    const int margin = row.margin < 0 ? 0 : row.margin;
    QCOMPARE(grid->contentsMargins(), QMargins(margin, margin, margin, margin));
    if (row.widget) {
        QCOMPARE(static_cast<QLayout *>(grid), m->find<QWidget>(row.widget)->layout());
        return;
    }
    QGridLayout *outer = m->find<QGridLayout>("gridLayout_3");
    for (int at = 0; at < outer->count(); ++at) {
        if (outer->itemAt(at)->layout() != grid)
            continue;
        Cell cell{};
        outer->getItemPosition(at, &cell.row, &cell.column, &cell.rowSpan, &cell.columnSpan);
        QCOMPARE(cell.row, row.cell.row);
        QCOMPARE(cell.column, row.cell.column);
        QCOMPARE(cell.rowSpan, row.cell.rowSpan);
        QCOMPARE(cell.columnSpan, row.cell.columnSpan);
        return;
    }
    QFAIL("not in gridLayout_3");
}

void tst_MainWindowForm::browseButtonsAreNarrowAndHaveAnIcon()
{
    const QPushButton *button = m->button(currentName());
    QCOMPARE(button->maximumSize(), QSize(50, 32767));
    QCOMPARE(button->text(), QString());
    QVERIFY(!button->icon().isNull());
    const QSize size = QPixmap(":/pixmaps/fileopen.png").size();
    QVERIFY(!size.isEmpty());
    QCOMPARE(button->icon().pixmap(size).toImage(), QIcon(":/pixmaps/fileopen.png").pixmap(size).toImage());
    m->window.resize(1600, 900);
    m->window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m->window));
    QVERIFY(button->width() <= 50);
}

void tst_MainWindowForm::labelsDoNotWrap()
{
    int labels = 0;
    for (const QLabel *label : m->window.findChildren<QLabel *>()) {
        if (label->objectName().startsWith("lbl")) {
            QVERIFY(!label->wordWrap());
            ++labels;
        }
    }
    QCOMPARE(labels, 14);
}

void tst_MainWindowForm::boxesStretchVertically()
{
    const QSizePolicy policy = m->box(currentName())->sizePolicy();
    QCOMPARE(policy.horizontalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(policy.verticalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(policy.horizontalStretch(), 0);
    QCOMPARE(policy.verticalStretch(), 0);
    QCOMPARE(policy.hasHeightForWidth(), QCheckBox().sizePolicy().hasHeightForWidth());
}

void tst_MainWindowForm::onlyAngleAndLengthFieldsAreDisabled()
{
    QStringList disabled;
    for (const QWidget *widget : m->find<QWidget>("centralWidget")->findChildren<QWidget *>()) {
        if (!widget->isEnabled() && !widget->objectName().isEmpty())
            disabled << widget->objectName();
    }
    disabled.sort();
    QCOMPARE(disabled,
             QStringList({"edtRotateX", "edtRotateY", "edtRotateZ", "edtXSetL", "edtYSetL", "edtZSetL"}));
    for (const QString &name : actionNames)
        QVERIFY(m->action(name)->isEnabled());
}

void tst_MainWindowForm::noBoxIsTicked()
{
    for (const QString &name : boxNames()) {
        QVERIFY(!m->isTicked(name));
        QVERIFY(!m->box(name)->isTristate());
    }
}

void tst_MainWindowForm::fieldsAreOtherwisePlain()
{
    const QLineEdit *field = m->field(currentName());
    QWidget host;
    const LineEditCustom plain(&host);
    for (const char *property : {"inputMask", "maxLength", "frame", "echoMode", "alignment", "dragEnabled",
                                 "readOnly", "placeholderText", "cursorMoveStyle", "clearButtonEnabled",
                                 "sizePolicy", "minimumSize", "maximumSize", "styleSheet", "focusPolicy",
                                 "contextMenuPolicy", "acceptDrops", "layoutDirection"}) {
        QVERIFY2(plain.property(property).isValid(), property);
        QVERIFY2(field->property(property) == plain.property(property), property);
    }
    QCOMPARE(field->textMargins(), plain.textMargins());
    QCOMPARE(field->font(), m->window.font());
    QVERIFY(!field->validator());
    QVERIFY(!field->completer());
    QVERIFY(field->actions().isEmpty());
}

void tst_MainWindowForm::actionTexts()
{
    const auto &row = currentRow(actionTextCases);
    const QAction *action = m->action(row.name);
    QCOMPARE(action->text(), QString(row.text));
    QCOMPARE(action->parent(), static_cast<QObject *>(&m->window));
    QVERIFY(!action->isCheckable());
}

void tst_MainWindowForm::actionsAreOtherwisePlain()
{
    const QAction *action = m->action(currentName());
    const QAction plain(action->text());
    QVERIFY(action->icon().isNull());
    QVERIFY(!action->data().isValid());
    for (const char *property : {"iconText", "whatsThis", "font", "shortcutContext", "autoRepeat", "visible",
                                 "menuRole", "iconVisibleInMenu", "priority"}) {
        QVERIFY2(plain.property(property).isValid(), property);
        QVERIFY2(action->property(property) == plain.property(property), property);
    }
}

void tst_MainWindowForm::menus()
{
    QMenuBar *bar = m->find<QMenuBar>("menuBar");
    QCOMPARE(m->window.menuBar(), bar);
    QMenu *file = m->find<QMenu>("menuFile");
    QMenu *help = m->find<QMenu>("menuHelp");
    QCOMPARE(file->parentWidget(), static_cast<QWidget *>(bar));
    QCOMPARE(help->parentWidget(), static_cast<QWidget *>(bar));
    QCOMPARE(file->title(), QString("File"));
    QCOMPARE(help->title(), QString("Help"));
    QCOMPARE(bar->actions(), QList<QAction *>({file->menuAction(), help->menuAction()}));

    const QList<QAction *> entries = file->actions();
    QCOMPARE(entries.size(), 6);
    QVERIFY(entries.at(4)->isSeparator());
    const QList<QAction *> commands{m->action("fileOpenAction"), m->action("fileRunAction"),
                                    m->action("fileResetAction"), m->action("fileViewLogAction")};
    QCOMPARE(entries.mid(0, 4), commands);
    QCOMPARE(entries.at(5), m->action("fileExitAction"));
    QCOMPARE(help->actions(), QList<QAction *>{m->action("actionAbout_Meshvane")});
}

void tst_MainWindowForm::statusBarBelongsToTheWindow()
{
    QCOMPARE(m->window.statusBar(), m->find<QStatusBar>("statusBar"));
    QCOMPARE(m->window.centralWidget(), m->find<QWidget>("centralWidget"));
}

void tst_MainWindowForm::buttonBoxHasThreeButtons()
{
    const QDialogButtonBox *box = m->find<QDialogButtonBox>("buttonBox");
    QCOMPARE(box->standardButtons(),
             QDialogButtonBox::Apply | QDialogButtonBox::Reset | QDialogButtonBox::Close);
    QCOMPARE(box->buttons().size(), 3);
    QCOMPARE(box->orientation(), Qt::Horizontal);
}

void tst_MainWindowForm::tabOrder()
{
    QStringList order;
    QWidget *widget = m->find<QWidget>(tabStops.first());
    while (order.size() < tabStops.size()) {
        if (widget->focusPolicy() & Qt::TabFocus)
            order << widget->objectName();
        widget = widget->nextInFocusChain();
    }
    QCOMPARE(order, tabStops);
}

void tst_MainWindowForm::nothingHasTipsOrShortcuts()
{
    for (const QWidget *widget : m->window.findChildren<QWidget *>()) {
        QCOMPARE(widget->toolTip(), QString());
        QCOMPARE(widget->statusTip(), QString());
        QCOMPARE(widget->whatsThis(), QString());
    }
    for (const QString &name : actionNames) {
        QVERIFY(m->action(name)->shortcut().isEmpty());
        QCOMPARE(m->action(name)->statusTip(), QString());
        // Without a tool tip of its own, an action returns its text.
        QCOMPARE(m->action(name)->toolTip(), m->action(name)->text());
    }
    for (const QString &name : boxNames())
        QVERIFY(m->box(name)->shortcut().isEmpty());
    for (const QString name : {"btnViewLog", "btnBrowseIn", "btnBrowseOut"})
        QVERIFY(m->button(name)->shortcut().isEmpty());
}

void tst_MainWindowForm::childrenAreInTheOrderOfTheForm()
{
    QCOMPARE(only(childNames(m->window), actionNames + QStringList{"centralWidget", "menuBar", "statusBar"}),
             actionNames + QStringList({"centralWidget", "menuBar", "statusBar"}));
    QCOMPARE(childNames(*m->find<QMenuBar>("menuBar")), QStringList({"menuFile", "menuHelp"}));

    const QStringList before{"gridLayout_3", "groupBox8",  "lblFileIn",  "edtFileIn",
                             "btnBrowseIn",  "lblFileOut", "edtFileOut", "btnBrowseOut"};
    const QStringList central = childNames(*m->find<QWidget>("centralWidget"));
    QCOMPARE(central.mid(0, 8), before);
    QStringList groups = central.mid(8, 3);
    groups.sort();
    QCOMPARE(groups, QStringList({"grpFlags", "grpRotation", "grpSetLengths"}));
    QCOMPARE(central.mid(11), QStringList({"btnViewLog", "buttonBox"}));

    for (const LayoutRow &row : layouts) {
        if (!row.widget || QString(row.name) == "gridLayout_3")
            continue;
        QStringList expected{row.name};
        for (const Item &item : items) {
            if (QString(item.layout) == row.name)
                expected << item.name;
        }
        QCOMPARE(childNames(*m->find<QWidget>(row.widget)), expected);
    }
}

void tst_MainWindowForm::windowHasItsIcon()
{
    const QSize size = QPixmap(":/pixmaps/transform-scale.png").size();
    QVERIFY(!size.isEmpty());
    const QImage expected =
        QIcon(":/pixmaps/transform-scale.png").pixmap(size, QIcon::Normal, QIcon::Off).toImage();
    QCOMPARE(m->window.windowIcon().pixmap(size, QIcon::Normal, QIcon::Off).toImage(), expected);
}

void tst_MainWindowForm::iconsAreResources()
{
    QCOMPARE(QPixmap(":/pixmaps/dialog-error22x22.png").size(), QSize(22, 22));
    QCOMPARE(QPixmap(":/pixmaps/dialog-warning22x22.png").size(), QSize(22, 22));
    QVERIFY(!QPixmap(":/pixmaps/fileopen.png").isNull());
    QVERIFY(!QPixmap(":/pixmaps/transform-scale.png").isNull());
}

void tst_MainWindowForm::iconsAreRegisteredBeforeTheFirstWindow()
{
    QCOMPARE(m_iconsAtFirst, QStringList({"dialog-error22x22.png", "dialog-warning22x22.png", "fileopen.png",
                                          "transform-scale.png"}));
}

void tst_MainWindowForm::formOnAPlainWindow()
{
    QMainWindow window;
    Ui::MeshvaneMainWindow form;
    form.setupUi(&window);
    QCOMPARE(window.objectName(), QString("MeshvaneMainWindow"));
    QCOMPARE(window.size(), QSize(460, 678));
    QCOMPARE(window.windowTitle(), QString("MeshvaneMainWindow"));
    QVERIFY(!window.windowIcon().isNull());
    QCOMPARE(form.menuBar->geometry(), QRect(0, 0, 460, 21));
    QCOMPARE(form.buttonBox->button(QDialogButtonBox::Apply)->text(),
             QDialogButtonBox(QDialogButtonBox::Apply).button(QDialogButtonBox::Apply)->text());
}

void tst_MainWindowForm::formKeepsTheNameOfANamedWindow()
{
    QMainWindow window;
    window.setObjectName("another");
    Ui::MeshvaneMainWindow form;
    form.setupUi(&window);
    QCOMPARE(window.objectName(), QString("another"));
}

void tst_MainWindowForm::formHasAPointerForEveryObject()
{
    QMainWindow window;
    Ui::MeshvaneMainWindow form;
    form.setupUi(&window);
    const QList<QObject *> objects{form.fileOpenAction,
                                   form.fileRunAction,
                                   form.fileResetAction,
                                   form.fileViewLogAction,
                                   form.fileExitAction,
                                   form.actionAbout_Meshvane,
                                   form.centralWidget,
                                   form.gridLayout_3,
                                   form.menuBar,
                                   form.menuFile,
                                   form.menuHelp,
                                   form.statusBar,
                                   form.gridLayout,
                                   form.gridLayout_2,
                                   form._2,
                                   form._3,
                                   form._4,
                                   form._5,
                                   form.groupBox8,
                                   form.grpRotation,
                                   form.grpFlags,
                                   form.grpSetLengths,
                                   form.btnViewLog,
                                   form.buttonBox,
                                   form.edtFileIn,
                                   form.edtXScale,
                                   form.chbXsameY,
                                   form.chbRotateX,
                                   form.edtRotateX,
                                   form.lblXTerm2};
    for (QObject *object : objects)
        QCOMPARE(window.findChild<QObject *>(object->objectName()), object);
}

void tst_MainWindowForm::textsAreTranslatedInTheContextOfTheWindow()
{
    TextCollector collector;
    QCoreApplication::installTranslator(&collector);
    const MeshvaneMainWindow window;
    QCoreApplication::removeTranslator(&collector);
    QStringList expected{"MeshvaneMainWindow", "File",      "Help", "Open",          "Run",
                         "Reset Fields",       "View Logs", "Exit", "About Meshvane"};
    for (const Item &item : items) {
        if (item.text && *item.text)
            expected << item.text;
    }
    for (const QString &text : std::as_const(expected))
        QVERIFY2(collector.asked.contains("MeshvaneMainWindow: " + text), qPrintable(text));
}

void tst_MainWindowForm::retranslatingRestoresTheDefaultsOnly()
{
    QMainWindow window;
    Ui::MeshvaneMainWindow form;
    form.setupUi(&window);
    for (const QString &name : fieldNames())
        window.findChild<QLineEdit *>(name)->setText("changed");
    form.retranslateUi(&window);
    for (const QString &name : fieldNames()) {
        QString expected = "changed";
        if (name.endsWith("Scale"))
            expected = "1";
        else if (name.contains("Offs"))
            expected = "0";
        else if (name == "edtFileOut")
            expected = "";
        QCOMPARE(window.findChild<QLineEdit *>(name)->text(), expected);
    }
}

MESHVANE_QTEST_MAIN(tst_MainWindowForm)
#include "tst_MainWindowForm.moc"
