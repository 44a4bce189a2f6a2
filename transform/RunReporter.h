// What a run may say to its user, in the order it happens. The window shows it, tests record it.
#pragma once

#include <QString>

class RunReporter {
public:
    virtual ~RunReporter() = default;

    // A failure, in a box titled "Error notification". The run may still go on.
    virtual void error(const QString &text) = 0;

    // The run log cannot be emptied; `details` is the whole text of a box titled "Disc Write fail".
    virtual void logNotEmptied(const QString &details) = 0;

    // The run has succeeded.
    virtual void finished(const QString &statusText) = 0;
};
