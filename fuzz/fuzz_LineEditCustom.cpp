// Any sequence of actions on a validating field.
#include "fuzz/FuzzVerdict.h"
#include "tests/corpus/FieldProperty.h"
#include "tests/support/TemporaryFolder.h"

#include <QApplication>
#include <QLocale>

int LLVMFuzzerInitialize(int *, char ***)
{
    static const TemporaryFolder folder;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("XDG_RUNTIME_DIR", folder.path().c_str());
    // Qt warns about file names that contain zero bytes.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    static int argumentCount = 1;
    static char programName[] = "fuzz_LineEditCustom";
    static char *arguments[] = {programName, nullptr};
    static const QApplication application(argumentCount, arguments);
    QLocale::setDefault(QLocale::c());
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    return demand(checkField(asText(data, size)));
}
