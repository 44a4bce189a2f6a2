#include "tests/guide/GuideExamples.h"

namespace {

const QString fence = QStringLiteral("```");

QVector<GuideBlock> blocksIn(const QString &guide)
{
    QVector<GuideBlock> blocks;
    bool inside = false;
    int lineNumber = 0;
    for (const QString &line : guide.split('\n')) {
        ++lineNumber;
        if (!line.startsWith(fence)) {
            if (inside)
                blocks.last().lines << line;
            continue;
        }
        inside = !inside;
        if (inside) {
            const QString heading = line.mid(fence.size());
            blocks << GuideBlock{heading.section(' ', 0, 0), heading.section(' ', 1), {}, lineNumber};
        }
    }
    return blocks;
}

} // namespace

QVector<GuideExample> examplesIn(const QString &guide)
{
    static const QStringList resultKinds{"mesh", "file", "log", "box"};
    QVector<GuideExample> examples;
    for (const GuideBlock &block : blocksIn(guide)) {
        if (block.kind == "form")
            examples << GuideExample{block, {}};
        else if (resultKinds.contains(block.kind) && !examples.isEmpty())
            examples.last().results << block;
    }
    return examples;
}
