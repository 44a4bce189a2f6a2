// The job of scripts/compare.sh: in.stl of the current folder, scaled and moved, to out.stl.
#include "benchmarks/BenchMesh.h"

#include <cstdlib>

int main()
{
    TransformParameters job;
    job.xScl = 1.5;
    job.yScl = 2.0;
    job.zScl = 0.5;
    job.xOfsA = 1.0;
    job.yOfsA = 2.0;
    job.zOfsA = 3.0;
    return runEngine(job, "in.stl", "out.stl") ? EXIT_SUCCESS : EXIT_FAILURE;
}
