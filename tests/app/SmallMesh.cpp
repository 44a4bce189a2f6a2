#include "tests/app/SmallMesh.h"

#include "tests/support/RecordingReporter.h"
#include "tests/support/RunParameters.h"
#include "tests/support/RunTexts.h"

TransformParameters newForm() { return unchanging(); }

QByteArray logOfARun(const TransformParameters &parameters)
{
    return QByteArray::fromStdString(runLog(parameters));
}

QString statusAfterRun(const QString &outputName)
{
    return QString::fromStdString(finishedReport(outputName.toStdString())).remove("finished: ");
}
