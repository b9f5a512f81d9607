// Prints digests of results, bit for bit, on samples and on meshes made in code. Every build must print the same.

#include <cinttypes>
#include <cstdio>

#include "Digest.h"

namespace KM::Test {

void Print(const std::string& what, const Digest& digest) {
    std::printf("%016" PRIx64 "  %s\n", digest.Value(), what.c_str());
}

}  // namespace KM::Test

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    KM::Test::PrintAnalysisDigests();
    KM::Test::PrintCachingDigests();
    KM::Test::PrintDecimationDigests();
    KM::Test::PrintDecompositionDigests();
    KM::Test::PrintEditingDigests();
    KM::Test::PrintFaceDigests();
    KM::Test::PrintGeodesicDigests();
    KM::Test::PrintHoleDigests();
    KM::Test::PrintHostRoadDigests(argv[1]);
    KM::Test::PrintLineDigests();
    KM::Test::PrintPlaneAndSolverDigests();
    KM::Test::PrintPolygonDigests();
    KM::Test::PrintRefinementDigests();
    return 0;
}
