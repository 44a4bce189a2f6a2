#include "widgets/LineEditCustom.h"

#include "widgets/FieldChecks.h"
#include "widgets/RoundingByText.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QStyle>
#include <QXmlStreamReader>

#include <algorithm>
#include <utility>

// The icons are in a static library: without this reference the linker would leave them out of the program.
// (The macro declares a function in the global namespace.)
static void linkIcons() { Q_INIT_RESOURCE(meshvane); }

namespace {

constexpr int statusIconWidth = 20;
constexpr int rightTextMargin = 12;

bool isCheck(int code)
{
    const QVector<FieldCheck> &checks = fieldChecks();
    return std::any_of(checks.begin(), checks.end(),
                       [code](const FieldCheck &check) { return static_cast<int>(check.policy) == code; });
}

// Deliberate: PolicyKeepFullPath is refused, so a file chosen in the current directory always becomes its
// bare name.
bool canBeAdded(int code) { return code == PolicyRoundToInteger || isCheck(code); }

// Deliberate: a single message has no line break; of several, each has one after it, the last included.
QString toolTipOf(const QStringList &messages)
{
    return messages.size() == 1 ? messages.first() : messages.join("<br>") + "<br>";
}

// Deliberate: a text without mark-up is not an XML document and yields no characters.
QString charactersOf(const QString &markup)
{
    QString characters;
    QXmlStreamReader reader(markup);
    while (!reader.atEnd() && !reader.hasError()) {
        if (reader.readNext() == QXmlStreamReader::Characters)
            characters += reader.text();
    }
    return characters;
}

bool liesInCurrentDirectory(const QString &path)
{
    return QFileInfo(path).dir() == QDir(QDir::currentPath());
}

} // namespace

LineEditCustom::LineEditCustom(QWidget *parent)
    : QLineEdit(parent)
{
    linkIcons();
    createStatusIcon();
    makeRoomForStatusIcon();
    // By name: only such connections can be found, and undone, by the names of the slots.
    connect(this, SIGNAL(textChanged(QString)), this, SLOT(applyLineEditPolicy()));
    connect(this, SIGNAL(editingFinished()), this, SLOT(applyModifingPolicies()));
}

LineEditCustom::~LineEditCustom() = default;

void LineEditCustom::createStatusIcon()
{
    statusIcon = new QLabel(this);
    statusIcon->setCursor(Qt::ArrowCursor);
    statusIcon->setStyleSheet("QLabel { border: none; padding: 0px; }");
    statusIcon->hide();
}

void LineEditCustom::makeRoomForStatusIcon()
{
    const int frame = frameWidth();
    setStyleSheet(
        QString("QLineEdit { padding-right: %1px; } ").arg(statusIcon->sizeHint().width() + frame + 1));

    // Deliberate: the icon's height is a lower bound for the width too, so the field is never narrower than
    // the icon is tall.
    const QSize least = minimumSizeHint();
    const int iconHeight = statusIcon->sizeHint().height() + 2 * frame + 2;
    setMinimumSize(std::max(least.width(), iconHeight), std::max(least.height(), iconHeight));

    QMargins margins = textMargins();
    margins.setRight(rightTextMargin);
    setTextMargins(margins);
}

int LineEditCustom::frameWidth() const
{
    return style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
}

void LineEditCustom::setFieldName(QString name, bool bold)
{
    fieldName = bold ? "<b>" + name + "</b>" : std::move(name);
}

void LineEditCustom::addPolicy(int code)
{
    if (code == PolicyNone)
        policies.clear();
    else if (canBeAdded(code))
        policies.append(QString::number(code));
    policies.removeDuplicates();
}

bool LineEditCustom::hasPolicy(LineEditPolicy policy) const
{
    return policies.contains(QString::number(static_cast<int>(policy)));
}

void LineEditCustom::addInvalidValue(int value, bool clearFirst)
{
    if (clearFirst)
        invalidValues.clear();
    invalidValues.append(QString::number(value));
}

QString LineEditCustom::errorText()
{
    // Deliberate: a disabled field keeps its messages and its icon until the next check run.
    if (!isEnabled())
        return {};
    applyLineEditPolicy();
    errors.removeDuplicates();
    QString text;
    for (const QString &error : std::as_const(errors))
        text += error + "<br>";
    return text;
}

void LineEditCustom::applyLineEditPolicy()
{
    if (isHidden() || !isEnabled()) {
        hideStatusIcon();
        errors.clear();
        return;
    }
    runChecks();
    if (!errors.isEmpty()) {
        showStatusIcon(errors, ":/pixmaps/dialog-error22x22.png");
        return;
    }
    hideStatusIcon();
    // Deliberate: a check run with errors leaves the field's own tool tip as it is; one without empties it.
    setToolTip({});
    warnings.removeDuplicates();
    if (!warnings.isEmpty()) {
        showStatusIcon(warnings, ":/pixmaps/dialog-warning22x22.png");
        return;
    }
    // Deliberate: after the first clean run, the field's own name in usedNames counts as taken.
    excludeOwnName = false;
}

void LineEditCustom::runChecks()
{
    const FieldFacts facts{text(),    fieldName,     minimumValue,      maximumValue,
                           usedNames, invalidValues, invalidCharacters, excludeOwnName};
    for (const FieldCheck &check : fieldChecks()) {
        if (!hasPolicy(check.policy))
            continue;
        for (const FieldFinding &finding : check.run(facts)) {
            if (finding.failed)
                errors.append(finding.message);
            else
                errors.removeAll(finding.message);
        }
    }
    errors.removeDuplicates();
}

void LineEditCustom::showStatusIcon(const QStringList &messages, const QString &pixmapPath)
{
    statusIcon->setPixmap(
        QPixmap(pixmapPath)
            .scaled(statusIconWidth, statusIcon->height(), Qt::KeepAspectRatio, Qt::FastTransformation));
    statusIcon->setToolTip(toolTipOf(messages));
    statusIcon->show();
    placeStatusIcon();
}

void LineEditCustom::hideStatusIcon()
{
    statusIcon->setToolTip({});
    statusIcon->hide();
}

void LineEditCustom::placeStatusIcon()
{
    // Deliberate: the label is moved, never resized.
    const QSize icon = statusIcon->sizeHint();
    statusIcon->move(rect().right() - frameWidth() - icon.width(), (rect().bottom() - icon.height()) / 2);
}

// Deliberate: the base class is not called; only the icon depends on the size.
void LineEditCustom::resizeEvent(QResizeEvent *) { placeStatusIcon(); }

void LineEditCustom::applyModifingPolicies()
{
    // Deliberate: a text that is not a number counts as 0.
    if (hasPolicy(PolicyRoundToInteger) && !text().isEmpty())
        setText(QString::number(roundToInteger(text().toFloat())));
}

void LineEditCustom::browseOpenFile(QString filter, QString caption)
{
    const QString textBefore = text();
    const QString name =
        QFileDialog::getOpenFileName(this, captionOrDefault(caption), QDir::currentPath(), filter);
    takeChosenName(name, textBefore);
}

void LineEditCustom::browseSaveFile(QString suffix, QString filter, QString caption)
{
    const QString textBefore = text();
    QString name = QFileDialog::getSaveFileName(this, captionOrDefault(caption), QDir::currentPath(), filter);
    // Deliberate: the suffix is compared without surrounding white space but appended as given.
    if (!name.isEmpty() && !name.endsWith(suffix.simplified(), Qt::CaseSensitive))
        name += suffix;
    takeChosenName(name, textBefore);
}

QString LineEditCustom::captionOrDefault(const QString &caption) const
{
    // Deliberate: the default is " Save As" for the open dialog too.
    return caption.isEmpty() ? charactersOf(fieldName.simplified()) + " Save As" : caption;
}

void LineEditCustom::takeChosenName(const QString &chosenName, const QString &textBefore)
{
    if (chosenName.isEmpty())
        setText(textBefore);
    else if (liesInCurrentDirectory(chosenName) && !hasPolicy(PolicyKeepFullPath))
        setText(chosenName.section(QDir::separator(), -1));
    else
        setText(chosenName);
}
