#include "tests/support/TransformComparison.h"

#include "stl/StlPasses.h"
#include "tests/support/RunParameters.h"
#include "tests/support/StlComparison.h"
#include "tests/support/TextFile.h"
#include "tests/support/TransformCall.h"
#include "transform/RunFiles.h"

#include <cstdio>

namespace {

constexpr const char *outputName = "out.stl";
constexpr const char *twinOutputName = "out-of-twin.stl";

TransformParameters parametersOf(const plain::Placement &placement, const plain::Request &r)
{
    using P = TransformParameters;
    return with(
        {}, {{scales, placement.scale.x, placement.scale.y, placement.scale.z},
             {offsetsBefore, placement.offsetBefore.x, placement.offsetBefore.y, placement.offsetBefore.z},
             {offsetsAfter, placement.offsetAfter.x, placement.offsetAfter.y, placement.offsetAfter.z},
             {rotations, r.rotateX, r.rotateY, r.rotateZ},
             {angles, r.angleX, r.angleY, r.angleZ},
             {setLengths, r.setLengthX, r.setLengthY, r.setLengthZ},
             {lengths, r.lengthX, r.lengthY, r.lengthZ},
             {origins, r.setOriginX, r.setOriginY, r.setOriginZ},
             {&P::xSameY, r.xSameY},
             {&P::xSameZ, r.xSameZ},
             {&P::ySameX, r.ySameX},
             {&P::ySameZ, r.ySameZ},
             {&P::zSameX, r.zSameX},
             {&P::zSameY, r.zSameY}});
}

TransformOutcome transformWithProduct(MeshTransformer &transformer, const TransformParameters &parameters,
                                      StlLineEnd lineEnd)
{
    TransformOutcome outcome;
    char message[stlMessageCapacity] = {};
    outcome.message.copy(message, sizeof message - 1);
    outcome.result = callTransform(transformer, message, openStream(temporaryFileName, "r").release(),
                                   openStream(outputName, "w+").release(), parameters, lineEnd);
    outcome.message = message;
    outcome.output = readBytes(outputName);
    return outcome;
}

// The same on a temporary file whose line feeds all have a carriage return before them.
TransformOutcome transformLongLines(const TransformParameters &parameters)
{
    const std::string text = readBytes(temporaryFileName);
    writeBytes(temporaryFileName, withCarriageReturns(text));
    MeshTransformer transformer = makeTransformer(parameters);
    const TransformOutcome outcome =
        transformWithProduct(transformer, parameters, StlLineEnd::carriageReturnAndLineFeed);
    writeBytes(temporaryFileName, text);
    return outcome;
}

TransformOutcome transformWithTwin(plain::Placement &placement, plain::Extents &extents,
                                   const plain::Request &request)
{
    TransformOutcome outcome;
    char message[plain::messageCapacity] = {};
    outcome.message.copy(message, sizeof message - 1);
    outcome.result =
        plain::transform(placement, extents, message, openStream(temporaryFileName, "r").release(),
                         openStream(twinOutputName, "w+").release(), request);
    outcome.message = message;
    outcome.output = readBytes(twinOutputName);
    return outcome;
}

void compareFields(Verdict &verdict, const MeshTransformer &product, const plain::Placement &twin,
                   const plain::Extents &extents)
{
    const struct {
        const char *name;
        double product;
        double twin;
    } fields[] = {
        {"xScl", product.xScl, twin.scale.x},          {"yScl", product.yScl, twin.scale.y},
        {"zScl", product.zScl, twin.scale.z},          {"xOfsB", product.xOfsB, twin.offsetBefore.x},
        {"yOfsB", product.yOfsB, twin.offsetBefore.y}, {"zOfsB", product.zOfsB, twin.offsetBefore.z},
        {"xOfsA", product.xOfsA, twin.offsetAfter.x},  {"yOfsA", product.yOfsA, twin.offsetAfter.y},
        {"zOfsA", product.zOfsA, twin.offsetAfter.z},
    };
    for (const auto &field : fields)
        verdict.expectSameOrBothNan(field.product, field.twin, field.name);
    compareExtents(verdict,
                   {product.xMin, product.xMax, product.yMin, product.yMax, product.zMin, product.zMax},
                   extents);
}

} // namespace

TransformOutcome compareTransformation(Verdict &verdict, plain::Placement placement,
                                       const plain::Request &request)
{
    // Some file systems write a file out when it is truncated and written again, which takes its time.
    std::remove(outputName);
    std::remove(twinOutputName);
    const TransformParameters parameters = parametersOf(placement, request);
    MeshTransformer transformer = makeTransformer(parameters);
    const TransformOutcome product = transformWithProduct(transformer, parameters, StlLineEnd::lineFeed);
    plain::Extents extents;
    const TransformOutcome twin = transformWithTwin(placement, extents, request);

    verdict.expectSame(product.result, twin.result, "transformation: result");
    verdict.expectSameText(product.message, twin.message, "transformation: message");
    verdict.expectSameText(product.output, twin.output, "transformation: output");
    compareFields(verdict, transformer, placement, extents);

    const TransformOutcome longLines = transformLongLines(parameters);
    verdict.expectSame(longLines.result, product.result, "transformation with carriage returns: result");
    verdict.expectSameText(longLines.message, product.message,
                           "transformation with carriage returns: message");
    verdict.expectSameText(longLines.output, withCarriageReturns(product.output),
                           "transformation with carriage returns: output");
    return product;
}
