// Streams on devices that fail or are full.
#include "stl/StlAsciiFacets.h"
#include "stl/StlBinaryFacets.h"
#include "stl/StlCommonFacet.h"
#include "stl/StlLimits.h"
#include "stl/StlLines.h"
#include "stl/StlPasses.h"
#include "stl/StlTextWriter.h"
#include "tests/stl/PassCalls.h"
#include "tests/support/FailingStream.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TextFile.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>

namespace {

TEST(StlFailingStreams, AReadErrorWithinAnAsciiFacetIsKept)
{
    // In a facet of the common form, and after a number that is not plain.
    const std::string odd = asciiFacet({"0x1 2 3", "1 2 3", "4 5 6", "7 8 9"});
    for (const std::string &readable : {std::string(stlCommonFacetText).substr(0, stlCommonFacetSize / 2),
                                        odd.substr(0, odd.find("vertex"))}) {
        SCOPED_TRACE(readable);
        const Stream in = streamFailingAfter("label\n" + readable);
        StlAsciiFacetReader reader(in.get());
        StlFacet facet;
        reader.read(facet);
        reader.read(facet);
        EXPECT_EQ(reader.error(), EIO);
    }
}

TEST(StlFailingStreams, AReadErrorWithinABinaryFacetIsKept)
{
    const Stream in = streamFailingAfter(std::string(stlBinaryFacetSize + 20, '\0'));
    StlBinaryFacetReader reader(in.get());
    StlFacet read;
    reader.read(read);
    reader.read(read);
    EXPECT_EQ(reader.error(), EIO);
}

// The reader takes whole blocks, so it meets the error before it is asked for the lines ahead of it.
TEST(StlFailingStreams, AnErrorCountsOnlyWhenItsLineIsAskedFor)
{
    const Stream in = streamFailingAfter("one\ntwo\n");
    StlLineReader reader(in.get());
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(reader.next());
        EXPECT_FALSE(reader.failed());
    }
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(reader.failed());
}

TEST(StlFailingStreams, ALineThatAnErrorCutsShortIsNotRead)
{
    for (const Stream &in : {streamFailingAfter("one\ntw"), pipeFailingAfter("one\ntw")}) {
        StlLineReader reader(in.get());
        ASSERT_TRUE(reader.next());
        EXPECT_FALSE(reader.failed());
        EXPECT_FALSE(reader.next());
        EXPECT_TRUE(reader.failed());
        EXPECT_EQ(reader.number(), 1);
    }
}

TEST(StlFailingStreams, AFullPieceIsWholeWithoutALineFeed)
{
    const Stream in = streamFailingAfter(std::string(stlLongestLine, 'a'));
    StlLineReader reader(in.get());
    ASSERT_TRUE(reader.next());
    EXPECT_FALSE(reader.failed());
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(reader.failed());
}

TEST(StlFailingStreams, AnOutputThatIsFullIsAFailure)
{
    const std::string texts[] = {label, label + facet + endLine, largeMesh()};
    for (const std::string &text : texts) {
        SCOPED_TRACE(text.size());
        const Stream in = streamOf(text);
        const Stream out = openStream("/dev/full", "w");
        char message[stlMessageCapacity] = "before";
        EXPECT_EQ(apply(message, in.get(), out.get(), {}), -1);
        EXPECT_STREQ(message, "\nError writing stl file\n");
    }
}

TEST(StlFailingStreams, AReadErrorAfterTheEndsolidLineIsNoFailure)
{
    const std::string whole = label + facet + endLine;
    for (const char *rest : {"", "more\n", "mo"}) {
        SCOPED_TRACE(rest);
        const std::string text = whole + rest;
        EXPECT_EQ(scanOf(streamFailingAfter(text).get()).result, 0);
        const Rewrite rewrite = rewriteOf(streamFailingAfter(text).get());
        EXPECT_EQ(rewrite.result, 0);
        EXPECT_EQ(rewrite.output, rewriteOf(whole).output);
    }
}

TEST(StlFailingStreams, FlushingReportsAFullDisk)
{
    for (const StlLineEnd lineEnd : {StlLineEnd::lineFeed, StlLineEnd::carriageReturnAndLineFeed}) {
        for (const std::size_t size :
             {std::size_t{1}, StlTextWriter::largestRoom / 5, 6 * StlTextWriter::largestRoom}) {
            SCOPED_TRACE(size);
            const Stream stream = openStream("/dev/full", "w");
            StlTextWriter writer(stream.get(), lineEnd);
            writer.write(std::string(size, 'x'));
            EXPECT_FALSE(writer.flush());
            EXPECT_FALSE(writer.flush()) << "a loss stays reported";
        }
    }
}

} // namespace
