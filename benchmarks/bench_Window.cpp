// Pressing Run in the window compared with the same run without window and log, alternating.
//
//   bench_Window [facets [rounds]]

#include "app/MeshvaneMainWindow.h"
#include "benchmarks/BenchMesh.h"
#include "benchmarks/CpuTime.h"
#include "tests/support/TemporaryFolder.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

void fillIn(MeshvaneMainWindow &window)
{
    const struct {
        const char *field;
        const char *text;
    } values[] = {{"edtFileIn", "binary.stl"}, {"edtFileOut", "window.out"}, {"edtXScale", "2.5"},
                  {"edtYScale", "2.5"},        {"edtZScale", "0.4"},         {"edtXOffsB", "1.25"},
                  {"edtYOffsB", "-3"},         {"edtZOffsB", "0.1"},         {"edtYOffsA", "10"},
                  {"edtZOffsA", "0.7"}};
    for (const auto &value : values)
        window.findChild<QLineEdit *>(value.field)->setText(value.text);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const int facets = argc > 1 ? std::atoi(argv[1]) : 1000000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 9;
    const TemporaryFolder folder;
    writeBall("binary.stl", facets);
    MeshvaneMainWindow window;
    window.show();
    fillIn(window);
    QPushButton *run = window.findChild<QDialogButtonBox *>("buttonBox")->button(QDialogButtonBox::Apply);

    double engine = 1e9;
    double pressed = 1e9;
    for (int round = 0; round < rounds; ++round) {
        engine =
            std::min(engine, cpuSecondsOf([] { runEngine(scaleAndOffset(), "binary.stl", "engine.out"); }));
        pressed = std::min(pressed, cpuSecondsOf([&] {
                               run->click();
                               QApplication::processEvents();
                           }));
        if (!window.statusBar()->currentMessage().startsWith("Calculation finished"))
            return EXIT_FAILURE;
    }
    std::printf("%d facets: %.3f CPU seconds without window and log, %.3f by pressing Run, ratio %.3f.\n",
                facets, engine, pressed, pressed / engine);
    return EXIT_SUCCESS;
}
