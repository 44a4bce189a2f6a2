// A line edit that checks its text against a list of policies as the user types. The outcome is an icon at
// the right end of the field; the icon's tool tip explains it.
#pragma once

#include "widgets/LineEditPolicy.h"

#include <QLineEdit>
#include <QString>
#include <QStringList>

class QLabel;

class LineEditCustom : public QLineEdit {
    Q_OBJECT

public:
    explicit LineEditCustom(QWidget *parent = nullptr);
    ~LineEditCustom() override;

    // The name at the start of every message; bold puts it between "<b>" and "</b>". After a change, messages
    // with the old name stand until a check run of the disabled or hidden field drops them.
    void setFieldName(QString name, bool bold);

    // Takes a LineEditPolicy. PolicyNone empties the list; PolicyKeepFullPath and unknown codes are ignored.
    void addPolicy(int code);

    // Adds a text that PolicyInvalidValues forbids: the decimal text of the value.
    void addInvalidValue(int value, bool clearFirst);

    void setMinimumValue(float value) { minimumValue = value; }
    void setMaximumValue(float value) { maximumValue = value; }
    void setUsedNames(QStringList names) { usedNames = std::move(names); }
    void setInvalidCharacters(QStringList characters) { invalidCharacters = std::move(characters); }

    // Runs the checks and returns every standing error message, each followed by "<br>"; empty if there is
    // none. For a disabled field it returns an empty text and does nothing.
    QString errorText();

    // Ask for a file and put its name into the field: the bare name of a file in the current directory, the
    // full path of any other. A cancelled dialog leaves the text as it was. An empty caption is replaced with
    // the field's name and " Save As", in both dialogs. The suffix is appended to a name that does not end
    // with it.
    void browseOpenFile(QString filter, QString caption);
    void browseSaveFile(QString suffix, QString filter, QString caption);

public slots:
    // Runs all checks and shows the outcome; called on every change of the text. A disabled or hidden field
    // drops its errors instead.
    void applyLineEditPolicy();

    // Rounds the text if PolicyRoundToInteger asks for it; called when editing is finished. Deliberate: the
    // name is misspelled, and connections look it up by that spelling.
    void applyModifingPolicies();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    bool hasPolicy(LineEditPolicy policy) const;
    void runChecks();
    void showStatusIcon(const QStringList &messages, const QString &pixmapPath);
    void hideStatusIcon();
    void placeStatusIcon();
    void createStatusIcon();
    void makeRoomForStatusIcon();
    int frameWidth() const;
    QString captionOrDefault(const QString &caption) const;
    void takeChosenName(const QString &chosenName, const QString &textBefore);

    QStringList policies; // codes as decimal texts, without duplicates

protected:
    // Shown with an icon of their own when there are no errors. Nothing in this class adds one; a derived
    // class may.
    QStringList warnings;

private:
    QStringList errors; // standing messages, in the order in which they first failed
    float minimumValue = 0.0F;
    float maximumValue = 0.0F;
    QStringList usedNames;
    QStringList invalidValues;
    QStringList invalidCharacters;
    QString fieldName;
    bool excludeOwnName = true; // until a check run ends clean for the first time
    QLabel *statusIcon = nullptr;
};
